"""The C++ of Markdown pages, as files for a program to include.

    page-examples.py OUT PAGE...

OUT/PAGE.inc gets what stands in a page's blocks of cpp, one behind the other.
"""

import pathlib, re, sys

out, *pages = sys.argv[1:]
for page in map(pathlib.Path, pages):
    blocks = re.findall(r"^```cpp\n(.*?)^```$", page.read_text(), re.M | re.S)
    if not blocks:
        sys.exit(f"{page} has no C++")
    pathlib.Path(out, page.name + ".inc").write_text("\n".join(blocks))
