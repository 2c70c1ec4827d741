"""The parts of the Tabular Data Stream protocol (MS-TDS, versions 7.2 to 7.4) that a server needs to answer a driver.

Only what is read and written by tds_server.py is here. Texts are UTF-16 little endian, numbers little endian unless a
name says otherwise.
"""
import datetime
import decimal
import struct

SQL_BATCH, REPLY, ATTENTION, TRANSACTION, LOGIN7, PRELOGIN = 0x01, 0x04, 0x06, 0x0E, 0x10, 0x12
DONE = 0xFD
MORE, FAILED, COUNT, STOPPED = 0x01, 0x02, 0x10, 0x20
COLLATION = bytes.fromhex("0a0c100034")  # Modern_Spanish_CI_AS and its code page
EPOCH = datetime.datetime(1900, 1, 1)


class Closed(Exception):
    """The other side went away."""


def read_exactly(connection, count):
    data = b""
    while len(data) < count:
        more = connection.recv(count - len(data))
        if not more:
            raise Closed
        data += more
    return data


def read_message(connection):
    """The type and the bytes of one message, whose packets are put together."""
    body = b""
    while True:
        kind, status, length = struct.unpack(">BBH4x", read_exactly(connection, 8))
        body += read_exactly(connection, length - 8)
        if status & 1:
            return kind, body


def packets(body, kind=REPLY, size=4096):
    """The message as packets; `size` counts the header too."""
    pieces = [body[start:start + size - 8] for start in range(0, len(body), size - 8)] or [b""]
    for number, piece in enumerate(pieces, 1):
        last = number == len(pieces)
        yield struct.pack(">BBHHBB", kind, 1 if last else 0, len(piece) + 8, 0, number & 0xFF, 0) + piece


def byte_text(text):
    return struct.pack("<B", len(text)) + text.encode("utf-16-le")


def prelogin_answer():
    options = [(0, bytes([15, 0, 7, 208, 0, 0])), (1, b"\2"), (2, b"\0"), (3, b""), (4, b"\0")]  # 2: no encryption
    head, data, offset = b"", b"", len(options) * 5 + 1
    for token, value in options:
        head += struct.pack(">BHH", token, offset + len(data), len(value))
        data += value
    return head + b"\xff" + data


def environment(kind, new, old=b"\0"):
    body = struct.pack("<B", kind) + new + old
    return struct.pack("<BH", 0xE3, len(body)) + body


def login_answer(login):
    version = struct.unpack_from("<I", login, 4)[0]
    accepted = b"\1" + struct.pack(">I", version) + byte_text("Microsoft SQL Server") + bytes([15, 0, 7, 208])
    return (environment(1, byte_text("tienda"), byte_text("master")) + environment(7, b"\5" + COLLATION)
            + struct.pack("<BH", 0xAD, len(accepted)) + accepted + environment(4, byte_text("4096"), byte_text("4096"))
            + done())


def done(status=0, count=0):
    return struct.pack("<BHHQ", DONE, status, 0xC1, count)


def error(number, severity, text, line=1):
    message = (struct.pack("<IBBH", number, 1, severity, len(text)) + text.encode("utf-16-le") + byte_text("servidor")
               + byte_text("") + struct.pack("<I", line))
    return struct.pack("<BH", 0xAA, len(message)) + message


# A column type is its TYPE_INFO and the function that writes a value; a null is written by the function too.

def sized(write):
    return lambda value: b"\0" if value is None else (lambda data: struct.pack("<B", len(data)) + data)(write(value))


def nvarchar(value):
    if value is None:
        return b"\xff\xff"
    data = value.encode("utf-16-le")
    return struct.pack("<H", len(data)) + data


def nvarchar_max(value):
    if value is None:
        return b"\xff" * 8
    data = value.encode("utf-16-le")
    chunk = struct.pack("<I", len(data)) + data if data else b""
    return struct.pack("<Q", len(data)) + chunk + struct.pack("<I", 0)


def decimal_bytes(value):
    scaled = int(decimal.Decimal(value).scaleb(4))
    return bytes([0 if scaled < 0 else 1]) + abs(scaled).to_bytes(16, "little")


def money_bytes(value):
    scaled = int(decimal.Decimal(value).scaleb(4))
    return struct.pack("<iI", scaled >> 32, scaled & 0xFFFFFFFF)


def datetime_bytes(value):
    moment = datetime.datetime.fromisoformat(value) - EPOCH
    ticks = moment.seconds * 300 + round(moment.microseconds * 300 / 1e6)
    return struct.pack("<iI", moment.days, ticks)


TYPES = {
    "nvarchar": (b"\xe7" + struct.pack("<H", 8000) + COLLATION, nvarchar),
    "nvarchar_max": (b"\xe7\xff\xff" + COLLATION, nvarchar_max),
    "int": (b"\x26\x04", sized(lambda value: struct.pack("<i", value))),
    "bigint": (b"\x26\x08", sized(lambda value: struct.pack("<q", value))),
    "bit": (b"\x68\x01", sized(lambda value: bytes([value]))),
    "float": (b"\x6d\x08", sized(lambda value: struct.pack("<d", value))),
    "decimal": (b"\x6a\x11\x13\x04", sized(decimal_bytes)),  # DECIMAL(19,4)
    "money": (b"\x6e\x08", sized(money_bytes)),
    "datetime": (b"\x6f\x08", sized(datetime_bytes)),
}


def columns(described):
    """COLMETADATA of [name, type] pairs; every column may be null."""
    body = struct.pack("<BH", 0x81, len(described))
    for name, kind in described:
        body += struct.pack("<IH", 0, 1) + TYPES[kind][0] + byte_text(name)
    return body


def row(described, values):
    return b"\xd1" + b"".join(TYPES[kind][1](value) for (_, kind), value in zip(described, values))


# Reading what the driver sends.

def without_headers(body):
    return body[struct.unpack_from("<I", body)[0]:]


def read_batch(body):
    return without_headers(body).decode("utf-16-le")


def read_transaction(body):
    """The number of a transaction manager request (5 begins, 7 commits, 8 rolls back), and what follows it."""
    request = without_headers(body)
    return struct.unpack_from("<H", request)[0], request[2:]
