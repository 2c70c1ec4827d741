"""A server that speaks the protocol of SQL Server on a loopback port, for tests: tds_server.py FOLDER.

It holds no data. FOLDER/answers.json says what it answers: a JSON object whose keys are statements, or pieces of them
(of two in the same place the longer one counts), and whose values are lists of steps:

  {"columns": [["Nombre", "nvarchar"], ...], "rows": [[...], ...]}   a result with rows; with "broken": [number,
                           severity, text] the server fails after the last of them
  {"count": 3}             a statement that affected three rows
  {"none": true}           a statement without a count
  {"error": [547, 16, "..."]}   number, severity, text
  {"wait": true}           nothing until an attention of the driver, which ends the whole answer
  {"cut": true}            the connection is cut in the middle of the message

The keys "login", "begin", "commit" and "rollback" stand for those requests; a login has one step, an error. A statement
without an answer is an error of its own. Every request goes to FOLDER/requests, one line each: what kind, a blank, the
text. Calls of procedures are not understood: the provider sends statements as they are.
"""
import json
import pathlib
import re
import socket
import struct
import sys
import threading

import tds_protocol as tds

FOLDER = pathlib.Path(sys.argv[1])
ROW_COUNT = "SELECT @@ROWCOUNT"
TRANSACTIONS = {5: ("begin", 8), 7: ("commit", 9), 8: ("rollback", 10)}


class Cut(Exception):
    pass


def answers():
    path = FOLDER / "answers.json"
    return json.loads(path.read_text(encoding="utf-8")) if path.exists() else {}


def steps_for(text):
    """The steps of every known statement in the text, in the text's order. What asks for the number of affected rows gets
    that of the statement before."""
    known = answers()
    pieces = sorted([key for key in known if key in text] + [ROW_COUNT], key=len, reverse=True)
    found = [match.group() for match in re.finditer("|".join(map(re.escape, pieces)), text)]
    if all(piece == ROW_COUNT for piece in found):
        return [{"error": [50000, 16, "the test has no answer for: " + text]}]
    steps, affected = [], 0
    for piece in found:
        if piece == ROW_COUNT:
            steps.append({"columns": [["", "int"]], "rows": [[affected]]})
            continue
        steps += known[piece]
        affected = known[piece][-1].get("count", 0)
    return steps


class Session:
    """One connection, from its first message to its end."""

    def __init__(self, connection):
        self.connection = connection
        self.transaction = 0

    def note(self, kind, text=""):
        with open(FOLDER / "requests", "a", encoding="utf-8") as file:
            file.write(f"{kind} {text}".rstrip().replace("\n", "\\n") + "\n")

    def send(self, body):
        for packet in tds.packets(body):
            self.connection.sendall(packet)

    def run(self):
        while True:
            kind, body = tds.read_message(self.connection)
            if kind == tds.PRELOGIN:
                self.send(tds.prelogin_answer())
            elif kind == tds.LOGIN7:
                refused = answers().get("login")
                self.send(tds.error(*refused[0]["error"]) + tds.done(tds.FAILED) if refused else tds.login_answer(body))
            elif kind == tds.SQL_BATCH:
                text = tds.read_batch(body)
                self.note("batch", text)
                self.answer(steps_for(text))
            elif kind == tds.TRANSACTION:
                self.manage(*tds.read_transaction(body))
            else:
                raise Cut

    def manage(self, number, rest):
        """Begins and ends transactions; an end may ask that the next one begins."""
        name, change = TRANSACTIONS[number]
        next_begins = name != "begin" and rest[1 + rest[0]] & 1
        self.note(name + (" and begin" if next_begins else ""))
        failing = answers().get(name)
        if failing:
            self.answer(failing)
            return
        mark = struct.pack("<BQ", 8, 1)
        changes = tds.environment(change, b"\0", mark) if name != "begin" else b""
        if next_begins or name == "begin":
            changes += tds.environment(8, mark, b"\0")
        self.send(changes + tds.done())

    def answer(self, steps):
        """Sends the results of all steps."""
        body = b""
        for place, step in enumerate(steps):
            if "wait" in step:
                return self.wait_for_attention()
            if "cut" in step:
                self.cut(body)
            body += self.step(step, 0 if place == len(steps) - 1 else tds.MORE)
        self.send(body or tds.done())

    @staticmethod
    def step(step, more):
        if "error" in step:
            return tds.error(*step["error"]) + tds.done(more | tds.FAILED)
        if "columns" in step:
            rows = b"".join(tds.row(step["columns"], values) for values in step["rows"])
            result = tds.columns(step["columns"]) + rows
            if "broken" in step:
                return result + tds.error(*step["broken"]) + tds.done(more | tds.FAILED)
            return result + tds.done(more | tds.COUNT, len(step["rows"]))
        if "count" in step:
            return tds.done(more | tds.COUNT, step["count"])
        return tds.done(more)

    def wait_for_attention(self):
        while tds.read_message(self.connection)[0] != tds.ATTENTION:
            pass
        self.note("attention")
        self.send(tds.done(tds.STOPPED))

    def cut(self, body):
        """Half a message, then nothing."""
        packet = next(tds.packets(body + bytes(64)))
        self.connection.sendall(packet[:len(body) + 8])
        raise Cut


def serve(connection):
    with connection:
        try:
            Session(connection).run()
        except (tds.Closed, Cut, OSError):
            pass


listener = socket.create_server(("127.0.0.1", 0))
print(listener.getsockname()[1], flush=True)
while True:
    threading.Thread(target=serve, args=(listener.accept()[0],), daemon=True).start()
