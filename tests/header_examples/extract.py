"""The examples in the headers' comments, as files for a program to include.

    extract.py FOLDER OUT HEADER...

An example starts after an empty line of a comment, indented by five spaces, with a line that
has a semicolon; it ends where the indent does. OUT/HEADER.inc gets those of a header, one
behind the other. Fails where the headers with examples are not those that are named.
"""

import pathlib, re, sys


def examples(text):
    lines, inside, before = [], False, "code"
    for line in text.splitlines():
        match = re.match(r"(?: \*|///)(?:$| (.*))", line)
        comment = (match[1] or "") if match else "code"
        if not comment.startswith("    "):
            inside = inside and not comment
        elif not inside:
            inside = not before and ";" in comment
        if inside:
            lines.append(comment[4:])
        before = comment
    return "\n".join(lines)


folder, out, *named = sys.argv[1:]
found = {path.name: examples(path.read_text()) for path in pathlib.Path(folder).glob("*.h")}
found = {name: code for name, code in found.items() if code}
if sorted(found) != sorted(named):
    sys.exit(f"examples are in {sorted(found)}, and tested in {sorted(named)}")
for name, code in found.items():
    pathlib.Path(out, name + ".inc").write_text(code + "\n")
