"""The reporting server of the sales upload on a loopback port, for tests and for trying it by hand:
answer_server.py FOLDER.

Reads the request fields as the wire format describes them, and keeps every request line in FOLDER/requests. The answer
to the question for days is FOLDER/pending, byte for byte; days are accepted with "OK", unless FOLDER/faults names the
fault of a day ("20240131 cut" a line; "list" stands for the question): refused, empty, error, cut, noise, delayed,
hangs. What it accepted is kept in FOLDER/days, one file of fields per day, so that a day sent again replaces itself.
"""
import time
import urllib.parse

from http_answers import FOLDER, response, serve


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


def answer_to(target):
    fields = fields_of(target)
    asks = fields[:2] == ["1", "1"] and len(fields) == 6
    reports = fields[:2] == ["0", "1"] and len(fields) == 11
    if not target.startswith("/registrarventas.asp?") or not (asks or reports):
        return response(b"ERROR protocolo", "400 Bad Request")
    day = "list" if asks else "%04d%02d%02d" % tuple(int(field) for field in reversed(fields[3:6]))
    fault = fault_of(day)
    if fault == "delayed":
        time.sleep(0.3)
    elif fault == "hangs":
        time.sleep(60)
    elif fault:
        return {"refused": response(b"ERROR%3A%20cerrado otra"), "empty": response(b""),
                "error": response(b"OK", "500 Error"), "cut": response(b"OK", missing=8), "noise": b"nada\r\n"}[fault]
    if asks:
        return response(read("pending"))
    (FOLDER / "days").mkdir(exist_ok=True)
    (FOLDER / "days" / day).write_text(" ".join(fields))
    return response(b"OK")


def answer(request):
    line = request.split(b"\r\n")[0].decode()
    if line.count(" ") != 2:
        return b""
    with open(FOLDER / "requests", "a", encoding="utf-8") as file:
        file.write(line + "\n")
    return answer_to(line.split(" ")[1])


serve(answer)
