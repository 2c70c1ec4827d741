"""Judges the workbook readers: python3 check_workbooks.py SHEET_DUMP FOLDER MEGABYTES.

Makes the workbooks of the fixture modules and others by openpyxl and xlwt, lets sheet_dump read each, and compares
with what was put in and with what openpyxl and xlrd read. Each reading has 20 seconds and so many megabytes of address
space (0: no limit).
"""
import datetime
import itertools
import json
import pathlib
import random
import resource
import subprocess
import sys
import warnings

import openpyxl
import openpyxl.utils.datetime
import xlrd
import xlwt

import xls_fixtures
import xlsx_fixtures

DAMAGED = '1 3 '  # the exit code, and the kind of failure
# What the judge itself cannot read, gets wrong (escapes, phonetic text in a run) or refuses, as the case's name begins.
BEYOND_OPENPYXL = ('escape', 'overflow', 'not_a_number', 'prefixed_strict', 'utf16', 'backslashes', 'not_calculated',
                   'cells_in_disorder', 'iso_dates', 'no_references', 'several_sheets', 'dates1904')

TEMPLATES = pathlib.Path(__file__).resolve().parents[2] / 'data/plantillas/PlantillasImpresion/Excel'

faults = []
warnings.simplefilter('ignore')


def limit_memory():
    megabytes = int(sys.argv[3])
    if megabytes:
        resource.setrlimit(resource.RLIMIT_AS, (megabytes << 20, megabytes << 20))


def dump(program, path):
    """The cells, and the failure as text."""
    done = subprocess.run([program, path], capture_output=True, timeout=20, preexec_fn=limit_memory, check=False)
    failure = f'{done.returncode} {done.stderr.decode().strip()}' if done.returncode else ''
    return [json.loads(line) for line in done.stdout.decode().splitlines()], failure


def without_empty_text(cells):
    return [cell for cell in cells if cell[3] != '']


def agree(ours, theirs):
    ours, theirs = without_empty_text(ours), without_empty_text(theirs)
    if len(ours) != len(theirs):
        return f'{len(ours)} cells instead of {len(theirs)}: {ours[:8]} {theirs[:8]}'
    for mine, other in zip(ours, theirs):
        same = mine[:3] == other[:3] and (
            abs(mine[3] - other[3]) < 1e-6 if mine[2] == 'date' else
            float(mine[3]) == float(other[3]) if mine[2] == 'number' else mine[3] == other[3])
        if not same:
            return f'{mine} instead of {other}'
    return ''


def by_openpyxl(path):
    kinds = {'s': 'text', 'n': 'number', 'b': 'boolean', 'e': 'error', 'd': 'date'}
    cells = []
    for row in openpyxl.load_workbook(path, data_only=True).worksheets[0].iter_rows():
        for cell in row:
            if cell.value is None:
                continue
            kind = kinds[cell.data_type]
            value = openpyxl.utils.datetime.to_excel(cell.value) if kind == 'date' else cell.value
            cells.append([cell.row, cell.column, kind, value])
    return cells


def by_xlrd(path):
    kinds = {1: 'text', 2: 'number', 3: 'date', 4: 'boolean', 5: 'error'}
    book = xlrd.open_workbook(path)
    sheet = book.sheet_by_index(0)
    cells = []
    for row in range(sheet.nrows):
        for column, cell in enumerate(sheet.row(row)):
            if cell.ctype not in kinds:
                continue
            value = xlrd.error_text_from_code[cell.value] if cell.ctype == 5 else cell.value
            if cell.ctype == 3 and book.datemode == 1:
                value += 1462
            cells.append([row + 1, column + 1, kinds[cell.ctype], value])
    return cells


def check_good(program, path, expected, judge):
    cells, difference = dump(program, path)
    if not difference and expected is not None and cells != expected:
        difference = f'{cells} instead of {expected}'
    if not difference and judge:
        difference = agree(cells, judge(path))
    if difference:
        faults.append(f'{path.name}: {difference}')


def check_bad(program, path, cause):
    _, failure = dump(program, path)
    if not failure.startswith(DAMAGED) or cause not in failure:
        faults.append(f'{path.name}: «{failure}» instead of «{cause}»')


def random_value(source):
    return source.choice([
        None, '', '00123', 'Ñandú Ω', ' dos  ', True, False, 17, -3, source.randrange(10**6) / 100,
        source.random() * 10.0**source.randint(-12, 15), datetime.datetime(2024, 2, 29, 13, 30)])


def make_random(path, seed):
    source = random.Random(seed)
    book = openpyxl.Workbook() if path.suffix == '.xlsx' else xlwt.Workbook()
    sheet = book.active if path.suffix == '.xlsx' else book.add_sheet('Hoja')
    plain, date = xlwt.easyxf(), xlwt.easyxf(num_format_str='dd/mm/yyyy hh:mm')
    for row, column in itertools.product(range(400), range(13)):
        value = random_value(source)
        if path.suffix == '.xlsx':
            sheet.cell(row + 1, column + 1, value)
        else:
            sheet.write(row, column, value, date if isinstance(value, datetime.datetime) else plain)
    book.save(str(path))


def written(path, content):
    path.write_bytes(content)
    return path


def main():
    program, folder = sys.argv[1], pathlib.Path(sys.argv[2])
    folder.mkdir(parents=True, exist_ok=True)
    for module, suffix, judge in ((xlsx_fixtures, '.xlsx', by_openpyxl), (xls_fixtures, '.xls', by_xlrd)):
        for name, content, expected in module.good_cases():
            path = written(folder / (name + suffix), content)
            check_good(program, path, expected, None if name.startswith(BEYOND_OPENPYXL) else judge)
        for name, content, cause in module.bad_cases():
            check_bad(program, written(folder / f'bad_{name}{suffix}', content), cause)
        for seed in range(3):
            path = folder / f'random{seed}{suffix}'
            make_random(path, seed)
            check_good(program, path, None, judge)
            copy = path.with_name(f'copy{seed}{suffix[1:]}.xlsx')
            subprocess.run([program, path, copy], check=True)
            check_good(program, copy, None, by_openpyxl)
    for suffix, judge in (('.xlsx', by_openpyxl), ('.XLT', by_xlrd)):
        check_good(program, TEMPLATES / ('FormatoMigracion001' + suffix), None, judge)
    sys.exit('\n'.join(faults) or None)


if __name__ == '__main__':
    main()
