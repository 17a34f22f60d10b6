#!/usr/bin/python3
"""Turns the manual's Markdown pages into HTML pages that need nothing but themselves.

Usage: manual_build.py SOURCE OUT
SOURCE holds the pages, topics.txt, manual.css and pictures/; OUT gets the HTML pages and copies of
the rest, and loses what it held before. The pages follow each other in the order of their topics.
"""
import html
import re
import shutil
import struct
import sys
from pathlib import Path
from xml.etree import ElementTree

import markdown
from markdown.extensions import Extension
from markdown.treeprocessors import Treeprocessor

PAGE = """<!DOCTYPE html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<meta name="color-scheme" content="light dark">
<title>{title}</title>
<link rel="stylesheet" href="manual.css">
</head>
<body>
<a class="skip" href="#text">Skip to the text</a>
<header><a href="index.html">Korvane Explorer</a> <span>User manual</span></header>
<div class="columns">
<nav aria-label="Pages of the manual">
<ul>
{contents}
</ul>
</nav>
<main id="text" tabindex="-1">
{text}
</main>
</div>
<footer>
<nav aria-label="Page before and page after">
{around}
</nav>
</footer>
</body>
</html>
"""


def picture_size(path):
    """Width and height of a PNG file, in pixels."""
    with path.open("rb") as file:
        head = file.read(24)
    if head[:8] != b"\x89PNG\r\n\x1a\n":
        sys.exit(f"{path} is no PNG file")
    return struct.unpack(">II", head[16:24])


class Rewrite(Treeprocessor):
    """Links lead to HTML pages; pictures know their size and stand in figures."""

    def __init__(self, md, source):
        super().__init__(md)
        self.source = source

    def run(self, root):
        for link in root.iter("a"):
            link.set("href", re.sub(r"^([\w-]+)\.md(?=#|$)", r"\1.html", link.get("href", "")))
        for paragraph in list(root.iter("p")):
            if len(paragraph) == 1 and paragraph[0].tag == "img" and not (paragraph.text or "").strip():
                self.make_figure(paragraph)
        for table in list(root.iter("table")):
            # Wide tables scroll by themselves, by keyboard too.
            inner = ElementTree.Element("table", table.attrib)
            inner[:] = table[:]
            table.tag, table.attrib, table[:] = "div", {"class": "wide", "tabindex": "0"}, [inner]

    def make_figure(self, paragraph):
        paragraph.tag = "figure"
        image = paragraph[0]
        width, height = picture_size(self.source / image.get("src"))
        image.set("width", str(width))
        image.set("height", str(height))
        caption = image.attrib.pop("title", None)
        if caption:
            ElementTree.SubElement(paragraph, "figcaption").text = caption


class RewriteExtension(Extension):
    def __init__(self, source):
        super().__init__()
        self.source = source

    def extendMarkdown(self, md):  # noqa: N802, the converter's own name
        md.treeprocessors.register(Rewrite(md, self.source), "korvane", 1)


def pages_in_order(source):
    """The pages' names without ".html", as topics.txt names them first."""
    pages = []
    for line in (source / "topics.txt").read_text("utf-8").splitlines():
        page = re.sub(r"\.html(#.*)?$", "", line.split(" ", 1)[1])
        if page not in pages:
            pages.append(page)
    return pages


def title_of(text, page):
    heading = re.match(r"# (.+)\n", text)
    if not heading:
        sys.exit(f"{page}.md does not begin with a heading")
    return heading.group(1).strip()


def contents(pages, titles, current):
    lines = []
    for page in pages:
        here = ' aria-current="page"' if page == current else ""
        lines.append(f'<li><a href="{page}.html"{here}>{html.escape(titles[page])}</a></li>')
    return "\n".join(lines)


def around(pages, titles, current):
    at = pages.index(current)
    links = []
    if at > 0:
        links.append(("prev", "Before", pages[at - 1]))
    if at + 1 < len(pages):
        links.append(("next", "Next", pages[at + 1]))
    return "\n".join(
        f'<a rel="{rel}" href="{page}.html">{word}: {html.escape(titles[page])}</a>'
        for rel, word, page in links
    )


def main():
    if len(sys.argv) != 3:
        sys.exit("usage: manual_build.py SOURCE OUT")
    source, out = Path(sys.argv[1]), Path(sys.argv[2])
    pages = pages_in_order(source)
    texts = {page: (source / f"{page}.md").read_text("utf-8") for page in pages}
    titles = {page: title_of(texts[page], page) for page in pages}
    shutil.rmtree(out, ignore_errors=True)
    out.mkdir(parents=True)
    for page in pages:
        text = markdown.markdown(
            texts[page],
            extensions=["tables", "fenced_code", "sane_lists", "toc", RewriteExtension(source)],
            output_format="html",
        )
        title = titles[page] if page == "index" else f"{titles[page]} – Korvane Explorer"
        (out / f"{page}.html").write_text(
            PAGE.format(
                title=html.escape(title),
                contents=contents(pages, titles, page),
                text=text,
                around=around(pages, titles, page),
            ),
            "utf-8",
        )
    shutil.copy(source / "manual.css", out)
    shutil.copy(source / "topics.txt", out)
    shutil.copytree(source / "pictures", out / "pictures")


if __name__ == "__main__":
    main()
