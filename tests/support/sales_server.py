"""The reporting server of the sales upload on a loopback port, for tests and for trying it by hand:
sales_server.py FOLDER.

Reads the request fields as the wire format describes them, and keeps every request line in FOLDER/requests. The answer
to the question for days is FOLDER/pending, byte for byte; days are accepted with "OK", unless FOLDER/faults names the
fault of a day ("20240131 cut" a line; "list" stands for the question): refused, empty, error, cut, noise, delayed,
hangs. What it accepted is kept in FOLDER/days, one file of fields per day, so that a day sent again replaces itself.
"""
import pathlib
import socket
import sys
import time
import urllib.parse

FOLDER = pathlib.Path(sys.argv[1])


def http(body, status="200 OK", missing=0):
    head = f"HTTP/1.1 {status}\r\nContent-Length: {len(body) + missing}\r\nConnection: close\r\n\r\n"
    return head.encode() + body


def read(name):
    path = FOLDER / name
    return path.read_bytes() if path.exists() else b""


def fault_of(key):
    for line in read("faults").decode().splitlines():
        day, _, fault = line.partition(" ")
        if day == key:
            return fault
    return ""


def fields_of(target):
    query = target.partition("?")[2]
    return [urllib.parse.unquote(piece) for piece in urllib.parse.unquote(query).split(" ")]


def answer(target):
    fields = fields_of(target)
    asks = fields[:2] == ["1", "1"] and len(fields) == 6
    reports = fields[:2] == ["0", "1"] and len(fields) == 11
    if not target.startswith("/registrarventas.asp?") or not (asks or reports):
        return http(b"ERROR protocolo", "400 Bad Request")
    day = "list" if asks else "%04d%02d%02d" % tuple(int(field) for field in reversed(fields[3:6]))
    fault = fault_of(day)
    if fault == "delayed":
        time.sleep(0.3)
    elif fault == "hangs":
        time.sleep(60)
    elif fault:
        return {"refused": http(b"ERROR%3A%20cerrado otra"), "empty": http(b""), "error": http(b"OK", "500 Error"),
                "cut": http(b"OK", missing=8), "noise": b"nada\r\n"}[fault]
    if asks:
        return http(read("pending"))
    (FOLDER / "days").mkdir(exist_ok=True)
    (FOLDER / "days" / day).write_text(" ".join(fields))
    return http(b"OK")


def serve(connection):
    request = b""
    while b"\r\n\r\n" not in request and (data := connection.recv(65536)):
        request += data
    line = request.split(b"\r\n")[0].decode()
    if line.count(" ") != 2:
        return
    with open(FOLDER / "requests", "a", encoding="utf-8") as file:
        file.write(line + "\n")
    connection.sendall(answer(line.split(" ")[1]))


listener = socket.create_server(("127.0.0.1", 0))
print(listener.getsockname()[1], flush=True)
while True:
    client, _ = listener.accept()
    with client:
        try:
            serve(client)
        except OSError:
            pass  # the client had enough
