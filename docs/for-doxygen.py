#!/usr/bin/python3
"""for-doxygen.py FILE: prints a file of the tree as Doxygen is to read it.

A Markdown file gets names for its page and headings, which other files link to as they do without Doxygen: by path,
and by the words of the heading. A link to a file that is no page becomes its path. A fence of dot becomes a drawing.
A header loses what only overrides and says nothing more about it, and is always a documented file: Doxygen looks at
free functions in no other.
"""
import os
import re
import sys

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
FRONT = "docs/index.md"
PROJECT = "vantkit-qt"


def page_name(path):
    return "index" if path == FRONT else path[:-len(".md")].replace("/", "-")


def heading_name(heading):
    return re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-")


class Markdown:
    def __init__(self, path):
        self.path = path
        self.names = {}
        self.fence = ""

    def line(self, line):
        fence = re.match(r"\s*```(\w*)", line)
        if fence:
            return self.turn(fence, line)
        if self.fence:
            return line
        heading = re.match(r"(#+) (.*)", line)
        if heading:
            return self.named(heading[1], heading[2])
        return re.sub(r"(?<!!)\[([^\]]+)\]\(([^)\s]+)\)", self.link, line)

    def turn(self, fence, line):
        was, self.fence = self.fence, "" if self.fence else fence[1] or "text"
        drawing = {"dot": "\\dot", "": "\\enddot"}
        return drawing[self.fence] if "dot" in (was, self.fence) else line

    def named(self, level, heading):
        name = page_name(self.path)
        if heading == PROJECT and self.path != FRONT:
            heading = os.path.basename(self.path)
        if (level, self.path) == ("#", FRONT):
            return f"{level} {heading}"
        if level != "#":
            slug = heading_name(heading)
            count = self.names[slug] = self.names.get(slug, -1) + 1
            name += f"-{slug}" + (f"-{count}" if count else "")
        return f"{level} {heading} {{#{name}}}"

    def link(self, match):
        text, target = match.groups()
        if re.match(r"\w+:", target):
            return match[0]
        path, _, part = target.partition("#")
        path = os.path.normpath(os.path.join(os.path.dirname(self.path), path)) if path else self.path
        if path.endswith(".md"):
            return f"[{text}](#{page_name(path)}{'-' + part if part else ''})"
        return f"`{path}`" if path.startswith(text) else f"{text} (`{path}`)"


def without_bare_overrides(lines):
    """Lines of a header; a declaration that only overrides, and has no comment above it, is left out."""
    kept, commented = [], False
    for line in lines:
        if commented or not re.match(r"    [^/]*\boverride;$", line):
            kept.append(line)
        if line.strip():
            commented = line.rstrip().endswith("*/")
    return kept


def main():
    path = os.path.relpath(os.path.realpath(sys.argv[1]), ROOT)
    with open(sys.argv[1], encoding="utf-8") as file:
        lines = file.read().split("\n")
    if path.endswith(".md"):
        markdown = Markdown(path)
        lines = [markdown.line(line) for line in lines]
    else:
        lines = without_bare_overrides(lines)
        lines[0] += " /** @file */"
    sys.stdout.write("\n".join(lines))


main()
