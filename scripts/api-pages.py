#!/usr/bin/env python3
"""Turns Doxygen's XML into one Markdown page for each public header.

usage: api-pages.py XML-FOLDER OUTPUT-FOLDER

Everything stands in the order of the header. Standard library only.
"""
import pathlib
import re
import sys
import xml.etree.ElementTree as ElementTree


def escape(text):
    """Prose, so that Markdown takes it literally."""
    return re.sub(r"([*\\])", r"\\\1", text or "").replace("<", "&lt;")


def plain(element):
    return "".join(element.itertext()) if element is not None else ""


def list_of(element):
    lines = []
    for number, item in enumerate(element.findall("listitem"), 1):
        mark = f"{number}. " if element.tag == "orderedlist" else "- "
        lines.append(mark + "\n\n".join(blocks(item)).replace("\n", "\n" + " " * len(mark)))
    return "\n".join(lines)


def parameters(element):
    lines = []
    for item in element.findall("parameteritem"):
        names = ", ".join(plain(name) for name in item.iter("parametername"))
        lines.append(f"- `{names}`: " + " ".join(blocks(item.find("parameterdescription"))))
    return "\n".join(lines)


def structure(element):
    """An element that stands as a block of its own, or None."""
    if element.tag in ("orderedlist", "itemizedlist"):
        return list_of(element)
    if element.tag in ("verbatim", "preformatted"):
        return "```\n" + plain(element).rstrip() + "\n```"
    if element.tag == "parameterlist":
        return parameters(element)
    if element.tag == "simplesect":
        title = {"return": "Returns"}.get(element.get("kind"), element.get("kind").capitalize())
        return f"**{title}** " + "\n\n".join(blocks(element))
    return None


INLINE = {"computeroutput": "`", "emphasis": "*", "bold": "**"}


def blocks(element):
    """The text of an element as a list of Markdown blocks."""
    if element is None:
        return []
    done, text = [], ""

    def close():
        nonlocal text
        if text.strip():
            done.append(" ".join(text.split()))
        text = ""

    if element.tag == "para":
        text = escape(element.text)
    for child in element:
        if child.tag == "para":
            close()
            done += blocks(child)
        elif (block := structure(child)) is not None:
            close()
            done.append(block)
        elif child.tag in INLINE:
            mark = INLINE[child.tag]
            inner = plain(child)
            text += mark + (inner if mark == "`" else escape(inner)) + mark
        else:
            text += escape(plain(child))
        if element.tag == "para":
            text += escape(child.tail)
    close()
    return done


def described(element):
    return blocks(element.find("briefdescription")) + blocks(element.find("detaileddescription"))


def where(element):
    location = element.find("location")
    return pathlib.Path(location.get("declfile") or location.get("file")).name, int(
        location.get("line") or 0)


def is_nameless(member):
    return member.findtext("name", "").startswith("@")


def declaration(member, scope):
    kind = member.get("kind")
    if kind == "enum":
        return "enum" if is_nameless(member) else f"enum {member.findtext('name')}"
    text, arguments = member.findtext("definition"), member.findtext("argsstring") or ""
    if kind in ("function", "friend") or arguments.startswith("["):
        text += arguments
    text = text.replace(scope, "") if scope else text
    text = re.sub(r"(\w[\w ]*?)\s([*&]+)\s*(?=\w)", r"\1\2 ", text)  # as the headers write it
    return text.replace("* (", "*(") + ";"


def member_blocks(member, level, scope=""):
    title = "enum" if is_nameless(member) else member.findtext("name")
    out = ["#" * level + " " + escape(title), f"```cpp\n{declaration(member, scope)}\n```"]
    out += described(member)
    values = [f"- `{v.findtext('name')} {v.findtext('initializer', '')}".rstrip() + "`: " + " ".join(described(v))
              for v in member.findall("enumvalue")]
    return out + (["\n".join(values)] if values else [])


def members(compound):
    found = [m for m in compound.iter("memberdef") if m.get("kind") != "define" and described(m)]
    return sorted(found, key=where)


def compound_blocks(compound):
    kind, name = compound.get("kind"), compound.findtext("compoundname")
    bases = ", ".join(plain(base) for base in compound.findall("basecompoundref"))
    scope = "" if kind == "namespace" else name + "::"
    out = [f"## {kind} {name}" + (f" : {bases}" if bases else "")] + described(compound)
    fields = [m for m in members(compound) if m.get("kind") == "variable"]
    rows = [f"- `{declaration(m, scope)}` " + " ".join(described(m)) for m in fields]
    out += ["\n".join(rows)] if rows else []
    for member in members(compound):
        if member not in fields:
            out += member_blocks(member, 3, scope)
    return out


def main(source, target):
    roots = [ElementTree.parse(path).getroot() for path in sorted(source.glob("*.xml"))]
    compounds = [root.find("compounddef") for root in roots if root.find("compounddef") is not None]
    spread = [c for c in compounds if c.get("kind") == "namespace"
              and len({where(m)[0] for m in members(c)}) > 1]  # over several headers
    version = roots[0].get("version")
    target.mkdir(parents=True, exist_ok=True)
    for page in (c for c in compounds if c.get("kind") == "file"):
        name = page.findtext("compoundname")
        parts = [(where(c)[1], compound_blocks(c)) for c in compounds
                 if c.get("kind") in ("class", "struct", "namespace") and c not in spread
                 and where(c)[0] == name]
        loose = members(page) + [m for c in spread for m in members(c) if where(m)[0] == name]
        parts += [(where(m)[1], member_blocks(m, 2)) for m in loose]
        text = [f"# zelvan/{name}"] + described(page)
        for _, part in sorted(parts, key=lambda p: p[0]):
            text += part
        body = "\n\n".join(text) + "\n"
        note = f"<!-- Made from include/zelvan/{name} by scripts/make-docs.sh, Doxygen {version}. -->\n\n"
        (target / (pathlib.Path(name).stem + ".md")).write_text(note + body, encoding="utf-8")


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    main(pathlib.Path(sys.argv[1]), pathlib.Path(sys.argv[2]))
