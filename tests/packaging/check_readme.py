#!/usr/bin/python3
"""Runs the examples of the README and compares what they print with what it says.

Usage: check_readme.py --source ROOT --program KORVANE

An example is a block of the kind "console"; a line that begins with "$ " is a command, the lines
behind it are what it prints.
"""
import argparse
import os
import re
import subprocess
import sys
from pathlib import Path


def examples(text):
    for block in re.findall(r"^```console\n(.*?)^```", text, re.M | re.S):
        for part in re.split(r"^\$ ", block, flags=re.M)[1:]:
            command, _, output = part.partition("\n")
            yield command, output.rstrip("\n")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--source", type=Path, required=True)
    parser.add_argument("--program", type=Path, required=True)
    arguments = parser.parse_args()
    environment = dict(os.environ, PATH=f"{arguments.program.parent}:{os.environ['PATH']}")
    faults = 0
    count = 0
    for command, wanted in examples((arguments.source / "README.md").read_text("utf-8")):
        count += 1
        ran = subprocess.run(["sh", "-c", command], cwd=arguments.source, env=environment,
                             capture_output=True, text=True, check=False)
        if ran.returncode != 0 or ran.stdout.rstrip("\n") != wanted:
            faults += 1
            print(f"$ {command}\n{ran.stdout}{ran.stderr}ended with {ran.returncode}; the README says:\n{wanted}",
                  file=sys.stderr)
    if count == 0:
        print("the README has no examples", file=sys.stderr)
    sys.exit(1 if faults or count == 0 else 0)


if __name__ == "__main__":
    main()
