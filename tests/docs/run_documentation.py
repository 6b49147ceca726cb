#!/usr/bin/env python3
"""Runs every program and command of the documentation as printed, and says what it ran.

Each document gets a folder of its own with copies of examples/ and tests/data/; its blocks follow one another there, as
a reader types them. What a block is for stands behind its fence:

  sh              commands; all of them succeed
  console         commands behind "$ ", each followed by exactly what it prints; "console exit=4" fails so
  c, cpp          a whole program; it builds without a warning and runs
  python          a whole program; it runs, where the build has an environment with the Python package
  python shown    a program for an engine that is not installed here: it compiles
  cmake           a CMakeLists.txt; the project builds
  text            what the block before prints, or whole lines of it
  text figures    the same, but for the figures, which belong to one machine
  csv, road       a table or a project file, saved under its name
  sh build        commands that build the project; they run in a copy of its tree with --builds, and are listed without
  sh points       commands over many points: they run with few of them, by KESTO_BULK_POINTS
  sh long         commands that take too long for a test: listed as not run
  synopsis        forms of commands: their options are those of --help
  drawing, formula, tree   nothing that runs

A comment in the line before, "<!-- first_program.c -->", saves a block under this name; where the project has such a
file, both are equal. A block of another kind fails the test. So does a link that leads nowhere, a sample file that
printed commands make otherwise than it is, and a picture that no printed command draws, or draws otherwise.

Usage: run_documentation.py ROOT BUILD FOLDER [--builds] [--update-pictures]
  ROOT the project, BUILD its build folder, FOLDER a scratch folder; --update-pictures stores the pictures drawn
"""

import argparse
import os
import re
import shutil
import subprocess
import sys
from pathlib import Path

import documents
import pictures

SHOWN = {"drawing", "formula", "tree"}
SAVED = {"csv", "road"}
COPIED = ["examples", "tests/data", "docs/images", "bench"]
WARNINGS = ["-Wall", "-Wextra", "-Wpedantic", "-Wconversion", "-Wshadow", "-Werror"]
PROGRAMS = {"c": ["cc", "-std=c99"], "cpp": ["c++", "-std=c++17"]}
FEW_POINTS = {"KESTO_BULK_POINTS": "20000"}
FIGURES = re.compile(r"[+-]?\d[\d,.]*")
RUN_APART = "scripts/test"  # builds and tests what those who run this have built and tested


class Wrong(Exception):
    """What a block does is not what the document says."""


class DocumentRun:
    """The folder in which the blocks of one document run."""

    def __init__(self, root: Path, folder: Path, environment: dict, builds: bool):
        self.root, self.folder, self.environment, self.builds = root, folder, environment, builds
        self.output = ""  # of the block before
        self.has_python = any(Path(each, "..", "pyvenv.cfg").exists() for each in environment["PATH"].split(":"))
        folder.mkdir(parents=True)
        for each in COPIED:
            shutil.copytree(root / each, folder / each)

    def command(self, words, exit_code=0, folder=None) -> str:
        """Runs a command, or a script as one text, and gives what it prints."""
        script = isinstance(words, str)
        arguments = ["bash", "-euo", "pipefail", "-c", words] if script else [str(each) for each in words]
        run = subprocess.run(arguments, cwd=folder or self.folder, env=self.environment, stdin=subprocess.DEVNULL,
                             stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True, check=False)
        if run.returncode != exit_code:
            raise Wrong(f"{words}\nexit {run.returncode}, not {exit_code}:\n{run.stdout}")
        return run.stdout

    def run(self, block: documents.Block) -> str:
        """Does with a block what its kind asks for. @return a word for the list"""
        kind, *options = block.kind.split() or [""]
        if block.kind in ("python", "sh points") and not self.has_python:
            self.output = None
            return "not run here (no environment with the Python package)"
        if kind == "text" and self.output is None:
            return "not compared"
        if block.name:
            self.save(block)
        if block.kind in SHOWN:
            return "shown"
        if block.kind in ("sh build", "sh long"):
            return self.run_in_tree(block) if self.builds and block.kind == "sh build" else f"not run here ({options[0]})"
        if block.kind in ("text", "text figures"):
            return self.compare(block)
        if block.kind == "sh points":
            return self.run_with_few_points(block)
        runner = getattr(self, f"run_{kind}", None)
        if kind in PROGRAMS and not options:
            self.output = self.run_program(block)
        elif runner and (not options or kind == "console"):
            self.output = runner(block)
        elif block.kind == "python shown":
            return self.compile_python(block)
        elif kind in SAVED and not options and block.name:
            return "saved"
        else:
            raise Wrong(f"a block of the unknown kind '{block.kind}', or one without a name")
        return "ran"

    def save(self, block: documents.Block) -> None:
        original = self.root / block.name
        if original.exists() and original.read_text(encoding="utf-8") != block.text:
            raise Wrong(f"the block differs from {block.name}")
        path = self.folder / block.name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(block.text, encoding="utf-8")

    def compare(self, block: documents.Block) -> str:
        wanted, printed = block.text, self.output
        if block.kind == "text figures":
            wanted, printed = (FIGURES.sub("#", each) for each in (wanted, printed))
        if not wanted or f"\n{wanted}" not in f"\n{printed}":
            raise Wrong(f"this is not what the block before prints:\n{self.output}")
        return "compared"

    def run_program(self, block: documents.Block) -> str:
        kind = block.kind
        source = self.folder / (block.name or f"program_{block.line}.{kind}")
        source.write_text(block.text, encoding="utf-8")
        program = source.with_suffix(f".{kind}.program").resolve()
        flags = self.command(["pkg-config", "--cflags", "--libs", "kesto_road"]).split()
        self.command([*PROGRAMS[kind], *WARNINGS, source, *flags, "-lm", "-o", program])
        return self.command([program])

    def run_sh(self, block: documents.Block) -> str:
        return self.command(block.text)

    def run_with_few_points(self, block: documents.Block) -> str:
        full = self.environment
        self.environment = full | FEW_POINTS
        try:
            self.output = self.command(block.text)
        finally:
            self.environment = full
        return "ran with few points"

    def compile_python(self, block: documents.Block) -> str:
        try:
            compile(block.text, block.place, "exec")
        except SyntaxError as error:
            raise Wrong(str(error)) from error
        return "compiled, not run here"

    def run_python(self, block: documents.Block) -> str:
        program = Path(block.name or f"program_{block.line}.py")
        (self.folder / program).write_text(block.text, encoding="utf-8")
        return self.command(["python3", "-B", "-W", "error", program])

    def run_console(self, block: documents.Block) -> str:
        exit_code = int((re.fullmatch(r"console(?: exit=(\d+))?", block.kind) or [0, "999"])[1] or 0)
        parts = re.split(r"^\$ (.*(?:\\\n.*)*)\n", block.text, flags=re.MULTILINE)
        if parts[0] or len(parts) < 3:
            raise Wrong('a console block begins with "$ "')
        printed = ""
        for command, expected in zip(parts[1::2], parts[2::2]):
            output = self.command(command, exit_code)
            if output != expected:
                raise Wrong(f"$ {command}\nprints\n{output}\nand not\n{expected}")
            printed += output
        return printed

    def run_cmake(self, block: documents.Block) -> str:
        (self.folder / "CMakeLists.txt").write_text(block.text, encoding="utf-8")
        self.command(["cmake", "-S", ".", "-B", "cmake_build"])
        return self.command(["cmake", "--build", "cmake_build"])

    def run_synopsis(self, block: documents.Block) -> str:
        """Every option and command that a synopsis names stands in the help of its command."""
        if not block.text.startswith("kesto-road "):
            raise Wrong("a synopsis begins with kesto-road")
        for form in re.findall(r"^kesto-road .*(?:\n +.*)*", block.text, flags=re.MULTILINE):
            words = form.split()
            help_text = self.command(["kesto-road", words[1], "--help"])
            unknown = [each for each in re.findall(r"(?<![\w-])--?[a-z][a-z-]*", form)
                       if not re.search(rf"(?<![\w-]){each}(?![\w-])", help_text)]
            if unknown:
                raise Wrong(f"kesto-road {words[1]} --help does not know {', '.join(unknown)}")
        return ""

    def run_in_tree(self, block: documents.Block) -> str:
        """Runs building commands one by one in a copy of the project without what is built."""
        tree = self.folder / "tree"
        if not tree.exists():
            shutil.copytree(self.root, tree, ignore=shutil.ignore_patterns("build", ".git"))
        left_out = ""
        for line in block.text.splitlines():
            if line.split("#")[0].strip() == RUN_APART:
                left_out = f", but for {RUN_APART}, which is run apart"
            else:
                self.output = self.command(line, folder=tree)
        return "ran" + left_out

    def changed_samples(self) -> list[str]:
        """Sample files that the commands wrote again, but otherwise."""
        return [f"{each} is not what the printed commands make" for folder in ("examples", "tests/data")
                for each in sorted(str(path.relative_to(self.root)) for path in (self.root / folder).rglob("*"))
                if (self.root / each).is_file() and (self.root / each).read_bytes() != (self.folder / each).read_bytes()]


def install(build: Path, folder: Path) -> dict:
    """Installs the project as a user does. @return the environment of someone who has it"""
    prefix = folder / "prefix"
    build = build.resolve()
    subprocess.run(["cmake", "--install", build, "--prefix", prefix], check=True, stdout=subprocess.DEVNULL)
    library = next(prefix.rglob("kesto_road.pc")).parent.parent
    home = folder / "home"
    home.mkdir()
    return dict(os.environ, PATH=f"{prefix}/bin:{build}/python/bin:{os.environ['PATH']}", LD_LIBRARY_PATH=str(library), HOME=str(home),
                PKG_CONFIG_PATH=f"{library}/pkgconfig", CMAKE_PREFIX_PATH=str(prefix), LC_ALL="C.UTF-8")


def main() -> int:
    arguments = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    for name in ("root", "build", "folder"):
        arguments.add_argument(name, type=Path)
    arguments.add_argument("--builds", action="store_true")
    arguments.add_argument("--update-pictures", action="store_true")
    given = arguments.parse_args()
    root, folder = given.root.resolve(), given.folder.resolve()
    shutil.rmtree(folder, ignore_errors=True)
    folder.mkdir(parents=True)
    environment = install(given.build, folder)

    faults, drawn, shown = [], {}, []
    for document in documents.find_documents(root):
        faults += documents.dead_links(root, document)
        shown += [(document, each) for each in documents.pictures_of(root, document)]
        blocks = documents.blocks_of(root, document)
        if given.builds:
            blocks = [each for each in blocks if each.kind == "sh build"]
        if not blocks:
            continue
        run = DocumentRun(root, folder / str(document).replace("/", "_"), environment, given.builds)
        before = {each: each.stat().st_mtime_ns for each in (run.folder / "docs/images").iterdir()}
        for block in blocks:
            try:
                print(f"{block.place}: {block.kind}: {run.run(block)}", flush=True)
            except Wrong as wrong:
                faults.append(f"{block.place}: {wrong}")
        faults += [f"{document}: {each}" for each in run.changed_samples()]
        drawn |= {os.path.join("docs/images", each.name): each for each in (run.folder / "docs/images").iterdir()
                  if before.get(each) != each.stat().st_mtime_ns}
    if not given.builds:
        faults += [f"{document} shows {each}, which no printed command draws" for document, each in shown
                   if each not in drawn]
        faults += [f"{name} is not what the printed command draws" for name, picture in drawn.items()
                   if not given.update_pictures and not pictures.look_alike(root / name, picture)]
    if given.update_pictures:
        for name, picture in drawn.items():
            shutil.copyfile(picture, root / name)
            print(f"{name}: drawn anew")
    print("\n".join(faults))
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
