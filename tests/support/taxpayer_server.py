"""A taxpayer lookup page on a loopback port, for tests: taxpayer_server.py FOLDER.

Answers by the identifier at the end of the query and keeps the request, byte for byte, in FOLDER/request.
"""
from http_answers import FOLDER, response, serve

FORM = b'<html><input name="txtRncCed" type="text">'


def row(code, name):
    return FORM + b"<tr><td>" + code + b"</td><td>" + name + b"</td><td>ACTIVO</td></tr>"


ANSWERS = {
    b"101012341": response(row(b"101012341", b" PE\xd1A &amp; HIJOS, SRL ")),
    b"024691352": response(FORM),
    b"049382691": response(b"<html>Portal nuevo</html>"),
    b"037037022": response(b"error", "500 Error"),
    b"148148051": response(row(b"148148051", b"CORTADA")[:-40], missing=40),
}


def answer(request):
    (FOLDER / "request").write_bytes(request)
    return ANSWERS.get(request.split(b" ")[1].rpartition(b"=")[2], b"")


serve(answer)
