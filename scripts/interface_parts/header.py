"""What the public header declares, with what its comments say. Every declaration must be understood, so that none is
missed."""
from __future__ import annotations

import re
import sys
from dataclasses import dataclass, field

# What a function does to its road follows from the verb that its name begins with. A name with another verb says it in
# its comment: "@edits" or "@answers".
EDITS = ("Add", "Clear", "Del", "Design", "Import", "Insert", "Load", "Open", "Set", "Update")
ANSWERS = ("Calc", "Describe", "Export", "Find", "Format", "Get", "Is", "Kesto", "Make", "Parse", "Save")
LIFE = ("End", "Freeze", "Start")


def fail(why: str) -> None:
    sys.exit(f"interface: {why}")


def plain(comment: str) -> str:
    """The text of a comment on one line."""
    lines = (re.sub(r"^\s*\*(?!/) ?", "", line) for line in re.sub(r"^/\*+<?|\*/$", "", comment.strip()).splitlines())
    return " ".join(" ".join(lines).split())


def sentence(text: str) -> str:
    """The first sentence."""
    return re.split(r"(?<=[^.]\.)\s+(?=[A-Z])", re.split(r"\s*@(?:param|return|edits|answers)\b", text)[0])[0].strip()


@dataclass
class Parameter:
    """An argument of a function."""

    name: str
    type: str  # as declared: "const double*"
    text: str  # of its @param
    is_handle: bool

    @property
    def pointed(self) -> str:
        """What a pointer points at, without const; empty for a plain value."""
        return self.type[:-1].replace("const ", "").strip() if self.type.endswith("*") else ""

    @property
    def optional(self) -> bool:
        """Whether null stands for something."""
        return bool(self.pointed and re.search(r"\bmay be null\b|\bnull: ", self.text))

    @property
    def role(self) -> str:
        """"" for what is only read, ">" for what is only written, "=" for both."""
        if not self.pointed or self.is_handle or self.type.startswith("const "):
            return ""
        return "=" if self.text.startswith("in: ") else ">"


@dataclass
class Function:
    """An exported function."""

    name: str
    result: str
    parameters: list[Parameter]
    comment: str
    family: str
    gives: str = ""  # what its result tells: None, Success, Truth, Status, Whole, Number, Text or Handle

    @property
    def types(self) -> str:
        return ", ".join(parameter.type for parameter in self.parameters) or "void"

    @property
    def effect(self) -> str:
        """What it does to its road: Edits, Answers or Life."""
        tag = re.search(r"@(edits|answers)\b", self.comment)
        if tag:
            return tag[1].capitalize()
        for effect, verbs in (("Edits", EDITS), ("Answers", ANSWERS), ("Life", LIFE)):
            if re.match("|".join(verbs), self.name):
                return effect
        return fail(f"does {self.name} edit its road? Tell by @edits or @answers in its comment")


@dataclass
class Record:
    """A struct with its fields: name, type with the length of an array, comment."""

    name: str
    comment: str
    fields: list[tuple[str, str, str]] = field(default_factory=list)

    @property
    def is_array(self) -> bool:
        """Whether it stands for an array of the caller: items, count, capacity."""
        return [name for name, _, _ in self.fields] == ["items", "count", "capacity"]


class Header:
    """All that a header declares, in its order."""

    def __init__(self, text: str):
        self.text = text
        self.enumerations: dict[str, list[tuple[str, str]]] = {}  # names with their comments
        self.comments: dict[str, str] = {}  # of enumerations
        self.records: dict[str, Record] = {}
        self.handles: list[str] = []
        self.functions: dict[str, Function] = {}
        self._family = ""
        code = re.sub(r"^#(.*\\\n)*.*$", "", text, flags=re.MULTILINE).replace('extern "C" {', "", 1)
        comment = r"(?P<{}>/\*\*(?:(?!\*/).)*\*/)?\s*"
        pattern = (r"/\* -+ (?P<family>[^/]*?) -+\s*\*/|"
                   + comment.format("c1") + r"enum (?P<enum>\w+) \{(?P<values>.*?)\};|"
                   + comment.format("c2") + r"typedef struct (?P<record>\w+) \{(?P<body>.*?)\} (?P=record);|"
                   + r"(?:/\*\*(?:(?!\*/).)*\*/)?\s*typedef struct (?P<handle>\w+) (?P=handle);|"
                   + comment.format("c3") + r"KESTO_API (?P<result>[\w\s*]+?) KESTO_CALL (?P<function>\w+)"
                   + r"\((?P<parameters>[^)]*)\);")
        rest = re.sub(pattern, self._take, code, flags=re.DOTALL)
        rest = re.sub(r"/\*.*?\*/", "", rest, flags=re.DOTALL)
        if rest.split() != ["}"]:
            fail(f"not understood in the header: {' '.join(rest.split())}")
        for function in self.functions.values():
            function.gives = self._gives(function)

    def _take(self, match: re.Match) -> str:
        if match["family"]:
            self._family = " ".join(match["family"].split())
        elif match["enum"]:
            self._enumeration(match)
        elif match["record"]:
            self._record(match)
        elif match["handle"]:
            self.handles.append(match["handle"])
        else:
            self._function(match)
        return ""

    def _enumeration(self, match: re.Match) -> None:
        self.comments[match["enum"]] = plain(match["c1"] or "")
        found = re.findall(r"(\w+)(?: = -?\d+)?,?\s*(?:/\*\*<(.*?)\*/)?\s*", match["values"], flags=re.DOTALL)
        self.enumerations[match["enum"]] = [(name, plain(text)) for name, text in found]

    def _record(self, match: re.Match) -> None:
        record = Record(match["record"], plain(match["c2"] or ""))
        for declared, text in re.findall(r"([^;]*);\s*(?:/\*\*<(.*?)\*/)?", match["body"], flags=re.DOTALL):
            parts = re.fullmatch(r"\s*([\w\s*]+?)\s*(\w+)((?:\[\d+\])?)", declared)
            if parts is None:
                fail(f"not understood in {record.name}: one plain field to a declaration")
            record.fields.append((parts[2], " ".join(parts[1].split()) + parts[3], plain(text)))
        self.records[record.name] = record

    def _function(self, match: re.Match) -> None:
        comment = plain(match["c3"] or "")
        if not comment:
            fail(f"{match['function']} has no comment")
        texts = {}
        for names, text in re.findall(r"@param ((?:\w+, )*\w+)\s+(.*?)(?=\s*@(?:param|return)|$)", comment):
            texts.update(dict.fromkeys(names.split(", "), text))
        parameters = []
        for argument in match["parameters"].split(","):
            parts = re.fullmatch(r"(.*?[\s*])(\w+)", " ".join(argument.split()))
            if parts is None and argument.strip() != "void":
                fail(f"not understood in {match['function']}: {argument}")
            if parts is not None:
                kind = parts[1].strip()
                handle = re.sub(r"const |\*", "", kind) in self.handles
                parameters.append(Parameter(parts[2], kind, texts.get(parts[2], ""), handle))
        name = match["function"]
        self.functions[name] = Function(name, match["result"], parameters, comment, self._family)

    def _gives(self, function: Function) -> str:
        """What the result tells. A whole number is a status where the comment begins with success: "@return 0; ..."."""
        if function.result == "int32_t":
            told = re.search(r"@return (?:(0)[;,.]|as (\w+)\(\))", function.comment)
            if told and told[2]:
                return self._gives(self.functions[told[2]])
            return "Status" if told else "Whole"
        if function.result == "bool" and function.name.startswith("Is"):
            return "Truth"
        plain_results = {"void": "None", "bool": "Success", "double": "Number", "const char*": "Text"}
        if function.result in plain_results:
            return plain_results[function.result]
        if re.sub(r"const |\*", "", function.result) in self.handles:
            return "Handle"
        return fail(f"not understood: {function.name} gives {function.result}")
