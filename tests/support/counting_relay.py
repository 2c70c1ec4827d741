"""Relays to a PostgreSQL server on a Unix socket: counting_relay.py SERVERFOLDER FOLDER.

Listens under the server's own socket name in FOLDER. FOLDER/trips has one byte for each round trip: for whatever a
client sends first after the server has spoken. It is written before the client's words are passed on.
"""
import pathlib
import select
import socket
import sys
import threading

NAME = ".s.PGSQL.5432"
SERVER, FOLDER = map(pathlib.Path, sys.argv[1:])


def relay(client):
    with client, socket.socket(socket.AF_UNIX) as server, open(FOLDER / "trips", "ab", buffering=0) as trips:
        server.connect(str(SERVER / NAME))
        speaker = server
        while True:
            for side in select.select([server, client], [], [])[0]:
                data = side.recv(65536)
                if not data:
                    return
                if side is client and speaker is server:
                    trips.write(b".")
                speaker = side
                (client if side is server else server).sendall(data)


(FOLDER / "trips").touch()
listener = socket.socket(socket.AF_UNIX)
listener.bind(str(FOLDER / NAME))
listener.listen()
print("5432", flush=True)
while True:
    threading.Thread(target=relay, args=(listener.accept()[0],), daemon=True).start()
