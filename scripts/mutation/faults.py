"""The faults that can be planted in a C++ source file: one line changed at a time.

A pattern finds places in a line whose comments and strings are masked, and says what stands
there instead. Which places are taken is drawn by hashes of seed and text, so that a change
elsewhere in a file does not change the draw.
"""

import hashlib
import pathlib
import re
from dataclasses import dataclass

NEIGHBOURS = [
    ("next", "prev"), ("left", "right"), ("up0", "up1"), ("down0", "down1"), ("upper", "lower"),
    ("top", "bottom"), ("head", "tail"), ("first", "last"), ("first", "second"), ("low", "high"),
    ("from", "to"), ("gx", "gy"), ("x", "y"), ("before", "after"), ("front", "back"),
    ("enter", "leave"), ("above", "below"), ("min", "max"), ("begin", "end"),
]
CLEANING = (r"Free|Release|Delete|Clear|clear|Reset|reset|Restore|Unlink|Remove|Truncate|pop|erase"
            r"|resize|swap|delete")
MERGING = r"Merge|Rebuild|Build|Sort|sort|Link|Join|Append|Renumber|Simplify|Update|Normalize"
BINARY = [("+", "-"), ("-", "+"), ("<", "<="), ("<=", "<"), (">", ">="), (">=", ">"),
          ("==", "!="), ("!=", "=="), ("&&", "||"), ("||", "&&"), ("&", "|"), ("|", "&"),
          ("+=", "-="), ("-=", "+="), ("|=", "&="), ("<<", ">>")]
GROUP = {"+": "sign", "-": "sign", "+=": "sign", "-=": "sign", "&&": "logic", "||": "logic",
         "&": "operand bit", "|": "operand bit", "|=": "operand bit", "<<": "operand bit"}


@dataclass(frozen=True)
class Fault:
    pattern: str
    file: str
    line: int  # from 0
    before: str
    after: str
    key: str

    def describe(self):
        return f"`{self.before.strip()}` → `{self.after.strip() or '(dropped)'}`"


def masked(lines):
    """The lines with comments and the insides of strings blanked, same columns."""
    inside = False
    for line in lines:
        out = []
        i = 0
        while i < len(line):
            if inside:
                inside = not line.startswith("*/", i)
                out.append("  " if not inside else " ")
                i += 1 if inside else 2
            elif line.startswith("//", i):
                out.append(" " * (len(line) - i))
                break
            elif line.startswith("/*", i):
                inside = True
            elif (quoted := re.compile(r'"(?:\\.|[^"\\])*"').match(line, i)) is not None:
                out.append('"' + " " * (len(quoted[0]) - 2) + '"')
                i = quoted.end()
            else:
                out.append(line[i])
                i += 1
        yield "".join(out)


def places(line, in_catch):
    """Yields (pattern, start, end, replacement) for a masked line."""
    for old, new in BINARY:
        for m in re.finditer(rf"(?<=\S) ({re.escape(old)}) (?=\S)", line):
            yield GROUP.get(old, "comparison"), m.start(1), m.end(1), new
    for m in re.finditer(r" (?:<|<=|>|>=) ([A-Za-z_]\w*(?:(?:\.|->)\w+)*(?:\(\))?|\d+)(?=[);&|? ]|$)",
                         line):
        yield "off by one", m.start(1), m.end(1), m[1] + " + 1"
    for m in re.finditer(r"(?:(?<=[(,?:=] )|(?<=\()|(?<=return ))-(?=[A-Za-z(])", line):
        yield "sign", m.start(), m.end(), ""
    for one, other in NEIGHBOURS:
        for old, new in ((one, other), (other, one)):
            for m in re.finditer(rf"(?<=[.>]){old}\b(?!\()|(?<=\w\.){old}(?=\(\))|\b{old}\b(?= *[;,)])",
                                 line):
                yield "neighbour", m.start(), m.end(), new
    for m in re.finditer(r"(?<![\w!])!(?=[A-Za-z_(])", line):
        yield "logic", m.start(), m.end(), ""
    for m in re.finditer(r"(?<![\w.])(true|false|0|1|2)(?![\w.'])", line):
        new = {"true": "false", "false": "true", "0": "1", "1": "2", "2": "1"}[m[0]]
        yield "constant", m.start(), m.end(), new
    if statement := re.match(r"\s*((?:[\w:>.\-\[\]*]+)\(.*\);|[\w>.\-\[\]*]+ [+\-|&]?= .*;)$", line):
        start, end = statement.span(1)
        name = "step"
        if re.search(CLEANING, statement[1]):
            name = "clean-up"
        elif re.search(MERGING, statement[1]):
            name = "merge"
        if in_catch:
            name = "rollback"
        yield name, start, end, ";"
    if guard := re.match(r"\s*(?:\} else )?(if \(.*\) (?:return\b.*|throw\b.*|continue|break|ERR::\w+\(.*\));)$",
                         line):
        yield "guard", guard.start(1), guard.end(1), ";"


def faults_of(root, file, seed):
    text = (pathlib.Path(root) / file).read_text()
    lines = text.split("\n")
    seen = {}
    since_catch = 99
    for number, line in enumerate(masked(lines)):
        since_catch = 0 if re.search(r"\bcatch \(", line) else since_catch + 1
        if re.match(r"\s*(#|static_assert|template|using|namespace|constexpr)", line):
            continue
        for pattern, start, end, new in places(line, since_catch < 6):
            before = lines[number]
            after = before[:start] + new + before[end:]
            identity = f"{file}|{before.strip()}|{after.strip()}"
            seen[identity] = seen.get(identity, 0) + 1
            key = hashlib.sha256(f"{seed}|{identity}|{seen[identity]}".encode()).hexdigest()
            yield Fault(pattern, file, number, before, after, key)


def draw_order(faults, seed):
    """All faults of a folder, every pattern in turn, each pattern's in order of the hashes."""
    groups = {}
    for fault in sorted(faults, key=lambda fault: fault.key):
        groups.setdefault(fault.pattern, []).append(fault)
    order = sorted(groups, key=lambda name: hashlib.sha256(f"{seed}|{name}".encode()).hexdigest())
    while groups:
        for name in order:
            if name in groups:
                yield groups[name].pop(0)
                if not groups[name]:
                    del groups[name]
