#!/usr/bin/python3
"""Checks the manual as it was built; says everything that is wrong with it.

Usage: check_manual.py --manual DIR --source ROOT [--program KORVANE]

- every link leads to a page that is there, and to an anchor that the page has
- every page can be reached from the start page by the links in the texts, and from every other one
- every topic number is there once, has a page, and the numbers that the code asks for are among them
- every picture that is shown is there and has a text in its place, and every one that is there is shown
- nothing is taken from outside: only links lead there, to http(s) addresses
- with a program: each of its commands and options is in the page of the command line, and no other
"""
import argparse
import re
import subprocess
import sys
from html.parser import HTMLParser
from pathlib import Path

OUTSIDE = re.compile(r"^(?:[a-zA-Z][a-zA-Z0-9+.-]*:|//|/|\\)")
TOPIC = re.compile(r"^(0|[1-9]\d*) ([a-z-]+\.html)(?:#([a-z0-9-]+))?$")
# Topics that the program opens: calls with a number, and the command without one.
ASKED = re.compile(r"\bShowHelp\(\s*(?:[\w.]+,\s*)?(\d+)\s*\)")


class Page(HTMLParser):
    """What a page links to, shows and offers as anchors."""

    def __init__(self, path):
        super().__init__()
        self.links = []  # (address, within the text)
        self.anchors = []
        self.resources = []  # addresses that a browser would load
        self.pictures = []  # (address, the text in its place)
        self.headings = []
        self.faults = []
        self.in_text = False
        self.feed(path.read_text("utf-8"))

    def handle_starttag(self, tag, attrs):
        attributes = dict(attrs)
        if tag == "main":
            self.in_text = True
        if "id" in attributes:
            self.anchors.append(attributes["id"])
        if tag == "a":
            self.links.append((attributes.get("href") or "", self.in_text))
        elif tag == "img":
            self.pictures.append((attributes.get("src") or "", attributes.get("alt") or ""))
        elif re.fullmatch(r"h[1-6]", tag):
            self.headings.append(int(tag[1]))
        for name in ("src", "srcset", "data", "poster"):
            if name in attributes:
                self.resources.append(attributes[name] or "")
        if tag == "link":
            self.resources.append(attributes.get("href") or "")
        if tag in ("script", "iframe", "object", "embed", "style", "form"):
            self.faults.append(f"has a <{tag}>")
        if "style" in attributes or any(name.startswith("on") for name in attributes):
            self.faults.append(f"<{tag}> has a style or a script of its own")

    def handle_endtag(self, tag):
        if tag == "main":
            self.in_text = False


class Check:
    def __init__(self, manual, source):
        self.manual = manual
        self.source = source
        self.faults = []
        self.pages = {path.name: Page(path) for path in sorted(manual.glob("*.html"))}

    def fault(self, where, what):
        self.faults.append(f"{where}: {what}")

    def check_target(self, where, page, anchor):
        if page not in self.pages:
            self.fault(where, f"there is no page {page}")
        elif anchor and anchor not in self.pages[page].anchors:
            self.fault(where, f"{page} has no anchor {anchor}")

    def check_links(self):
        for name, page in self.pages.items():
            for address, _ in page.links:
                if re.match(r"https?://", address):
                    continue
                if not address or OUTSIDE.match(address):
                    self.fault(name, f"a link leads to {address!r}")
                    continue
                target, _, anchor = address.partition("#")
                self.check_target(name, target or name, anchor)

    def check_pages(self):
        for name, page in self.pages.items():
            for fault in page.faults:
                self.fault(name, fault)
            for anchor in {a for a in page.anchors if page.anchors.count(a) > 1}:
                self.fault(name, f"the anchor {anchor} is there twice")
            if page.headings.count(1) != 1 or page.headings[0] != 1:
                self.fault(name, "has not one heading at its top")
            for before, after in zip(page.headings, page.headings[1:]):
                if after > before + 1:
                    self.fault(name, "leaves a level of headings out")
        made = {path.stem for path in (self.source / "docs/manual").glob("*.md")}
        for missing in sorted(made - {Path(name).stem for name in self.pages}):
            self.fault(f"{missing}.md", "was made into no page: it has no topic")

    def reached(self, start, only_text):
        seen, ahead = set(), [start]
        while ahead:
            name = ahead.pop()
            if name in seen or name not in self.pages:
                continue
            seen.add(name)
            for address, in_text in self.pages[name].links:
                if in_text or not only_text:
                    ahead.append(address.partition("#")[0])
        return seen

    def check_reach(self):
        for name in sorted(set(self.pages) - self.reached("index.html", only_text=True)):
            self.fault(name, "no text leads here from the start page")
        for name in self.pages:
            for other in sorted(set(self.pages) - self.reached(name, only_text=False)):
                self.fault(name, f"no way leads from here to {other}")

    def check_resources(self):
        for name, page in self.pages.items():
            for address in page.resources:
                if OUTSIDE.match(address) or ".." in address:
                    self.fault(name, f"takes {address!r} from outside")
                elif not (self.manual / address).is_file():
                    self.fault(name, f"there is no {address}")
        for path in sorted(self.manual.glob("*.css")):
            for outside in re.findall(r"@import|url\s*\(", path.read_text("utf-8")):
                self.fault(path.name, f"takes something from outside: {outside}")

    def check_pictures(self):
        shown = set()
        for name, page in self.pages.items():
            for address, text in page.pictures:
                shown.add(address)
                if not text.strip():
                    self.fault(name, f"{address} has no text in its place")
        there = {f"pictures/{path.name}" for path in (self.manual / "pictures").iterdir()}
        for unused in sorted(there - shown):
            self.fault(unused, "is shown by no page")

    def check_topics(self):
        numbers = []
        for line in (self.manual / "topics.txt").read_text("utf-8").splitlines():
            topic = TOPIC.match(line)
            if not topic:
                self.fault("topics.txt", f"this is no topic: {line!r}")
                continue
            numbers.append(int(topic[1]))
            self.check_target(f"topic {topic[1]}", topic[2], topic[3])
            if topic[1] == "0" and (topic[2], topic[3]) != ("index.html", None):
                self.fault("topic 0", "is not the start page")
        for number in {n for n in numbers if numbers.count(n) > 1}:
            self.fault(f"topic {number}", "is there twice")
        asked = {0}
        for path in (self.source / "src").rglob("*.cpp"):
            asked.update(int(number) for number in ASKED.findall(path.read_text("utf-8")))
        for number in sorted(asked - set(numbers)):
            self.fault(f"topic {number}", "is asked for by the program and not there")

    def check_command_line(self, program):
        def said(*arguments):
            told = subprocess.run([program, *arguments], capture_output=True, text=True, check=True)
            return told.stdout

        page = (self.source / "docs/manual/command-line.md").read_text("utf-8")
        commands = re.findall(r"^  ([a-z]+) {2,}", said("--help").partition("Subcommands:")[2], re.M)
        if not commands:
            self.fault("command-line.md", "the program tells of no commands")
        has = {"--help", "--version"}
        for command in commands:
            has.update(re.findall(r"--[a-z][a-z-]+", said(command, "--help")))
            if f"korvane {command}" not in page:
                self.fault("command-line.md", f"korvane {command} is missing")
        written = set(re.findall(r"--[a-z][a-z-]+", page))
        for option in sorted(has - written):
            self.fault("command-line.md", f"{option} is missing")
        for option in sorted(written - has):
            self.fault("command-line.md", f"the program has no {option}")

    def run(self, program=None):
        """All faults, each a line."""
        if "index.html" not in self.pages:
            return [f"{self.manual}: there is no manual"]
        self.check_links()
        self.check_pages()
        self.check_reach()
        self.check_resources()
        self.check_pictures()
        self.check_topics()
        if program:
            self.check_command_line(program)
        return self.faults


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--manual", type=Path, required=True)
    parser.add_argument("--source", type=Path, required=True)
    parser.add_argument("--program")
    arguments = parser.parse_args()
    faults = Check(arguments.manual, arguments.source).run(arguments.program)
    for fault in faults:
        print(fault, file=sys.stderr)
    sys.exit(1 if faults else 0)


if __name__ == "__main__":
    main()
