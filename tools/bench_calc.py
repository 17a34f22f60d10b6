#!/usr/bin/env python3
"""Measures exploring through LibreOffice Calc, beside what Calc itself needs.

Usage: bench_calc.py BUILD [WORKBOOK]

  - cells per second of `explore --all` on the sample workbook, on WORKBOOK when given, and on a
    generated one of 20,000 formulas, with the memory of the office process at the end
  - the time of one exploration as a whole process, beside converting the same file to CSV with
    the same office, taken in turns
  - within the office: the time of exploring the sample's cells beside evaluating the texts of
    their parts directly (the suite's disabled benchmark)
"""
import pathlib
import statistics
import subprocess
import sys
import tempfile
import threading
import time

HERE = pathlib.Path(__file__).resolve().parent.parent
RUNS = 7


def timed(command):
    start = time.monotonic()
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True)
    return time.monotonic() - start, done


def generated(folder, formulas=20000):
    """A flat ODF sheet of rows that depend on each other."""
    path = pathlib.Path(folder) / 'generated.fods'
    rows = []
    for row in range(1, formulas // 4 + 1):
        cells = [f'<table:table-cell office:value-type="float" office:value="{row % 97}"/>']
        for formula in (f'of:=[.A{row}]*2+1', f'of:=SUM([.A{max(1, row - 9)}:.A{row}])',
                        f'of:=IF([.B{row}]&gt;50;[.C{row}]/2;[.A{row}])',
                        f'of:=INDEX([.$A$1:.$A$100];MOD([.A{row}];100)+1)'):
            cells.append(f'<table:table-cell table:formula="{formula}"/>')
        rows.append('<table:table-row>' + ''.join(cells) + '</table:table-row>')
    path.write_text(
        '<?xml version="1.0" encoding="UTF-8"?><office:document '
        'xmlns:office="urn:oasis:names:tc:opendocument:xmlns:office:1.0" '
        'xmlns:table="urn:oasis:names:tc:opendocument:xmlns:table:1.0" '
        'xmlns:of="urn:oasis:names:tc:opendocument:xmlns:of:1.2" office:version="1.3" '
        'office:mimetype="application/vnd.oasis.opendocument.spreadsheet"><office:body>'
        '<office:spreadsheet><table:table table:name="Data">' + ''.join(rows) +
        '</table:table></office:spreadsheet></office:body></office:document>')
    return path


class Memory(threading.Thread):
    """The most memory that an office process started from now on has had, in MiB."""

    def __init__(self):
        super().__init__(daemon=True)
        self.peak = 0
        self.going = True
        self.others = set(pathlib.Path('/proc').glob('[0-9]*'))

    def run(self):
        while self.going:
            for status in pathlib.Path('/proc').glob('[0-9]*/status'):
                if status.parent in self.others:
                    continue
                try:
                    text = status.read_text()
                except OSError:
                    continue
                if text.startswith('Name:\tsoffice.bin') and 'VmHWM:' in text:
                    self.peak = max(self.peak, int(text.split('VmHWM:')[1].split()[0]) // 1024)
            time.sleep(0.2)


def all_cells(program, path):
    memory = Memory()
    memory.start()
    seconds, done = timed([program, 'explore', str(path), '--all', '--json'])
    memory.going = False
    cells = len(done.stdout.splitlines())
    startup, _ = timed([program, 'explore', str(path), 'A1', '--json'])
    # A few cells take less than two starts differ.
    exploring = seconds - startup
    rate = (f'{cells / exploring:.0f} formulas per second' if exploring > startup / 4
            else 'too few for a rate')
    print(f'{path.name}: {cells} formulas in {seconds:.2f} s, of these {startup:.2f} s to start and '
          f'load: {rate}; office at most {memory.peak} MiB')


def one_beside_csv(program, path, folder):
    ours, csv = [], []
    profile = f'-env:UserInstallation=file://{folder}/profile'
    for run in range(RUNS + 1):
        a, _ = timed([program, 'explore', str(path), 'A1', '--json'])
        b, _ = timed(['soffice', '--headless', profile, '--convert-to', 'csv', '--outdir', folder,
                      str(path)])
        if run:  # the first makes the profile
            ours.append(a)
            csv.append(b)
    a, b = statistics.median(ours), statistics.median(csv)
    print(f'{path.name}: one exploration {a:.2f} s, soffice --convert-to csv {b:.2f} s: '
          f'{a / b:.2f} times (medians of {RUNS})')


def main():
    if len(sys.argv) < 2:
        sys.exit(__doc__)
    build = pathlib.Path(sys.argv[1])
    program = str(build / 'bin' / 'korvane')
    sample = HERE / 'examples' / 'loan.xlsx'
    with tempfile.TemporaryDirectory() as folder:
        one_beside_csv(program, sample, folder)
        books = [sample] + [pathlib.Path(p) for p in sys.argv[2:]] + [generated(folder)]
        for book in books:
            all_cells(program, book)
    _, done = timed([str(build / 'bin' / 'run_inside_office'),
                     str(build / 'lib' / 'libcalc_inside_test.so'),
                     '--gtest_also_run_disabled_tests', '--gtest_filter=*DISABLED_Speed*'])
    for line in done.stdout.splitlines():
        if line.startswith('speed:'):
            print(line)


if __name__ == '__main__':
    main()
