"""An HTTP server on a loopback port, for tests: answer_server.py FOLDER.

Answers by the path, or by the identifier at the end of the query as the taxpayer lookup page does, and keeps the request,
byte for byte, in FOLDER/request.
"""
import time

from http_answers import FOLDER, response, serve

FORM = b'<html><input name="txtRncCed" type="text">'


def row(code, name):
    return FORM + b"<tr><td>" + code + b"</td><td>" + name + b"</td><td>ACTIVO</td></tr>"


ANSWERS = {
    b"ok": response(b"hola\x00"),
    b"chunked": b"HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n3\r\nuno\r\n3\r\ndos\r\n0\r\n\r\n",
    b"missing": response(b"no", "404 No"),
    b"moved": b"HTTP/1.1 302 Found\r\nLocation: /ok\r\nContent-Length: 0\r\n\r\n",
    b"short": response(b"hola", missing=46),
    b"cutchunk": b"HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n9\r\nuno",
    b"large": b"HTTP/1.1 200 OK\r\n\r\n" + b"x" * 300_000,
    b"noise": b"this is no answer\r\n\r\n",
    b"101012341": response(row(b"101012341", b" PE\xd1A &amp; HIJOS, SRL ")),
    b"024691352": response(FORM),
    b"049382691": response(b"<html>Portal nuevo</html>"),
    b"037037022": response(b"error", "500 Error"),
    b"148148051": response(row(b"148148051", b"CORTADA")[:-40], missing=40),
}


def answer(request):
    (FOLDER / "request").write_bytes(request)
    target = request.split(b" ")[1]
    kind = target.lstrip(b"/").split(b"?")[0]
    if kind == b"slow":
        time.sleep(30)
    return ANSWERS.get(kind, ANSWERS.get(target.rpartition(b"=")[2], b""))


serve(answer)
