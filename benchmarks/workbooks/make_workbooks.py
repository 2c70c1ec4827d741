"""Writes the workbooks of bench_spreadsheets into a folder: the same 50,000 rows of 13 columns as .xlsx and .xls.

The .xlsx has shared strings, as the office programs write them; Debian's openpyxl puts every text into its cell.
"""
import random
import sys
import zipfile

import xlwt

ROWS = 50_000
HEADINGS = 4
MAIN = 'http://schemas.openxmlformats.org/spreadsheetml/2006/main'
OFFICE = 'http://schemas.openxmlformats.org/officeDocument/2006/relationships'
PACKAGE = 'http://schemas.openxmlformats.org/package/2006/relationships'
COLUMNS = 'ABCDEFGHIJKLM'


def row_of(number, source):
    return [f'COD{number:06d}', f'Descripción del artículo núm. {number}', f'M{number % 40:02d}', f'D{number % 12:02d}',
            round(source.random() * 1000, 2), round(source.random() * 2000, 4), 'nota', 'CAJA', 12,
            round(source.random() * 2000, 2), round(source.random() * 2000, 2), number, round(source.random() * 100, 4)]


def relations(*entries):
    items = ''.join(f'<Relationship Id="rId{i}" Type="{OFFICE}/{kind}" Target="{target}"/>'
                    for i, (kind, target) in enumerate(entries))
    return f'<Relationships xmlns="{PACKAGE}">{items}</Relationships>'


def write_xlsx(path, rows):
    numbers = {}
    lines = []
    for index, row in enumerate(rows, 1):
        cells = ''.join(
            f'<c r="{column}{index}" s="1" t="s"><v>{numbers.setdefault(value, len(numbers))}</v></c>'
            if isinstance(value, str) else f'<c r="{column}{index}" s="0"><v>{value}</v></c>'
            for column, value in zip(COLUMNS, row))
        lines.append(f'<row r="{index}" spans="1:13">{cells}</row>')
    with zipfile.ZipFile(path, 'w', zipfile.ZIP_DEFLATED) as book:
        book.writestr('_rels/.rels', relations(('officeDocument', 'xl/workbook.xml')))
        book.writestr('xl/workbook.xml', f'<workbook xmlns="{MAIN}" xmlns:r="{OFFICE}"><sheets>'
                                         '<sheet name="Precios" sheetId="1" r:id="rId0"/></sheets></workbook>')
        book.writestr('xl/_rels/workbook.xml.rels', relations(
            ('worksheet', 'worksheets/sheet1.xml'), ('sharedStrings', 'sharedStrings.xml')))
        book.writestr('xl/sharedStrings.xml', f'<sst xmlns="{MAIN}">' + ''.join(
            f'<si><t>{text}</t></si>' for text in numbers) + '</sst>')
        book.writestr('xl/worksheets/sheet1.xml',
                      f'<worksheet xmlns="{MAIN}"><sheetData>{"".join(lines)}</sheetData></worksheet>')


def write_xls(path, rows):
    book = xlwt.Workbook()
    sheet = book.add_sheet('Precios')
    for index, row in enumerate(rows):
        for column, value in enumerate(row):
            sheet.write(index, column, value)
    book.save(path)


def main():
    source = random.Random(1)
    rows = [[f'Encabezado {column}' for column in range(13)]] * HEADINGS
    rows += [row_of(number, source) for number in range(ROWS)]
    write_xlsx(sys.argv[1] + '/libro.xlsx', rows)
    write_xls(sys.argv[1] + '/libro.xls', rows)


if __name__ == '__main__':
    main()
