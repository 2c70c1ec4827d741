"""An HTTP server on a loopback port, for tests: http_server.py FOLDER.

Answers by the first word of the path and keeps the request, byte for byte, in FOLDER/request.
"""
import time

from http_answers import FOLDER, response, serve

ANSWERS = {
    b"ok": response(b"hola\x00"),
    b"chunked": b"HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n3\r\nuno\r\n3\r\ndos\r\n0\r\n\r\n",
    b"missing": response(b"no", "404 No"),
    b"moved": b"HTTP/1.1 302 Found\r\nLocation: /ok\r\nContent-Length: 0\r\n\r\n",
    b"short": response(b"hola", missing=46),
    b"cutchunk": b"HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n9\r\nuno",
    b"large": b"HTTP/1.1 200 OK\r\n\r\n" + b"x" * 300_000,
    b"noise": b"this is no answer\r\n\r\n",
}


def answer(request):
    (FOLDER / "request").write_bytes(request)
    kind = request.split(b" ")[1].lstrip(b"/").split(b"?")[0]
    if kind == b"slow":
        time.sleep(30)
    return ANSWERS.get(kind, b"")


serve(answer)
