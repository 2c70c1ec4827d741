"""A taxpayer lookup page on a loopback port, for tests: taxpayer_server.py FOLDER.

Answers by the identifier at the end of the query and keeps the request, byte for byte, in FOLDER/request.
"""
import os
import socket
import sys

FORM = b'<html><input name="txtRncCed" type="text">'


def answer(body, status=b"200 OK", missing=0):
    length = str(len(body) + missing).encode()
    return b"HTTP/1.1 " + status + b"\r\nContent-Length: " + length + b"\r\n\r\n" + body


def row(code, name):
    return FORM + b"<tr><td>" + code + b"</td><td>" + name + b"</td><td>ACTIVO</td></tr>"


ANSWERS = {
    b"101012341": answer(row(b"101012341", b" PE\xd1A &amp; HIJOS, SRL ")),
    b"024691352": answer(FORM),
    b"049382691": answer(b"<html>Portal nuevo</html>"),
    b"037037022": answer(b"error", b"500 Error"),
    b"148148051": answer(row(b"148148051", b"CORTADA")[:-40], missing=40),
}

listener = socket.create_server(("127.0.0.1", 0))
print(listener.getsockname()[1], flush=True)
while True:
    connection, _ = listener.accept()
    request = b""
    while b"\r\n\r\n" not in request and (data := connection.recv(65536)):
        request += data
    with open(os.path.join(sys.argv[1], "request"), "wb") as file:
        file.write(request)
    code = request.split(b" ")[1].rpartition(b"=")[2]
    connection.sendall(ANSWERS.get(code, b""))
    connection.close()
