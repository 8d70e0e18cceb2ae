#!/usr/bin/env python3
"""Prints the lines of the tests against those of the code, neither blank nor comment.

Tests: tests/, fuzz/ and the bindings' tests. Code: src, include, tools, bindings, examples, and
the page in web/, which is tested too. The languages are C, C++, C#, Python and JavaScript.
"""

import collections
import pathlib
import re
import subprocess

ROOT = pathlib.Path(__file__).resolve().parents[1]
CODE = ("src", "include", "tools", "bindings", "examples", "web")
LANGUAGES = (".c", ".h", ".cpp", ".hpp", ".cs", ".py", ".js", ".mjs", ".ts")


def lines_of(path):
    text = path.read_text(errors="replace")
    if path.suffix == ".py":
        text = re.sub(r'^\s*(?:"""(?:.|\n)*?"""|#.*)$', "", text, flags=re.M)
    else:
        text = re.sub(r"^\s*/\*(?:.|\n)*?\*/\s*$|^\s*//.*$", "", text, flags=re.M)
    return sum(1 for line in text.split("\n") if line.strip())


counts = collections.Counter()
files = subprocess.check_output(["git", "ls-files"], cwd=ROOT, text=True).split("\n")
for name in filter(lambda name: name.endswith(LANGUAGES) and (ROOT / name).exists(), files):
    parts = name.split("/")
    if parts[0] in ("tests", "fuzz") or "tests" in parts:
        counts["tests"] += lines_of(ROOT / name)
    elif parts[0] in CODE:
        counts["code"] += lines_of(ROOT / name)
share = 100 * counts["tests"] / counts["code"]
print(f"lines of tests {counts['tests']}, of code {counts['code']}: {share:.1f} %")
