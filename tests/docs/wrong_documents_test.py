"""The test of the documentation finds what is wrong in one. Usage: wrong_documents_test.py BUILD FOLDER"""

import shutil
import subprocess
import sys
from pathlib import Path

RUN = Path(__file__).with_name("run_documentation.py")
CASES = {  # what a document holds: what is said of it, nothing where all is well
    "```console\n$ echo one; echo two\none\ntwo\n```\n\n```text\ntwo\n```\n": "",
    "```console\n$ echo one\ntwo\n```\n": "and not",
    "```console\none\n```\n": 'begins with "$ "',
    "```console exit=3\n$ exit 4\n```\n": "exit 4, not 3",
    "```sh\nfalse\ntrue\n```\n": "exit 1, not 0",
    "```sh\necho one two\n```\n\n```text\none\n```\n": "not what the block before prints",
    "```c\nint main(void) { return 2; }\n```\n": "exit 2, not 0",
    "```c\nint main(void) { int unused; return 0; }\n```\n": "unused",
    "```cpp\n#include \"kesto_road/kesto_road.hpp\"\nint main() { kesto::Road road; }\n```\n": "",
    "```python shown\nfrom nowhere import nothing\n```\n": "",
    "```python shown\nif True\n```\n": "expected ':'",
    "<!-- examples/kept.csv -->\n```csv\nother\n```\n": "differs from examples/kept.csv",
    "```sh\necho more >>examples/kept.csv\n```\n": "examples/kept.csv is not what the printed commands make",
    "```csv\nwithout a name\n```\n": "unknown kind 'csv'",
    "```\nkesto-road --version\n```\n": "unknown kind ''",
    "```shell\ntrue\n```\n": "unknown kind 'shell'",
    "```synopsis\nkesto-road at ROAD.road [--no-such-option]\n```\n": "--no-such-option",
    "[there](nowhere.md)\n": "nowhere.md leads nowhere",
    "# A heading\n[there](#a-heading)\n": "",
    "# A heading\n[there](#another)\n": "#another leads nowhere",
    "![old](docs/images/old.png)\n": "docs/images/old.png, which no printed command draws",
}


PYTHON_CASES = {
    "```python\nimport kesto_road\nprint(kesto_road.Road().stake_prefix)\n```\n\n```text\nK\n```\n": "",
    "```python\nraise SystemExit(2)\n```\n": "exit 2, not 0",
    "```python\nimport kesto_road\nkesto_road.Road().design()\n```\n": "KestoError",
}


def main(build: str, folder: Path) -> int:
    root, faults = folder / "root", 0
    cases = CASES | (PYTHON_CASES if Path(build, "python/pyvenv.cfg").exists() else {})
    for text, expected in cases.items():
        shutil.rmtree(folder, ignore_errors=True)
        for each in ("examples", "tests/data", "docs/images"):
            (root / each).mkdir(parents=True)
        (root / "examples/kept.csv").write_text("kept\n", encoding="utf-8")
        (root / "docs/images/old.png").write_bytes(b"")
        (root / "README.md").write_text(text, encoding="utf-8")
        run = subprocess.run([sys.executable, "-B", RUN, root, build, folder / "scratch"], check=False, text=True,
                             stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        if (run.returncode != 0) != bool(expected) or expected not in run.stdout:
            faults += 1
            print(f"{text}\nexit {run.returncode}, without '{expected}':\n{run.stdout}")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1], Path(sys.argv[2])))
