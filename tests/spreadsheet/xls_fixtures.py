"""Workbooks in .xls form, written record by record and sector by sector (BIFF8 in a compound file)."""
import random
import struct

FREE, END, TABLE, LIST = 0xFFFFFFFF, 0xFFFFFFFE, 0xFFFFFFFD, 0xFFFFFFFC


def record(kind, content=b''):
    return struct.pack('<HH', kind, len(content)) + content


def begin(content, version=0x0600):
    return record(0x809, struct.pack('<HHHHII', version, content, 0, 0, 0, 0))


def pieces(data, size):
    return [data[at:at + size].ljust(size, b'\0') for at in range(0, len(data), size)]


def numbers(values):
    return struct.pack(f'<{len(values)}I', *values)


def compound(streams, seed=None):
    """A compound file of the streams; with a seed their sectors lie in random order."""
    small, small_table, places, contents = [], [], {}, {}
    for name, data in streams.items():
        if len(data) >= 4096:
            contents[name] = pieces(data, 512)
            continue
        places[name] = (len(small), len(data))
        small += pieces(data, 64)
        small_table += [*range(len(small_table) + 1, len(small)), END]
    if small:
        contents['Root Entry'] = pieces(b''.join(small), 512)
        contents['\0mini table'] = pieces(numbers(small_table), 512)
    contents['\0directory'] = pieces(b'\0' * 128 * (len(streams) + 1), 512)

    used = sum(map(len, contents.values()))
    tables = lists = 0
    while True:
        wanted = -(-(used + tables + lists) // 128)
        wanted_lists = max(0, -(-(wanted - 109) // 127))
        if (wanted, wanted_lists) == (tables, lists):
            break
        tables, lists = wanted, wanted_lists
    total = used + tables + lists
    order = list(range(total))
    if seed is not None:
        random.Random(seed).shuffle(order)
    table_at, list_at, free = order[:tables], order[tables:tables + lists], order[tables + lists:]
    table = [FREE] * (tables * 128)
    sectors = [b''] * total
    chains = {}
    for name, content in contents.items():
        chain, free = free[:len(content)], free[len(content):]
        chains[name] = chain
        for sector, following, piece in zip(chain, chain[1:] + [END], content):
            table[sector], sectors[sector] = following, piece
    for sector in table_at:
        table[sector] = TABLE
    for sector in list_at:
        table[sector] = LIST

    def first(name):
        return chains[name][0] if name in chains else END

    def entry(name, kind, start, size, right=FREE, child=FREE):
        encoded = (name + '\0').encode('utf-16-le')
        return (encoded.ljust(64, b'\0') + struct.pack('<HBBIII', len(encoded), kind, 1, FREE, right, child) +
                b'\0' * 36 + struct.pack('<IQ', start, size))

    directory = entry('Root Entry', 5, first('Root Entry'), len(small) * 64, child=1)
    for i, name in enumerate(streams):
        start, size = places.get(name) or (first(name), len(streams[name]))
        directory += entry(name, 2, start, size, right=i + 2 if i + 1 < len(streams) else FREE)
    for at, content in ((chains['\0directory'], directory), (table_at, numbers(table))):
        for sector, piece in zip(at, pieces(content, 512)):
            sectors[sector] = piece
    rest = table_at[109:]
    for i, sector in enumerate(list_at):
        part = (rest[i * 127:(i + 1) * 127] + [FREE] * 127)[:127]
        sectors[sector] = numbers(part + [list_at[i + 1] if i + 1 < lists else END])
    header = (b'\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1' + b'\0' * 16 + struct.pack('<HHHHH', 0x3E, 3, 0xFFFE, 9, 6) + b'\0' * 10 +
              numbers([tables, first('\0directory'), 0, 4096, first('\0mini table'),
                       len(chains.get('\0mini table', '')), list_at[0] if lists else END, lists]))
    header += numbers((table_at[:109] + [FREE] * 109)[:109])
    return header + b''.join(sectors)


def string_table(texts, cut=None):
    """The shared strings; `cut` ends each record after so many bytes of content, as no program but the format allows."""
    out, content, kind = b'', struct.pack('<II', len(texts), len(texts)), 0xFC
    limit = cut or 8224

    def flush():
        nonlocal out, content, kind
        out += record(kind, content)
        content, kind = b'', 0x3C

    for text, runs, phonetic in texts:
        wide = max(map(ord, text), default=0) > 0xFF
        units = text.encode('utf-16-le') if wide else text.encode('latin-1')
        flags = (1 if wide else 0) | (8 if runs else 0) | (4 if phonetic else 0)
        head = struct.pack('<HB', len(text.encode('utf-16-le')) // 2, flags)
        head += struct.pack('<H', runs) if runs else b''
        head += struct.pack('<I', len(phonetic)) if phonetic else b''
        if len(content) + len(head) > limit:
            flush()
        content += head
        width = 2 if wide else 1
        while units:
            room = (limit - len(content)) // width * width
            if room <= 0:
                flush()
                # The part that follows may be 8-bit again, or 16-bit for the first time.
                if wide and all(b == 0 for b in units[1::2]):
                    units, width, wide = units[::2], 1, False
                elif not wide:
                    units, width, wide = b''.join(bytes([b, 0]) for b in units), 2, True
                content = bytes([1 if wide else 0])
                continue
            content += units[:room]
            units = units[room:]
        for extra, whole in ((b'\1\2\3\4' * runs, 4), (phonetic, 1)):
            while extra:
                if len(content) + whole > limit:
                    flush()
                taken = extra[:(limit - len(content)) // whole * whole]
                content, extra = content + taken, extra[len(taken):]
    flush()
    return out


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


def book(cells, seed=None, pad=True, **options):
    data = workbook(cells, **options)
    return compound({'Workbook': data.ljust(4096, b'\0') if pad else data}, seed)


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
    for cut in (None, 19, 20, 21, 22, 23, 24, 33, 50):
        yield f'string_table_cut_{cut}', book(shared, tables=string_table(TEXTS, cut)), expected
    dates = b''.join(number(0, i, 45322.5, xf=i) for i in range(5))
    kinds = ['number', 'date', 'date', 'number', 'number']
    for origin in (0, 1):
        yield f'dates_{origin}', book(dates, tables=record(0x22, struct.pack('<H', origin)) + FORMATS), [
            [1, i + 1, kind, 45322.5 + (1462 * origin if kind == 'date' else 0)] for i, kind in enumerate(kinds)]
    yield 'first_tab_is_a_chart', book(number(0, 0, 1), sheets=((0, 2), (1, 0), (0, 0))), [[1, 1, 'number', 1]]
    chart = begin(0x20) + number(0, 0, 77) + record(0x0A)
    yield 'chart_inside', book(chart + number(0, 0, 1)), [[1, 1, 'number', 1]]
    yield 'short_stream', book(number(0, 0, 1) + number(0, 1, 2), pad=False), [[1, 1, 'number', 1], [1, 2, 'number', 2]]
    many = b''.join(number(i, j, i * 10 + j) for i in range(300) for j in range(3))
    grid = [[i + 1, j + 1, 'number', i * 10 + j] for i in range(300) for j in range(3)]
    for seed in (1, 2, 3):
        yield f'fragmented_{seed}', book(many, seed), grid
    columns = b''.join(number(i, j, i * 10 + j) for j in range(3) for i in range(300))
    yield 'column_by_column', book(columns, 4), grid
    data = workbook(many)
    yield 'sector_table_past_the_header', compound({'Otro': b'\0' * 7_400_000, 'Workbook': data}), grid


def bad_cases():
    whole = every_kind()[0]
    for size in (100, 600, 1100, len(whole) // 2):
        yield f'truncated_{size}', whole[:size], ''
    yield 'password', book(number(0, 0, 1), before=record(0x2F, b'\1\0' + b'\0' * 52)), 'contraseña'
    yield 'encrypted_xlsx', compound({'EncryptionInfo': b'x' * 100, 'EncryptedPackage': b'x' * 5000}), 'contraseña'
    yield 'biff5', book(number(0, 0, 1), version=0x0500), 'anterior a la 97'
    yield 'biff5_stream', compound({'Book': b'x' * 5000}), 'anterior a la 97'
    yield 'bare_biff2', b'\x09\0\4\0\2\0\x10\0' + number(0, 0, 1), 'anterior a la 97'
    yield 'word', compound({'WordDocument': b'x' * 5000}), 'Word'
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
    circle = bytearray(book(b''.join(number(i, 0, i) for i in range(500))))
    struct.pack_into('<I', circle, 512 + 4 * 3, 2)  # the table is sector 0; sector 3 leads back to 2
    yield 'circular_chain', bytes(circle), ''
