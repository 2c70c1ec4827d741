"""Workbooks in .xlsx form, written part by part so that each can have exactly one peculiarity or fault.

A case is (name, bytes, expected): expected is a list of [row, column, kind, value], or a piece of the failure's text.
"""
import io
import zipfile

import openpyxl

SHEET, STRINGS, WORKBOOK = 'xl/worksheets/sheet1.xml', 'xl/sharedStrings.xml', 'xl/workbook.xml'
RELATIONS, TYPES = 'xl/_rels/workbook.xml.rels', '[Content_Types].xml'
MAIN = 'http://schemas.openxmlformats.org/spreadsheetml/2006/main'
STRICT = 'http://purl.oclc.org/ooxml/spreadsheetml/main'
OFFICE = 'http://schemas.openxmlformats.org/officeDocument/2006/relationships'
STRICT_OFFICE = 'http://purl.oclc.org/ooxml/officeDocument/relationships'


def zipped(parts, method=zipfile.ZIP_DEFLATED):
    buffer = io.BytesIO()
    with zipfile.ZipFile(buffer, 'w', method) as archive:
        for name, text in parts.items():
            archive.writestr(name, text)
    return buffer.getvalue()


def parts_of(book):
    """What openpyxl makes of a workbook, its sheets addressed from the folder of their list as most programs do."""
    buffer = io.BytesIO()
    book.save(buffer)
    with zipfile.ZipFile(buffer) as archive:
        made = {name: archive.read(name).decode() for name in archive.namelist()}
    return {name: text.replace('"/xl/', '"') if name == RELATIONS else text for name, text in made.items()}


EMPTY = parts_of(openpyxl.Workbook())  # which writes every text into its cell; here they are shared
EMPTY[RELATIONS] = EMPTY[RELATIONS].replace(
    '</R', f'<Relationship Id="s" Type="{OFFICE}/sharedStrings" Target="sharedStrings.xml"/></R')
EMPTY[TYPES] = EMPTY[TYPES].replace(
    '</T', '<Override PartName="/xl/sharedStrings.xml" ContentType='
    '"application/vnd.openxmlformats-officedocument.spreadsheetml.sharedStrings+xml"/></T')
PLAIN = '<cellXfs><xf numFmtId="0"/></cellXfs>'


def parts(data, shared='', styles=PLAIN, sheet=None):
    """The parts of a workbook whose only sheet holds `data` inside <sheetData>."""
    return EMPTY | {
        SHEET: sheet or f'<worksheet xmlns="{MAIN}"><sheetData>{data}</sheetData></worksheet>',
        STRINGS: f'<sst xmlns="{MAIN}">{shared}</sst>',
        'xl/styles.xml': f'<styleSheet xmlns="{MAIN}">{styles}</styleSheet>'}


def book(data, **options):
    return zipped(parts(data, **options))


def with_part(base, name, text):
    return zipped(base | {name: text})


STYLES = ('<numFmts><numFmt numFmtId="170" formatCode="[$-409]d\\-mmm;@"/>'
          '<numFmt numFmtId="171" formatCode="&quot;días&quot; 0.00 [Red]\\s"/>'
          '<numFmt numFmtId="172" formatCode="[h]:mm"/></numFmts>'
          '<cellStyleXfs><xf numFmtId="14"/></cellStyleXfs><cellXfs><xf numFmtId="0"/><xf numFmtId="14"/>'
          '<xf numFmtId="170"/><xf numFmtId="171"/><xf numFmtId="172"/><xf numFmtId="4"/></cellXfs>'
          '<dxfs><dxf><numFmt numFmtId="0" formatCode="dd/mm"/></dxf></dxfs>')

SHARED = ('<si><t>uno</t></si><si><t/></si><si><t xml:space="preserve"> dos </t></si>'
          '<si><r><rPr><b/></rPr><t>ri</t></r><r><t>co</t></r><rPh sb="0" eb="1"><t>FON</t></rPh>'
          '<phoneticPr fontId="1"/></si><si/><si><t>tercera &lt;&amp;&#241; <![CDATA[<x>]]></t></si>')

WHOLE_SHARED = [[1, 1, 'text', 'uno'], [1, 2, 'text', ''], [1, 3, 'text', ' dos '], [1, 4, 'text', 'rico'],
                [1, 5, 'text', ''], [1, 6, 'text', 'tercera <&ñ <x>']]


def shared_row(count):
    return '<row r="1">' + ''.join(f'<c r="{chr(65 + i)}1" t="s"><v>{i}</v></c>' for i in range(count)) + '</row>'


def several_sheets():
    """The first tab is a chart, the second a hidden sheet in sheet2.xml whose target is absolute."""
    book = openpyxl.Workbook()
    book.create_chartsheet(index=0)
    book.create_sheet('Z', 1).sheet_state = 'hidden'
    book['Z']['A1'] = 9
    base = parts_of(book)
    first, second = 'worksheets/sheet1.xml', 'worksheets/sheet2.xml'
    base[RELATIONS] = base[RELATIONS].replace(second, '?').replace(first, '/xl/' + second).replace('?', first)
    base['xl/' + first], base['xl/' + second] = base['xl/' + second], base['xl/' + first]
    return zipped(base)


def prefixed():
    base = parts('')
    for name in (WORKBOOK, RELATIONS, '_rels/.rels'):
        base[name] = base[name].replace(MAIN, STRICT).replace(OFFICE, STRICT_OFFICE)
    base[WORKBOOK] = (
        f'<s:workbook xmlns:s="{STRICT}" xmlns:q="{STRICT_OFFICE}"><s:sheets>'
        '<s:sheet name="H" sheetId="1" q:id="rId1"/></s:sheets></s:workbook>')
    base[SHEET] = (
        f'<s:worksheet xmlns:s="{STRICT}" xmlns:o="urn:otro"><s:sheetData><s:row r="2"><o:c r="A2"><s:v>5</s:v></o:c>'
        '<s:c r="B2" t="s"><s:v>0</s:v></s:c></s:row></s:sheetData></s:worksheet>')
    base[STRINGS] = f'<s:sst xmlns:s="{STRICT}"><s:si><s:t>estricto</s:t></s:si></s:sst>'
    return zipped(base)


def cell(inner, attributes=''):
    return f'<row r="1"><c r="A1"{attributes}>{inner}</c></row>'


def one(kind, value):
    return [[1, 1, kind, value]]


def good_cases():
    yield 'shared', book(shared_row(6), shared=SHARED), WHOLE_SHARED
    yield 'inline', book('<row r="3"><c r="B3" t="inlineStr"><is><t>00123</t></is></c><c r="C3" t="inlineStr"><is>'
                         '<r><t>a</t></r><rPh sb="0" eb="1"><t>x</t></rPh><r><t xml:space="preserve"> b</t></r></is></c>'
                         '<c r="D3" t="inlineStr"><is/></c></row>'), [
        [3, 2, 'text', '00123'], [3, 3, 'text', 'a b'], [3, 4, 'text', '']]
    for number, (text, value) in enumerate({
            '_x0041_b_x000D_c': 'Ab\rc', '_x005F_x0041_': '_x0041_', '_x41_ _xZZZZ_ _x0041': '_x41_ _xZZZZ_ _x0041',
            '__x0041_': '_A', '_xD83D__xDE00_': '\U0001F600', '_xD83D_!': '\uFFFD!', 'a_x0000_b': 'ab',
            '_x00e1__x00E1_': 'áá'}.items()):
        yield f'escape{number}', book(cell(f'<v>{text}</v>', ' t="str"')), one('text', value)
    for number, (text, value) in enumerate({
            '1.5': 1.5, '-2E-3': -0.002, '1.23E+2': 123, ' 7 ': 7, '+4': 4, '0.1': 0.1, '1e-400': 0,
            '123456789012345678': 123456789012345678.0, '.5': 0.5}.items()):
        yield f'number{number}', book(cell(f'<v>{text}</v>')), one('number', value)
    yield 'overflow', book(cell('<v>1e400</v>')), one('error', '#NUM!')
    yield 'not_a_number', book(cell('<v>NaN</v>')), one('error', '#NUM!')
    yield 'formulas', book(
        '<row r="1"><c r="A1"><f>B1*2</f><v>4.5</v></c><c r="B1" t="str"><f>"x"</f><v> x</v></c><c r="C1" t="b"><f>1=1</f>'
        '<v>1</v></c><c r="D1" t="e"><f>1/0</f><v>#DIV/0!</v></c><c r="E1" t="str"><f>""</f><v></v></c>'
        '<c r="F1"><f t="shared" ref="F1:G1" si="0">A1</f><v>1</v></c><c r="G1"><f t="shared" si="0"/><v>2</v></c></row>'
    ), [[1, 1, 'number', 4.5], [1, 2, 'text', ' x'], [1, 3, 'boolean', 1], [1, 4, 'error', '#DIV/0!'],
        [1, 5, 'text', ''], [1, 6, 'number', 1], [1, 7, 'number', 2]]
    yield 'not_calculated', book('<row r="1"><c r="A1"><f>B1</f></c><c r="B1"><f>C1</f><v/></c></row>'), [
        [1, 1, 'error', '#SIN CALCULAR'], [1, 2, 'error', '#SIN CALCULAR']]
    yield 'plain_kinds', book('<row r="1"><c r="A1" t="b"><v>0</v></c><c r="B1" t="e"><v>#N/A</v></c><c r="C1" s="1"/>'
                              '<c r="D1" t="n"><v/></c><c r="E1" t="s"/></row>', styles=STYLES), [
        [1, 1, 'boolean', 0], [1, 2, 'error', '#N/A']]
    dates = ''.join(f'<c r="{chr(65 + i)}1" s="{i}"><v>45322.5</v></c>' for i in range(6))
    kinds = ['number', 'date', 'date', 'number', 'date', 'number']
    base = parts(f'<row r="1">{dates}</row>', styles=STYLES)
    from_1904 = base | {WORKBOOK: base[WORKBOOK].replace('<workbookPr/>', '<workbookPr date1904="1"/>')}
    for name, book_parts, shift in (('dates', base, 0), ('dates1904', from_1904, 1462)):
        yield name, zipped(book_parts), [
            [1, i + 1, kind, 45322.5 + (shift if kind == 'date' else 0)] for i, kind in enumerate(kinds)]
    yield 'iso_dates', book('<row r="1"><c r="A1" t="d"><v>2024-01-31T12:00:00Z</v></c>'
                            '<c r="B1" t="d"><v>2024-01-31</v></c></row>'), [
        [1, 1, 'date', 45322.5], [1, 2, 'date', 45322]]
    yield 'no_references', book('<row><c><v>1</v></c><c><v>2</v></c></row><row/><row><c r="C3"><v>3</v></c><c><v>4</v>'
                                '</c></row><row><c r="A9"><v>5</v></c></row>'), [
        [1, 1, 'number', 1], [1, 2, 'number', 2], [3, 3, 'number', 3], [3, 4, 'number', 4], [9, 1, 'number', 5]]
    yield 'cells_in_disorder', book('<row r="1"><c r="C1"><v>3</v></c><c r="A1"><v>1</v></c><c r="C1"><v>4</v></c></row>'
                                    ), [[1, 1, 'number', 1], [1, 3, 'number', 4]]
    wrong = (f'<worksheet xmlns="{MAIN}"><dimension ref="B7:B7"/><sheetViews><v>1</v></sheetViews><sheetData>'
             '<row r="1"><c r="XFD1"><v>1</v><extLst><v>2</v></extLst></c></row></sheetData><mergeCells>'
             '<mergeCell ref="A1:C9"/></mergeCells></worksheet>')
    yield 'wrong_dimension', book('', sheet=wrong), [[1, 16384, 'number', 1]]
    yield 'several_sheets', several_sheets(), one('number', 9)
    yield 'prefixed_strict', prefixed(), [[2, 2, 'text', 'estricto']]
    base = parts(cell('<v>7</v>'))
    utf16 = ('<?xml version="1.0" encoding="UTF-16"?>' + base[SHEET]).encode('utf-16')
    yield 'utf16', zipped(base | {SHEET: utf16}, zipfile.ZIP_STORED), one('number', 7)
    base = parts(shared_row(1), shared=SHARED)
    yield 'backslashes', zipped({name.replace('/', '\\') if name.startswith('xl/w') else name: text
                                 for name, text in base.items()}), one('text', 'uno')
    yield 'no_cells', book(''), []


def entity_bomb():
    entities = ''.join(f'<!ENTITY e{i + 1} "{"&e%d;" % i * 10}">' for i in range(9))
    return (f'<!DOCTYPE sst [<!ENTITY e0 "0123456789">{entities}]><sst xmlns="{MAIN}"><si><t>&e9;</t></si></sst>')


def bad_cases():
    base = parts(shared_row(1), shared=SHARED)
    whole = zipped(base)
    yield 'truncated', whole[:len(whole) // 2], 'truncado'
    yield 'truncated_tail', whole[:-30], 'truncado'
    yield 'far_zip64_record', whole[:-22] + b'PK\6\7' + b'\xFF' * 16 + whole[-22:], 'truncado o dañado'
    many = whole[:-14] + b'\xFE\xFF' * 2 + whole[-10:]
    yield 'countless_entries', many, 'supera el límite'
    damaged = bytearray(zipped(base, zipfile.ZIP_STORED))
    at = bytes(damaged).index(b'<v>0</v>')
    damaged[at + 3] = ord('1')
    yield 'wrong_checksum', bytes(damaged), 'dañada'
    yield 'half_xml', with_part(base, SHEET, f'<worksheet xmlns="{MAIN}"><sheetData><row r="1">'), \
        'no es XML correcto'
    yield 'no_sheet_part', zipped({name: text for name, text in base.items() if name != SHEET}), 'falta la parte'
    yield 'no_workbook', zipped({'a.txt': 'hola'}), 'no contiene un libro'
    yield 'opendocument', zipped({'mimetype': 'x', 'content.xml': '<a/>'}), 'OpenDocument'
    yield 'no_worksheet', with_part(base, WORKBOOK, f'<workbook xmlns="{MAIN}"><sheets/></workbook>'), \
        'ninguna hoja'
    yield 'entity_bomb', with_part(base, STRINGS, entity_bomb()), 'declara un tipo de documento'
    outside = f'<!DOCTYPE x SYSTEM "file:///etc/hostname"><worksheet xmlns="{MAIN}"/>'
    yield 'outside_document_type', with_part(base, SHEET, outside), 'declara un tipo de documento'
    yield 'zip_bomb', with_part(base, STRINGS, f'<sst xmlns="{MAIN}">' + ' ' * 60_000_000 + '</sst>'), \
        'supera el límite'
    yield 'string_bomb', with_part(base, STRINGS,
                                   f'<sst xmlns="{MAIN}"><si><t>{"A" * 9_000_000}</t></si></sst>'), 'supera el límite'
    for name, data, cause in (
            ('missing_string', cell('<v>99</v>', ' t="s"'), 'usa un texto que no existe'),
            ('letters_as_number', cell('<v>12x</v>'), 'no se entiende: «12x»'),
            ('unknown_type', cell('<v>1</v>', ' t="zz"'), 'tipo desconocido'),
            ('rows_in_disorder', '<row r="2"><c><v>1</v></c></row><row r="1"><c><v>1</v></c></row>', 'después de la fila'),
            ('row_past_the_end', '<row r="1048577"/>', 'no existe'),
            ('column_past_the_end', '<row r="1"><c r="XFE1"><v>1</v></c></row>', 'no existe'),
            ('reference_of_another_row', '<row r="1"><c r="A2"><v>1</v></c></row>', 'otra fila'),
            ('reference_without_row', '<row r="1"><c r="A"><v>1</v></c></row>', 'referencia incorrecta')):
        yield name, book(data), cause
