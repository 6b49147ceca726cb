"""Sizes, offsets and values as the C compiler has them."""
import os
import re
import subprocess
import tempfile
from pathlib import Path

from .header import Header


def measure(header: Header, width: str) -> dict[str, int]:
    """Read from the compiler's assembly: nothing is linked or run.

    Returns values of enumerators, sizes by "Record", offsets by "Record.field", sizes by "sizeof Record.field"."""
    wanted = {name: name for names in header.enumerations.values() for name, _ in names}
    for record in header.records.values():
        wanted[record.name] = f"(int)sizeof({record.name})"
        for field, _, _ in record.fields:
            wanted[f"{record.name}.{field}"] = f"(int)offsetof({record.name}, {field})"
            wanted[f"sizeof {record.name}.{field}"] = f"(int)sizeof((({record.name}*)0)->{field})"
    lines = [f'__asm__ volatile("\\n#@{name}@%c0" :: "i"({value}));' for name, value in wanted.items()]
    with tempfile.TemporaryDirectory() as folder:
        (Path(folder) / "kesto_road").mkdir()
        for left_out in ("version.h", "layout.h"):  # generated, and a check of its own
            (Path(folder) / "kesto_road" / left_out).touch()
        probe = Path(folder) / "probe.c"
        probe.write_text(header.text + "void probe(void) {" + "\n".join(lines) + "}")
        command = [os.environ.get("CC", "cc"), width, "-ffreestanding", "-S", "-o", "-", "-I", folder, str(probe)]
        assembly = subprocess.run(command, check=True, stdout=subprocess.PIPE, text=True).stdout
    return {name: int(value) for name, value in re.findall(r"#@(.*)@(-?\d+)", assembly)}


class Layout:
    """What 64 and 32 bits have alike, and where they differ."""

    def __init__(self, header: Header):
        self.wide, self.narrow = measure(header, "-m64"), measure(header, "-m32")

    def both(self, name: str) -> str:
        """A size, offset or value in words."""
        wide, narrow = self.wide[name], self.narrow[name]
        return str(wide) if wide == narrow else f"{wide} (32 bits: {narrow})"

    def one(self, name: str) -> bool:
        """Whether 64 and 32 bits agree."""
        return self.wide[name] == self.narrow[name]
