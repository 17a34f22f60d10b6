#!/usr/bin/python3
"""Makes one fault after another in a copy of the manual and sees that the check finds it.

Usage: check_manual_test.py --manual DIR --source ROOT
"""
import argparse
import shutil
import tempfile
import unittest
from pathlib import Path

from check_manual import Check

PLACES = argparse.Namespace()


class Faults(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory()
        self.addCleanup(folder.cleanup)
        self.manual = Path(folder.name) / "manual"
        self.source = Path(folder.name) / "source"
        shutil.copytree(PLACES.manual, self.manual)
        (self.source / "src").mkdir(parents=True)
        shutil.copytree(PLACES.source / "docs/manual", self.source / "docs/manual")

    def change(self, name, old, new):
        path = self.manual / name
        text = path.read_text("utf-8")
        self.assertIn(old, text)
        path.write_text(text.replace(old, new, 1), "utf-8")

    def add(self, text, name="modes.html"):
        self.change(name, "</main>", text + "</main>")

    def assert_found(self, *parts):
        faults = Check(self.manual, self.source).run()
        for fault in faults:
            if all(part in fault for part in parts):
                return
        self.fail(f"{parts} not found in {faults}")

    def test_none(self):
        self.add('<a href="https://example.org/">elsewhere</a>')
        self.assertEqual(Check(self.manual, self.source).run(), [])

    def test_no_manual(self):
        (self.manual / "index.html").unlink()
        self.assert_found("there is no manual")

    def test_link_to_no_page(self):
        self.add('<a href="nowhere.html">x</a>')
        self.assert_found("modes.html", "there is no page nowhere.html")

    def test_link_that_was_not_rewritten(self):
        self.add('<a href="settings.md">x</a>')
        self.assert_found("modes.html", "there is no page settings.md")

    def test_link_to_no_anchor(self):
        self.add('<a href="settings.html#nowhere">x</a>')
        self.assert_found("settings.html has no anchor nowhere")

    def test_link_within_the_page(self):
        self.add('<a href="#nowhere">x</a>')
        self.assert_found("modes.html has no anchor nowhere")

    def test_links_to_the_outside(self):
        for address in ("/usr/share/x.html", "file:///x.html", "javascript:x()", "//host/x", ""):
            self.add(f'<a href="{address}">x</a>')
            self.assert_found("a link leads to", repr(address))

    def test_page_that_no_text_leads_to(self):
        for path in self.manual.glob("*.html"):
            head, main, text = path.read_text("utf-8").partition("<main")
            path.write_text(head + main + text.replace('href="about.html', 'href="index.html'), "utf-8")
        self.assert_found("about.html", "no text leads here")

    def test_page_without_a_way_back(self):
        (self.manual / "about.html").write_text('<main id="updates"><h1>x</h1></main>', "utf-8")
        self.assert_found("about.html", "no way leads from here to index.html")

    def test_page_without_a_topic(self):
        (self.source / "docs/manual/new.md").write_text("# New\n", "utf-8")
        self.assert_found("new.md", "no topic")

    def test_picture_that_is_missing(self):
        (self.manual / "pictures/explorer.png").unlink()
        self.assert_found("index.html", "there is no pictures/explorer.png")

    def test_picture_that_is_not_shown(self):
        shutil.copy(self.manual / "pictures/explorer.png", self.manual / "pictures/spare.png")
        self.assert_found("pictures/spare.png", "is shown by no page")

    def test_picture_without_a_text(self):
        self.add('<img src="pictures/explorer.png" alt=" ">')
        self.assert_found("modes.html", "has no text in its place")

    def test_things_from_outside(self):
        for address in ("https://example.org/x.png", "//example.org/x.png", "../x.png", "/x.png"):
            self.add(f'<img src="{address}" alt="x">')
            self.assert_found("modes.html", "from outside", repr(address))

    def test_sheet_with_things_from_outside(self):
        self.change("manual.css", "body {", "body { background: url(https://example.org/x.png);")
        self.assert_found("manual.css", "from outside")

    def test_scripts(self):
        self.add("<script>x()</script>")
        self.add('<p onclick="x()">x</p>')
        self.assert_found("modes.html", "<script>")
        self.assert_found("modes.html", "a script of its own")

    def test_headings(self):
        self.add("<h4>x</h4>")
        self.add("<h1>x</h1>", "limits.html")
        self.assert_found("modes.html", "leaves a level")
        self.assert_found("limits.html", "one heading")

    def test_anchor_twice(self):
        self.add('<p id="functions-on">x</p>')
        self.assert_found("the anchor functions-on is there twice")

    def test_topic_without_a_page(self):
        self.change("topics.txt", "3 modes.html", "3 nowhere.html")
        self.assert_found("topic 3", "there is no page nowhere.html")

    def test_topic_without_its_anchor(self):
        self.change("topics.txt", "3 modes.html", "3 modes.html#nowhere")
        self.assert_found("topic 3", "modes.html has no anchor nowhere")

    def test_topic_twice(self):
        self.change("topics.txt", "3 modes.html", "4 modes.html")
        self.assert_found("topic 4", "is there twice")

    def test_topic_that_is_none(self):
        for line in ("x modes.html", "3 ../modes.html", "03 modes.html", "3  modes.html", ""):
            shutil.copy(PLACES.manual / "topics.txt", self.manual)
            self.change("topics.txt", "3 modes.html", line)
            self.assert_found("topics.txt", repr(line))

    def test_topic_0_elsewhere(self):
        self.change("topics.txt", "0 index.html", "0 modes.html")
        self.assert_found("topic 0", "is not the start page")

    def test_topic_that_the_program_asks_for(self):
        for call in ("commands.ShowHelp(77);", "MHelp::ShowHelp(state, 77);"):
            (self.source / "src/x.cpp").write_text(call, "utf-8")
            self.assert_found("topic 77", "asked for by the program")


if __name__ == "__main__":
    parser = argparse.ArgumentParser()
    parser.add_argument("--manual", type=Path, required=True)
    parser.add_argument("--source", type=Path, required=True)
    parser.parse_args(namespace=PLACES)
    unittest.main(argv=["check_manual_test"])
