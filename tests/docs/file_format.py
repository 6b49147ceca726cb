"""Compares the tables of docs/file_format.md with those of the program that prints them from the sources, or puts them
there. Usage: file_format.py PAGE PROGRAM [--update]"""

import subprocess
import sys
from pathlib import Path

BEGIN, END = "<!-- tables: written by scripts/docs -->\n", "<!-- end of tables -->\n"


def main(page: Path, program: str, update: bool) -> int:
    tables = subprocess.run([program], check=True, stdout=subprocess.PIPE, text=True).stdout + "\n"
    text = page.read_text(encoding="utf-8")
    before, rest = text.split(BEGIN)
    after = rest.split(END)[1]
    wanted = before + BEGIN + tables + END + after
    if update:
        page.write_text(wanted, encoding="utf-8")
    elif wanted != text:
        print(f"{page} is out of date: run scripts/docs. Its tables are\n{tables}")
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main(Path(sys.argv[1]), sys.argv[2], sys.argv[3:] == ["--update"]))
