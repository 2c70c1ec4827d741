"""An HTTP server on a loopback port, for tests: http_server.py FOLDER.

Answers by the first word of the path and keeps the request, byte for byte, in FOLDER/request.
"""
import os
import socket
import sys
import time

ANSWERS = {
    b"ok": b"HTTP/1.1 200 OK\r\nContent-Length: 5\r\n\r\nhola\x00",
    b"chunked": b"HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n3\r\nuno\r\n3\r\ndos\r\n0\r\n\r\n",
    b"missing": b"HTTP/1.1 404 No\r\nContent-Length: 2\r\n\r\nno",
    b"moved": b"HTTP/1.1 302 Found\r\nLocation: /ok\r\nContent-Length: 0\r\n\r\n",
    b"short": b"HTTP/1.1 200 OK\r\nContent-Length: 50\r\n\r\nhola",
    b"cutchunk": b"HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n9\r\nuno",
    b"large": b"HTTP/1.1 200 OK\r\n\r\n" + b"x" * 300_000,
    b"noise": b"this is no answer\r\n\r\n",
    b"nothing": b"",
}

listener = socket.create_server(("127.0.0.1", 0))
print(listener.getsockname()[1], flush=True)
while True:
    connection, _ = listener.accept()
    request = b""
    while b"\r\n\r\n" not in request and (data := connection.recv(65536)):
        request += data
    if b"\r\n" not in request:
        continue  # the client went away, or speaks another protocol
    with open(os.path.join(sys.argv[1], "request"), "wb") as file:
        file.write(request)
    kind = request.split(b" ")[1].lstrip(b"/").split(b"?")[0]
    if kind == b"slow":
        time.sleep(30)
    try:
        connection.sendall(ANSWERS.get(kind, b""))
        connection.shutdown(socket.SHUT_WR)
    except OSError:
        pass  # the client had enough
    connection.close()
