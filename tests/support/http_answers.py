"""What the tests' HTTP servers have in common: a loopback port, and one request after the other."""
import pathlib
import socket
import sys

FOLDER = pathlib.Path(sys.argv[1])


def response(body, status="200 OK", missing=0):
    """`missing` bytes are announced that do not come."""
    head = f"HTTP/1.1 {status}\r\nContent-Length: {len(body) + missing}\r\nConnection: close\r\n\r\n"
    return head.encode() + body


def read_request(connection):
    request = b""
    while b"\r\n\r\n" not in request and (data := connection.recv(65536)):
        request += data
    return request


def serve(answer):
    """Prints the port, and sends what `answer` gives for the bytes of each request."""
    listener = socket.create_server(("127.0.0.1", 0))
    print(listener.getsockname()[1], flush=True)
    while True:
        with listener.accept()[0] as connection:
            try:
                request = read_request(connection)
                # Without a line the client went away, or speaks another protocol.
                if b"\r\n" in request:
                    connection.sendall(answer(request))
                    connection.shutdown(socket.SHUT_WR)
            except OSError:
                pass  # the client had enough
