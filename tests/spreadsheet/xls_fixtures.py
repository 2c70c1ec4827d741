"""Workbooks in .xls form, written record by record and sector by sector (BIFF8 in a compound file)."""
import io
import random
import struct

import xlwt.CompoundDoc

FREE, END = 0xFFFFFFFF, 0xFFFFFFFE
DIRECTORY, TABLE = 48, 76


def record(kind, content=b''):
    return struct.pack('<HH', kind, len(content)) + content


def begin(content, version=0x0600):
    return record(0x809, struct.pack('<HHHHII', version, content, 0, 0, 0, 0))


def pieces(data, size):
    return [data[at:at + size].ljust(size, b'\0') for at in range(0, len(data), size)]


def numbers(values):
    return struct.pack(f'<{len(values)}I', *values)


def compound(data, name='Workbook'):
    """A compound file of one stream, its sectors in order."""
    buffer = io.BytesIO()
    xlwt.CompoundDoc.XlsDoc().save(buffer, data)
    content = bytearray(buffer.getvalue())
    encoded = (name + '\0').encode('utf-16-le')
    struct.pack_into('<64sH', content, sector_named_at(DIRECTORY, content) + 128, encoded, len(encoded))
    return content


def sector_named_at(place, content):
    """Where the sector begins whose number stands at a place of the header: DIRECTORY, or the first of the TABLE."""
    return 512 * (1 + struct.unpack_from('<I', content, place)[0])


def in_small_sectors(data):
    """A compound file that keeps the stream, of 2,048 bytes at most, in sectors of 64 bytes."""
    count = -(-len(data) // 64)
    content = compound(data.ljust(2048, b'\0') + numbers([*range(1, count), END]))
    struct.pack_into('<II', content, 60, 4, 1)  # their table is sector 4
    struct.pack_into('<II', content, sector_named_at(TABLE, content) + 4 * 3, END, END)
    directory = sector_named_at(DIRECTORY, content)
    struct.pack_into('<II', content, directory + 116, 0, 2048)
    struct.pack_into('<I', content, directory + 128 + 120, len(data))
    return content


def shuffled(content, seed):
    """The same compound file with its sectors in random order."""
    places = list(range(len(content) // 512 - 1))
    random.Random(seed).shuffle(places)
    struct.pack_into('<I', content, sector_named_at(DIRECTORY, content) + 128 + 116, places[0])  # where the stream begins
    header, sectors = list(struct.unpack('<128I', content[:512])), pieces(content[512:], 512)

    def moved(numbers_of_sectors):
        return [places[number] if number < len(places) else number for number in numbers_of_sectors]

    tables = [number for number in header[19:] if number != FREE]
    following = moved(struct.unpack(f'<{len(tables) * 128}I', b''.join(sectors[number] for number in tables)))
    table = list(following)
    for place, number in zip(places, following):
        table[place] = number
    for number, piece in zip(tables, pieces(numbers(table), 512)):
        sectors[number] = piece
    header[12:13], header[19:] = moved(header[12:13]), moved(header[19:])
    return numbers(header) + b''.join(sector for _, sector in sorted(zip(places, sectors)))


def string_table(texts, cut=8224):
    """The shared strings; `cut` ends each record after so many bytes of content, as no program but the format allows."""
    records, content = [], struct.pack('<II', len(texts), len(texts))
    for text, runs, phonetic in texts:
        units = pieces(text.encode('utf-16-le'), 2)
        wide = any(unit[1] for unit in units)
        head = struct.pack('<HB', len(units), (1 if wide else 0) | (8 if runs else 0) | (4 if phonetic else 0))
        head += struct.pack('<H', runs) if runs else b''
        head += struct.pack('<I', len(phonetic)) if phonetic else b''
        for at, piece in enumerate([head, *units, *[b'\1\2\3\4'] * runs, *pieces(phonetic, 1)]):
            is_unit = 0 < at <= len(units)
            if len(content) + (1 if is_unit and not wide else len(piece)) > cut:
                records.append(content)
                content = b''
                if is_unit:  # the part that follows may be 8-bit again, or 16-bit for the first time
                    wide = not wide or any(unit[1] for unit in units[at - 1:])
                    content = bytes([wide])
            content += piece[:1] if is_unit and not wide else piece
    return b''.join(record(0x3C if at else 0xFC, piece) for at, piece in enumerate([*records, content]))


def plain(text):
    """A text with a length of two bytes, 16-bit where needed."""
    wide = max(map(ord, text), default=0) > 0xFF
    return struct.pack('<HB', len(text), wide) + text.encode('utf-16-le' if wide else 'latin-1')


def workbook(cells, tables=b'', sheets=((0, 0),), before=b'', version=0x0600):
    """The stream. sheets: (visibility, kind) of each tab; the cells belong to the first of kind 0."""
    names = [f'Hoja{i}'.encode() for i in range(len(sheets))]
    globals_size = len(begin(5) + before + tables + record(0x0A)) + sum(12 + len(name) for name in names)
    parts, bound, at = [], b'', globals_size
    done = False
    for (visibility, kind), name in zip(sheets, names):
        own = cells if kind == 0 and not done else number(0, 0, 99)
        done = done or kind == 0
        part = begin(0x10 if kind == 0 else 0x20) + own + record(0x0A)
        bound += record(0x85, struct.pack('<IBBBB', at, visibility, kind, len(name), 0) + name)
        parts.append(part)
        at += len(part)
    return begin(5, version) + before + tables + bound + record(0x0A) + b''.join(parts)


def book(cells, **options):
    return compound(workbook(cells, **options))


def head(row, column, xf=0):
    return struct.pack('<HHH', row, column, xf)


def number(row, column, value, xf=0):
    return record(0x203, head(row, column, xf) + struct.pack('<d', value))


def rk_of(value):
    if isinstance(value, int):
        return (value << 2 | 2) & 0xFFFFFFFF
    if round(value * 100) == value * 100:
        return (int(value * 100) << 2 | 3) & 0xFFFFFFFF
    return struct.unpack('<Q', struct.pack('<d', value))[0] >> 32 & ~3


def formula(row, column, result, between=b'', text=None, kind=6):
    own = record(kind, head(row, column) + result + struct.pack('<HIH', 0, 0, 3) + b'\x1E\1\0') + between
    return own if text is None else own + record(0x207, plain(text))


def special(kind, value=0):
    return struct.pack('<BBBBBBH', kind, 0, value, 0, 0, 0, 0xFFFF)


def xf(number_format):
    return record(0xE0, struct.pack('<HH', 0, number_format) + b'\0' * 16)


FORMATS = (record(0x41E, struct.pack('<H', 170) + plain('yyyy"/"mm')) + record(0x41E, struct.pack('<H', 171) + plain('0.0" d"')) +
           xf(0) + xf(14) + xf(170) + xf(171) + xf(4))

TEXTS = [('uno', 0, b''), ('', 0, b''), ('rico ñ', 3, b''), ('Ω ancho con cola' + 'x' * 60, 0, b''),
         ('fonético', 2, b'\1\0\0\0' * 4), ('estrecho y luego' + 'y' * 40, 1, b''), ('😀 par', 0, b''), ('Ω' * 50, 0, b'')]


def every_kind():
    cells = (record(0xFD, head(0, 0) + struct.pack('<I', 3)) + record(0x201, head(0, 1)) +
             record(0xBE, struct.pack('<HHHHH', 0, 2, 0, 0, 3)) + record(0x204, head(0, 4) + plain('etiqueta Ω')) +
             record(0xD6, head(0, 5) + plain('rico') + struct.pack('<H', 1) + b'\0\0\0\0') +
             number(0, 6, 1.25) + record(0x27E, head(0, 7) + struct.pack('<I', rk_of(-5))) +
             record(0x27E, head(0, 8) + struct.pack('<I', rk_of(12.34))) +
             record(0xBD, struct.pack('<HHHIHIHIH', 1, 0, 0, rk_of(1), 0, rk_of(0.25), 0, rk_of(-2.5), 2)) +
             record(0x205, head(2, 0) + b'\1\0') + record(0x205, head(2, 1) + b'\x2A\1') +
             record(0x205, head(2, 2) + b'\x0F\1'))
    expected = [[1, 1, 'text', TEXTS[3][0]], [1, 5, 'text', 'etiqueta Ω'], [1, 6, 'text', 'rico'], [1, 7, 'number', 1.25],
                [1, 8, 'number', -5], [1, 9, 'number', 12.34], [2, 1, 'number', 1], [2, 2, 'number', 0.25],
                [2, 3, 'number', -2.5], [3, 1, 'boolean', 1], [3, 2, 'error', '#N/A'], [3, 3, 'error', '#VALUE!']]
    return book(cells, tables=string_table(TEXTS)), expected


def formulas():
    shared = record(0x4BC, b'\0' * 10)
    long_text = 'largo ' * 20
    cut = record(0x207, struct.pack('<HB', len(long_text), 0) + long_text[:50].encode()) + record(
        0x3C, b'\1' + long_text[50:].encode('utf-16-le'))
    cells = (formula(0, 0, struct.pack('<d', 2.5)) + formula(0, 1, special(0), text='texto') +
             formula(0, 2, special(0), between=shared, text='compartida Ω') + formula(0, 3, special(1, 1)) +
             formula(0, 4, special(2, 7)) + formula(0, 5, special(3)) + formula(0, 6, special(0), between=cut) +
             number(1, 0, 7) + formula(1, 1, struct.pack('<d', -1.5), kind=0x206) +
             formula(1, 2, special(0), text='de la 4', kind=0x406) + formula(1, 3, special(2, 42), kind=0x406))
    return book(cells), [[1, 1, 'number', 2.5], [1, 2, 'text', 'texto'], [1, 3, 'text', 'compartida Ω'],
                         [1, 4, 'boolean', 1], [1, 5, 'error', '#DIV/0!'], [1, 6, 'text', ''],
                         [1, 7, 'text', long_text], [2, 1, 'number', 7], [2, 2, 'number', -1.5],
                         [2, 3, 'text', 'de la 4'], [2, 4, 'error', '#N/A']]


def good_cases():
    yield ('every_kind', *every_kind())
    yield ('formulas', *formulas())
    shared = b''.join(record(0xFD, head(i, 0) + struct.pack('<I', i)) for i in range(len(TEXTS)))
    expected = [[i + 1, 1, 'text', text] for i, (text, _, _) in enumerate(TEXTS)]
    for cut in (8224, 19, 20, 21, 22, 23, 24, 33, 50):
        yield f'string_table_cut_{cut}', book(shared, tables=string_table(TEXTS, cut)), expected
    dates = b''.join(number(0, i, 45322.5, xf=i) for i in range(5))
    kinds = ['number', 'date', 'date', 'number', 'number']
    for origin in (0, 1):
        yield f'dates_{origin}', book(dates, tables=record(0x22, struct.pack('<H', origin)) + FORMATS), [
            [1, i + 1, kind, 45322.5 + (1462 * origin if kind == 'date' else 0)] for i, kind in enumerate(kinds)]
    yield 'first_tab_is_a_chart', book(number(0, 0, 1), sheets=((0, 2), (1, 0), (0, 0))), [[1, 1, 'number', 1]]
    chart = begin(0x20) + number(0, 0, 77) + record(0x0A)
    yield 'chart_inside', book(chart + number(0, 0, 1)), [[1, 1, 'number', 1]]
    yield 'short_stream', in_small_sectors(workbook(number(0, 0, 1) + number(0, 1, 2))), [
        [1, 1, 'number', 1], [1, 2, 'number', 2]]
    many = b''.join(number(i, j, i * 10 + j) for i in range(300) for j in range(3))
    grid = [[i + 1, j + 1, 'number', i * 10 + j] for i in range(300) for j in range(3)]
    for seed in (1, 2, 3):
        yield f'fragmented_{seed}', shuffled(book(many), seed), grid
    columns = b''.join(number(i, j, i * 10 + j) for j in range(3) for i in range(300))
    yield 'column_by_column', book(columns), grid
    yield 'sector_table_past_the_header', book(many + record(0x3C, b'\0' * 8_000) * 1_000), grid


def bad_cases():
    whole = every_kind()[0]
    for size in (100, 600, 1100, len(whole) // 2):
        yield f'truncated_{size}', whole[:size], ''
    yield 'password', book(number(0, 0, 1), before=record(0x2F, b'\1\0' + b'\0' * 52)), 'contraseña'
    yield 'encrypted_xlsx', compound(b'x' * 5000, 'EncryptedPackage'), 'contraseña'
    yield 'biff5', book(number(0, 0, 1), version=0x0500), 'anterior a la 97'
    yield 'biff5_stream', compound(b'x' * 5000, 'Book'), 'anterior a la 97'
    yield 'bare_biff2', b'\x09\0\4\0\2\0\x10\0' + number(0, 0, 1), 'anterior a la 97'
    yield 'word', compound(b'x' * 5000, 'WordDocument'), 'Word'
    yield 'no_end', book(number(0, 0, 1))[:-512] + b'\3\2\xFF\xFF' * 128, ''
    yield 'missing_string', book(record(0xFD, head(0, 0) + struct.pack('<I', 5))), 'usa un texto que no existe'
    yield 'column_past_the_end', book(number(0, 256, 1)), 'no existe'
    known = {0x0006, 0x00BD, 0x00D6, 0x00FD, 0x0203, 0x0204, 0x0205, 0x0206, 0x027E, 0x0406}
    cell_numbers = (0x02, 0x03, 0x04, 0x05, 0x06, 0x7E, 0xBD, 0xD6, 0xFD)
    for kind in {version | cell for version in (0, 0x0200, 0x0400) for cell in cell_numbers} - known:
        yield f'cell_{kind}', book(record(kind, head(4, 0) + b'\7\0\0')), f'fila 5 tiene un registro desconocido (0x{kind:04X})'
    yield 'half_cell', book(record(0x203, head(0, 0) + b'\0\0')), 'truncada'
    yield 'half_string_table', book(b'', tables=record(0xFC, struct.pack('<IIHB', 9, 9, 50, 0) + b'abc')), 'truncado'
    yield 'chart_only', book(b'', sheets=((0, 2),)), 'ninguna hoja'
    circle = book(b''.join(number(i, 0, i) for i in range(500)))
    struct.pack_into('<I', circle, sector_named_at(TABLE, circle) + 4 * 3, 2)  # sector 3 leads back to 2
    yield 'circular_chain', circle, ''
    yield from (('empty', b'', 'vacío'), ('csv', b'codigo;precio\r\nA1;5\r\n', 'archivo de texto'),
                ('html', b'\xEF\xBB\xBF<html><table><tr><td>1', 'HTML'), ('xml', b'<?xml?><a/>', 'XML'),
                ('pdf', b'%PDF-1.4\n\0', 'PDF'), ('noise', bytes(range(256)) * 9, 'no es un libro'))
