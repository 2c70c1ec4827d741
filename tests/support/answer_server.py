"""An HTTP server of answers on a loopback port, for tests and for trying by hand: answer_server.py FOLDER.

Keeps the last request, byte for byte, in FOLDER/request. Answers by the path; by the identifier at the end of the query as
the taxpayer lookup page does; and as the reporting server of the sales upload: it reads the fields of the query as the wire
format describes them and keeps every request line in FOLDER/requests. The answer to the question for days is
FOLDER/pending, byte for byte; days are accepted with "OK", unless FOLDER/faults names the fault of a day ("20240131 cut" a
line; "list" stands for the question): refused, empty, error, cut, noise, delayed, hangs. What it accepted is kept in
FOLDER/days, one file of fields per day, so that a day sent again replaces itself.
"""
import pathlib
import socket
import sys
import time
import urllib.parse

FOLDER = pathlib.Path(sys.argv[1])
FORM = b'<html><input name="txtRncCed" type="text">'
CHUNKED = b"HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n"


def response(body, status="200 OK", missing=0):
    """`missing` bytes are announced that do not come."""
    head = f"HTTP/1.1 {status}\r\nContent-Length: {len(body) + missing}\r\nConnection: close\r\n\r\n"
    return head.encode() + body


def row(code, name):
    return FORM + b"<tr><td>" + code + b"</td><td>" + name + b"</td><td>ACTIVO</td></tr>"


ANSWERS = {
    "ok": response(b"hola\x00"),
    "chunked": CHUNKED + b"3\r\nuno\r\n3\r\ndos\r\n0\r\n\r\n",
    "missing": response(b"no", "404 No"),
    "moved": b"HTTP/1.1 302 Found\r\nLocation: /ok\r\nContent-Length: 0\r\n\r\n",
    "short": response(b"hola", missing=46),
    "cutchunk": CHUNKED + b"9\r\nuno",
    "large": b"HTTP/1.1 200 OK\r\n\r\n" + b"x" * 300_000,
    "noise": b"this is no answer\r\n\r\n",
    "101012341": response(row(b"101012341", b" PE\xd1A &amp; HIJOS, SRL ")),
    "024691352": response(FORM),
    "049382691": response(b"<html>Portal nuevo</html>"),
    "037037022": response(b"error", "500 Error"),
    "148148051": response(row(b"148148051", b"CORTADA")[:-40], missing=40),
    "refused": response(b"ERROR%3A%20cerrado otra"),
    "empty": response(b""),
    "error": response(b"OK", "500 Error"),
    "cut": response(b"OK", missing=8),
}


def read(name):
    path = FOLDER / name
    return path.read_bytes() if path.exists() else b""


def answer_to_report(query):
    fields = [urllib.parse.unquote(piece) for piece in urllib.parse.unquote(query).split(" ")]
    asks = fields[:2] == ["1", "1"] and len(fields) == 6
    reports = fields[:2] == ["0", "1"] and len(fields) == 11
    if not asks and not reports:
        return response(b"ERROR protocolo", "400 Bad Request")
    day = "list" if asks else "%04d%02d%02d" % tuple(int(field) for field in reversed(fields[3:6]))
    fault = dict(line.split(" ") for line in read("faults").decode().splitlines()).get(day)
    time.sleep({"delayed": 0.3, "hangs": 60}.get(fault, 0))
    if fault in ANSWERS:
        return ANSWERS[fault]
    if asks:
        return response(read("pending"))
    (FOLDER / "days").mkdir(exist_ok=True)
    (FOLDER / "days" / day).write_text(" ".join(fields))
    return response(b"OK")


def answer(request):
    (FOLDER / "request").write_bytes(request)
    line = request.split(b"\r\n")[0].decode("latin-1")
    with open(FOLDER / "requests", "a", encoding="utf-8") as file:
        file.write(line + "\n")
    if line.count(" ") != 2:
        return b""
    path, _, query = line.split(" ")[1].lstrip("/").partition("?")
    if path == "registrarventas.asp":
        return answer_to_report(query)
    time.sleep(30 if path == "slow" else 0)
    return ANSWERS.get(path) or ANSWERS.get(query.rpartition("=")[2], b"")


listener = socket.create_server(("127.0.0.1", 0))
print(listener.getsockname()[1], flush=True)
while True:
    with listener.accept()[0] as connection:
        try:
            received = b""
            while b"\r\n\r\n" not in received and (data := connection.recv(65536)):
                received += data
            connection.sendall(answer(received))
            connection.shutdown(socket.SHUT_WR)
        except OSError:
            pass  # the client had enough
