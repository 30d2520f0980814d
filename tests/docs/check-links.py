#!/usr/bin/python3
"""check-links.py TREE [SITE]: tells of each link in the Markdown files of the tree, and in the HTML files of the site,
that leads to no file or to no part of it. Links to the web are not followed."""
import os
import re
import sys
from html.parser import HTMLParser
from urllib.parse import unquote


def files_in(folder, ending):
    for path, folders, names in os.walk(folder):
        folders[:] = [name for name in folders if name not in ("build", ".git")]
        yield from (os.path.join(path, name) for name in names if name.endswith(ending))


class Page(HTMLParser):
    def __init__(self, path):
        super().__init__()
        self.parts, self.links = set(), []
        with open(path, encoding="utf-8") as file:
            self.feed(file.read())

    def handle_starttag(self, tag, attributes):
        for name, value in attributes:
            if name == "id" or (tag, name) == ("a", "name"):
                self.parts.add(value)
            elif name in ("href", "src") and value:
                self.links.append(value)


class Markdown:
    def __init__(self, path):
        with open(path, encoding="utf-8") as file:
            text = re.sub(r"^ *```.*?^ *```", "", file.read(), flags=re.M | re.S)
        self.parts, self.links = set(), re.findall(r"\]\(([^)\s]+)\)", text)
        for heading in re.findall(r"^#+ (.*)", text, re.M):
            slug = re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-")
            again = sum(re.fullmatch(re.escape(slug) + r"(-\d+)?", part) is not None for part in self.parts)
            self.parts.add(f"{slug}-{again}" if again else slug)


def dead_links(pages):
    for path, page in pages.items():
        for link in page.links:
            file, _, part = unquote(link).partition("#")
            target = os.path.normpath(os.path.join(os.path.dirname(path), file)) if file else path
            known = target not in pages or part in pages[target].parts
            if not re.match(r"\w+:", link) and not (os.path.exists(target) and (not part or known)):
                yield f"{path}: {link}"


dead = list(dead_links({path: Markdown(path) for path in files_in(sys.argv[1], ".md")}))
for site in sys.argv[2:]:
    dead += dead_links({path: Page(path) for path in files_in(site, ".html")})
sys.exit("\n".join(["Dead links:", *dead]) if dead else 0)
