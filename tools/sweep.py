#!/usr/bin/env python3
"""Explores every formula of a folder of workbooks and compares what is shown with the files.

Usage: sweep.py KORVANE FOLDER [--sample N] [--modes all|fast] [--details]

For every .xlsx and .xlsm file, in every mode (functions on and off, precise on and off): the
program must not crash or hang, each formula cell must be reported, and the explored copy must be
left as it was (the program itself is asked for that by the test suite; here the file's own bytes
are compared). From the first mode it counts how many formula texts equal the file's own text and
how many root values equal the value that the file has cached.
"""
import argparse
import collections
import hashlib
import itertools
import json
import pathlib
import re
import subprocess
import sys
import time
import zipfile
import xml.etree.ElementTree as ET

MAIN = '{http://schemas.openxmlformats.org/spreadsheetml/2006/main}'
REL = '{http://schemas.openxmlformats.org/officeDocument/2006/relationships}'


def sheet_paths(book):
    """The sheets' names and the files within the book that hold them."""
    workbook = ET.fromstring(book.read('xl/workbook.xml'))
    targets = {r.get('Id'): r.get('Target')
               for r in ET.fromstring(book.read('xl/_rels/workbook.xml.rels'))}
    for sheet in workbook.iter(MAIN + 'sheet'):
        target = targets.get(sheet.get(REL + 'id'), '')
        path = target.lstrip('/') if target.startswith('/') else 'xl/' + target
        yield sheet.get('name'), path


def own_cells(path):
    """{(sheet, address): (formula or None, cached value)} of the cells that hold formulas."""
    cells = {}
    with zipfile.ZipFile(path) as book:
        names = set(book.namelist())
        for name, part in sheet_paths(book):
            if part not in names:
                continue
            for cell in ET.fromstring(book.read(part)).iter(MAIN + 'c'):
                formula = cell.find(MAIN + 'f')
                if formula is None:
                    continue
                value = cell.findtext(MAIN + 'v')
                # A follower of a shared formula has no text of its own.
                text = formula.text if formula.text and formula.get('t') != 'dataTable' else None
                if formula.get('t') == 'array' and text is not None:
                    text = '{=' + text + '}'
                elif text is not None:
                    text = '=' + text
                cells[name, cell.get('r')] = (text, cell.get('t', 'n'), value)
    return cells


def same_value(kind, cached, shown):
    if cached is None:
        return None
    if kind == 'b':
        return shown.upper() == ('TRUE' if cached == '1' else 'FALSE')
    if kind in ('str', 'e', 's'):
        return shown == cached
    # The root shows what the cell displays: rounded, with separators, as a percentage.
    match = re.match(r'^[^\d.(-]*(\(?-?)[^\d.]*([\d,]*\.?\d*(?:E[+-]?\d+)?)\s*(%?)\)?[^\d]*$', shown)
    if not match or not re.search(r'\d', match.group(2)):
        return None  # a date, or a format with words: not to be compared
    digits = match.group(2).replace(',', '')
    number = float(digits) * (-1 if match.group(1) else 1)
    own = float(cached) * (100 if match.group(3) else 1)
    mantissa = digits.split('E')[0]
    decimals = len(mantissa.split('.')[1]) if '.' in mantissa else 0
    unit = 10.0 ** (-decimals + (int(digits.split('E')[1]) if 'E' in digits else 0))
    return abs(own - number) <= 0.5000001 * unit or abs(own - number) <= 1e-9 * abs(own)


def loose(text):
    """Without what Calc and Excel write differently without meaning anything else by it."""
    text = re.sub(r'\b(TRUE|FALSE)\(\)', r'\1', text, flags=re.I)
    return re.sub(r"[\s'$]|_xlfn\.|_xlws\.", '', text).upper()


def cell_key(address):
    match = re.match(r"^'?\[[^\]]*\](.*?)'?!\$([A-Z]+)\$(\d+)$", address)
    return (match.group(1).replace("''", "'"), match.group(2) + match.group(3)) if match else None


def explore(program, path, flags):
    start = time.monotonic()
    done = subprocess.run([program, 'explore', str(path), '--all', '--json', *flags],
                          capture_output=True, text=True, timeout=1800)
    reports = [json.loads(line) for line in done.stdout.splitlines()]
    return done.returncode, reports, done.stderr, time.monotonic() - start


def main():
    options = argparse.ArgumentParser()
    options.add_argument('program')
    options.add_argument('folder')
    options.add_argument('--sample', type=int, help='only every Nth file')
    options.add_argument('--modes', choices=['all', 'fast'], default='all')
    options.add_argument('--details', action='store_true')
    args = options.parse_args()
    files = sorted(p for p in pathlib.Path(args.folder).iterdir()
                   if p.suffix in ('.xlsx', '.xlsm'))[::args.sample or 1]
    if not files:
        sys.exit(f'no workbooks in {args.folder}')
    modes = list(itertools.product(['--functions', '--no-functions'], [[], ['--precise']]))
    if args.modes == 'fast':
        modes = modes[:1]
    count = collections.Counter()
    bad = []
    for path in files:
        before = hashlib.sha256(path.read_bytes()).hexdigest()
        own = own_cells(path)
        for number, (functions, precise) in enumerate(modes):
            code, reports, messages, seconds = explore(args.program, path, [functions, *precise])
            count['explorations'] += len(reports)
            count['milliseconds'] += int(seconds * 1000)
            if code not in (0, 1) or 'hosts lost' in messages:
                bad.append(f'{path.name} {functions} {precise}: exit {code}: {messages.strip()[-200:]}')
            failed = [r for r in reports if not r['ok']]
            for report in failed:
                count['failed: ' + report['log'][0]] += 1
            if number:
                continue
            for report in reports:
                key = cell_key(report['cell'])
                text, kind, cached = own.get(key, (None, None, None))
                if text is not None:
                    formula = report['formula']
                    count['texts'] += 1
                    if formula == text:
                        count['texts equal'] += 1
                    elif loose(formula) == loose(text):
                        count['texts equal but for case, blanks, quotes, TRUE()'] += 1
                    elif args.details:
                        print(f'{path.name} {key}: {text}  ->  {formula}')
                if report['ok']:
                    same = same_value(kind, cached, report['tree']['value'])
                    if same is not None:
                        count['values'] += 1
                        count['values equal'] += same
                        if not same and args.details:
                            shown = report['tree']['value']
                            print(f'VALUE {path.name} {key}: {cached!r}  ->  {shown!r}')
        if hashlib.sha256(path.read_bytes()).hexdigest() != before:
            bad.append(f'{path.name}: the file has changed')
    for name, number in sorted(count.items()):
        print(f'{number:8} {name}')
    for line in bad:
        print('BAD', line)
    print(f'{len(files)} workbooks, {len(modes)} modes, {len(bad)} bad')
    sys.exit(1 if bad else 0)


if __name__ == '__main__':
    main()
