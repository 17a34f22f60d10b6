#!/usr/bin/python3
"""Checks that the man page and the completions offer what the program has, no more and no less.

Usage: check_offers.py --source ROOT --program KORVANE
"""
import argparse
import re
import subprocess
import sys
from pathlib import Path

OPTION = re.compile(r"--[a-z][a-z-]+")


def said(*command):
    return subprocess.run(command, capture_output=True, text=True, check=True).stdout


def offered(program):
    """The commands of the program, each with its options; those without a command under ""."""
    top = said(program, "--help")
    commands = re.findall(r"^  ([a-z]+) {2,}", top.partition("Subcommands:")[2], re.M)
    options = {"": {"--help", "--version"}}
    for command in commands:
        told = said(program, command, "--help")
        options[command] = set(re.findall(r"^  (?:-\w,)?(--[a-z-]+)", told, re.M))
    return options


def bash_offers(script, words):
    """What bash would offer for the last of the words."""
    test = (
        f'source "$1"; COMP_WORDS=({" ".join(words)} --); COMP_CWORD={len(words)}; '
        '_korvane; printf "%s\\n" "${COMPREPLY[@]}"'
    )
    return set(said("bash", "-c", test, "bash", str(script)).split())


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--source", type=Path, required=True)
    parser.add_argument("--program", required=True)
    arguments = parser.parse_args()
    options = offered(arguments.program)
    every = set().union(*options.values())
    faults = []

    def compare(where, has, wanted):
        for option in sorted(wanted - has):
            faults.append(f"{where}: {option} is missing")
        for option in sorted(has - wanted):
            faults.append(f"{where}: the program has no {option}")

    page = (arguments.source / "docs/korvane.1").read_text("utf-8").replace("\\-", "-")
    compare("korvane.1", set(OPTION.findall(page)), every)
    completions = arguments.source / "tools/completions"
    compare("_korvane", set(OPTION.findall((completions / "_korvane").read_text("utf-8"))), every)
    fish = (completions / "korvane.fish").read_text("utf-8")
    in_fish = re.findall(r"^complete .* -l ([a-z][a-z-]+) ", fish, re.M)
    compare("korvane.fish", {f"--{name}" for name in in_fish}, every)
    for command, wanted in options.items():
        words = ["korvane", command] if command else ["korvane"]
        compare(f"korvane.bash, {command or 'no command'}",
                bash_offers(completions / "korvane.bash", words), wanted)
        for place in ("korvane.1", "_korvane", "korvane.fish"):
            text = page if place == "korvane.1" else (completions / place).read_text("utf-8")
            if command and not re.search(rf"\b{command}\b", text):
                faults.append(f"{place}: the command {command} is missing")
    print("\n".join(faults), file=sys.stderr)
    sys.exit(1 if faults else 0)


if __name__ == "__main__":
    main()
