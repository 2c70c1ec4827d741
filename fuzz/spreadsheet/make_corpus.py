"""Writes the first corpus of the workbook fuzzers, made of the tests' workbooks: python3 make_corpus.py FOLDER.

Each target gets a folder of its name below it.
"""
import io
import pathlib
import sys
import zipfile

TREE = pathlib.Path(__file__).resolve().parents[2]
sys.path.insert(0, str(TREE / 'tests/spreadsheet'))
import xls_fixtures  # noqa: E402
import xlsx_fixtures  # noqa: E402

LARGEST = 40_000
PARTS = ('xl/sharedStrings.xml', 'xl/styles.xml', 'xl/workbook.xml', 'xl/worksheets/sheet1.xml')


def parts_of(content):
    try:
        archive = zipfile.ZipFile(io.BytesIO(content))
        return b'\0'.join(archive.read(name) if name in archive.namelist() else b'' for name in PARTS)
    except (zipfile.BadZipFile, EOFError):
        return b''


def main():
    folder = pathlib.Path(sys.argv[1])
    for name in ('xls', 'xlsx', 'xlsx_parts'):
        (folder / name).mkdir(parents=True, exist_ok=True)
    for target, module in (('xls', xls_fixtures), ('xlsx', xlsx_fixtures)):
        for name, content, _ in [*module.good_cases(), *module.bad_cases()]:
            if len(content) <= LARGEST:
                (folder / target / name).write_bytes(content)
            if target == 'xlsx' and 0 < len(parts_of(content)) <= LARGEST:
                (folder / 'xlsx_parts' / name).write_bytes(parts_of(content))


if __name__ == '__main__':
    main()
