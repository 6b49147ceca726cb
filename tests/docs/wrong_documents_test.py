"""The test of the documentation finds what is wrong in one. Usage: wrong_documents_test.py BUILD FOLDER"""

import shutil
import struct
import subprocess
import sys
import zlib
from pathlib import Path

RUN = Path(__file__).with_name("run_documentation.py")
DRAWN = "```sh\ncp examples/{}.png docs/images/old.png\n```\n![old](docs/images/old.png)\n"
CASES = {  # what a document holds: what is said of it, nothing where all is well
    "```console\n$ echo one\ntwo\n```\n": "and not",
    "```console\none\n```\n": 'begins with "$ "',
    "```console exit=3\n$ exit 4\n```\n": "exit 4, not 3",
    "```sh\nfalse\ntrue\n```\n": "exit 1, not 0",
    "```sh\necho one two\n```\n\n```text\none\n```\n": "not what the block before prints",
    "```c\nint main(void) { return 2; }\n```\n": "exit 2, not 0",
    "```cpp\n#include \"kesto_road/kesto_road.hpp\"\nint main() { kesto::Road road; }\n```\n": "",
    "```python shown\nif True\n```\n": "expected ':'",
    "<!-- examples/kept.csv -->\n```csv\nother\n```\n": "differs from examples/kept.csv",
    "```sh\necho more >>examples/kept.csv\n```\n": "examples/kept.csv is not what the printed commands make",
    "```csv\nwithout a name\n```\n": "unknown kind 'csv'",
    "```synopsis\nkesto-road at ROAD.road [--no-such-option]\n```\n": "--no-such-option",
    "[there](nowhere.md)\n": "nowhere.md leads nowhere",
    "# A heading\n[there](#another)\n": "#another leads nowhere",
    "![old](docs/images/old.png)\n": "docs/images/old.png, which no printed command draws",
    DRAWN.format("smoothed"): "",
    DRAWN.format("other"): "docs/images/old.png is not what the printed command draws",
}
PICTURES = {  # rows of colours behind the number of their filter; "smoothed" shows what "old" shows
    "old": [(0, 9, 9, 9, 200, 8, 7), (0, 9, 9, 9, 200, 8, 7)],
    "smoothed": [(4, 9, 9, 30, 191, 255, 233), (3, 5, 5, 15, 96, 0, 245)],
    "other": [(0, 9, 9, 9, 200, 8, 7), (0, 9, 9, 9, 200, 8, 70)],
}
PYTHON_CASES = {
    "```sh points\necho $KESTO_BULK_POINTS of them\n```\n\n```text figures\n10,000 of them\n```\n": "",
    "```sh points\necho 1.5 of them\n```\n\n```text figures\n1.5 of those\n```\n": "not what the block before prints",
    "```python\nimport kesto_road\nprint(kesto_road.Road().stake_prefix)\n```\n\n```text\nK\n```\n": "",
    "```python\nraise SystemExit(2)\n```\n": "exit 2, not 0",
    "```python\nimport kesto_road\nkesto_road.Road().design()\n```\n": "KestoError",
}


def png(rows: list[tuple[int, ...]]) -> bytes:
    """A picture of three colours a pixel."""
    def chunk(name: bytes, body: bytes) -> bytes:
        return struct.pack(">I", len(body)) + name + body + struct.pack(">I", zlib.crc32(name + body))

    head = struct.pack(">IIBBBBB", len(rows[0]) // 3, len(rows), 8, 2, 0, 0, 0)
    body = zlib.compress(b"".join(map(bytes, rows)))
    return b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", head) + chunk(b"IDAT", body) + chunk(b"IEND", b"")


def main(build: str, folder: Path) -> int:
    root, faults = folder / "root", 0
    cases = CASES | (PYTHON_CASES if Path(build, "python/pyvenv.cfg").exists() else {})
    for text, expected in cases.items():
        shutil.rmtree(folder, ignore_errors=True)
        for each in ("examples", "tests/data", "docs/images", "bench"):
            (root / each).mkdir(parents=True)
        (root / "examples/kept.csv").write_text("kept\n", encoding="utf-8")
        for name, rows in PICTURES.items():
            (root / ("docs/images" if name == "old" else "examples") / f"{name}.png").write_bytes(png(rows))
        (root / "README.md").write_text(text, encoding="utf-8")
        run = subprocess.run([sys.executable, "-B", RUN, root, build, folder / "scratch"], check=False, text=True,
                             stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        if (run.returncode != 0) != bool(expected) or expected not in run.stdout:
            faults += 1
            print(f"{text}\nexit {run.returncode}, without '{expected}':\n{run.stdout}")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1], Path(sys.argv[2])))
