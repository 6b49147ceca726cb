"""Finds the documents of the project and takes them apart: code blocks, links and pictures."""

import os
import re
from dataclasses import dataclass
from pathlib import Path

UNSEARCHED = {"build", ".git", "node_modules", "__pycache__"}
FENCE = re.compile(r"^\s*(`{3,}|~{3,})\s*(.*?)\s*$")
NAME = re.compile(r"^<!-- ([\w./+-]+) -->$")
LINK = re.compile(r"\]\(([^)\s]+)\)")


@dataclass
class Block:
    """A fenced block; `name` is the file that a comment in the line before gives it."""

    document: Path
    line: int
    kind: str
    name: str
    text: str

    @property
    def place(self) -> str:
        return f"{self.document}:{self.line}"


def find_documents(root: Path) -> list[Path]:
    """Every Markdown file of the tree, relative to its root."""
    found = []
    for folder, folders, files in os.walk(root):
        folders[:] = sorted(each for each in folders if each not in UNSEARCHED)
        found += [Path(folder, each).relative_to(root) for each in sorted(files) if each.endswith(".md")]
    return found


def blocks_of(root: Path, document: Path) -> list[Block]:
    """The fenced blocks of a document, in order. Raises ValueError where the last one is not closed."""
    blocks, fence, name, content = [], "", "", []
    lines = (root / document).read_text(encoding="utf-8").splitlines()
    for number, line in enumerate(lines, 1):
        match = FENCE.match(line)
        if not fence and match:
            fence, begin, kind, content = match[1], number, match[2], []
            named = NAME.match(lines[number - 2]) if number > 1 else None
            name = named[1] if named else ""
        elif fence and match and match[1] == fence and not match[2]:
            blocks.append(Block(document, begin, kind, name, "".join(each + "\n" for each in content)))
            fence = ""
        elif fence:
            content.append(line)
    if fence:
        raise ValueError(f"{document}:{begin}: the block is not closed")
    return blocks


def prose_of(root: Path, document: Path) -> list[tuple[int, str]]:
    """Line numbers and lines outside the blocks."""
    prose, fence = [], ""
    for number, line in enumerate((root / document).read_text(encoding="utf-8").splitlines(), 1):
        match = FENCE.match(line)
        if match and not fence:
            fence = match[1]
        elif match and match[1] == fence and not match[2]:
            fence = ""
        elif not fence:
            prose.append((number, line))
    return prose


def anchors_of(root: Path, document: Path) -> set[str]:
    """The anchors that headings have on a rendered page."""
    headings = (re.match(r"^#+ (.*)$", line) for _, line in prose_of(root, document))
    plain = (re.sub(r"[^\w\- ]", "", match[1].lower()) for match in headings if match)
    return {each.strip().replace(" ", "-") for each in plain}


def dead_links(root: Path, document: Path) -> list[str]:
    """Links inside the tree that lead nowhere, each with its place."""
    dead = []
    for number, line in prose_of(root, document):
        for target in LINK.findall(line):
            if re.match(r"[a-z]+:", target):
                continue
            path, _, anchor = target.partition("#")
            there = (root / document.parent / path).resolve() if path else (root / document).resolve()
            page = there.relative_to(root.resolve()) if there.exists() else None
            if page is None or (anchor and anchor not in anchors_of(root, page)):
                dead.append(f"{document}:{number}: the link to {target} leads nowhere")
    return dead


def pictures_of(root: Path, document: Path) -> list[str]:
    """The pictures that a document shows, relative to the root of the tree."""
    shown = re.findall(r"!\[[^\]]*\]\(([^)\s]+)\)", "\n".join(line for _, line in prose_of(root, document)))
    return [os.path.normpath(document.parent / each) for each in shown]
