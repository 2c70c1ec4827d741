#!/usr/bin/python3
"""The command `importar-excel --simular --json` as a whole process against gnumeric's ssconvert turning the same workbook
into csv.

Makes a demo store in a folder of its own with 50,000 more items, and a workbook of 50,000 rows and 13 columns of which
every second is one of them. Both programs run in turn, so that a noisy moment meets both; the medians are compared. Ends
with 1 when an aim is missed, with 2 when something else is wrong.

    benchmarks/import_process.py [PATH_OF_THE_COMMAND]
"""
import json
import os
import pathlib
import sqlite3
import statistics
import subprocess
import sys
import tempfile
import time

import openpyxl

ROWS = 50_000
ROUNDS = 5
AIM = 0.5
AIM_MEGABYTES = 128


def broken(cause):
    print(cause, file=sys.stderr)
    sys.exit(2)


def code(number):
    return f"IT{number:06}"


def fill_store(database):
    with sqlite3.connect(database) as connection:
        connection.execute("INSERT OR IGNORE INTO Marcas (idMarca) VALUES ('DEF')")
        connection.execute("INSERT OR IGNORE INTO Departamentos (idDepartamento) VALUES ('DEF')")
        codes = [(code(number * 7919 % ROWS),) for number in range(ROWS)]
        for text in (
            "INSERT INTO Items (idItem, idMarca, idDepartamento) VALUES (?, 'DEF', 'DEF')",
            "INSERT INTO ItemsUnidades (idItem, idUnidad, EsPrincipal) VALUES (?, 'DEF', 1)",
            "INSERT INTO ItemsUnidadesInv (idItem, idUnidad, Inv, CostoActual) VALUES (?, 'DEF', 0, 10.5)",
            "INSERT INTO Precios (idItem, idUnidad, idLista, Inv, Precio) VALUES (?, 'DEF', 'DEF', 0, 12.71)",
        ):
            connection.executemany(text, codes)
    connection.close()


def make_workbook(path):
    workbook = openpyxl.Workbook(write_only=True)
    sheet = workbook.create_sheet("Hoja1")
    for _ in range(4):
        sheet.append([f"título {column}" for column in range(1, 14)])
    for row in range(ROWS):
        number = row if row % 2 == 0 else ROWS + row
        texts = [code(number), f"Artículo de prueba número {row}", f"MARCA{row % 97}", f"DEP{row % 13}"]
        sheet.append(texts + [10.5 + row % 50, 15.25 + row % 70, None, "CAJA", 12, 180.5, 120.25, None, 0.21])
    workbook.save(path)


def timed(command, output):
    """Seconds and the process's own peak of memory in megabytes."""
    with open(output, "wb") as out:
        begin = time.perf_counter()
        process = subprocess.Popen(command, stdin=subprocess.DEVNULL, stdout=out, stderr=subprocess.DEVNULL)
        _, status, usage = os.wait4(process.pid, 0)
        taken = time.perf_counter() - begin
    if os.waitstatus_to_exitcode(status) != 0:
        broken(f"{command[0]} ended with {status}")
    return taken, usage.ru_maxrss / 1024


def main(command):
    with tempfile.TemporaryDirectory(prefix="tolvan-bench-") as name:
        folder = pathlib.Path(name)
        subprocess.run([command, "demo", str(folder / "tienda")], check=True, capture_output=True, timeout=60)
        fill_store(folder / "tienda" / "tienda.db")
        book = str(folder / "libro.xlsx")
        make_workbook(book)
        host = str(folder / "tienda" / "tolvan.ini")
        call = [command, "--host", host, "--json", "importar-excel", book, "--simular"]
        reference = ["ssconvert", book, str(folder / "libro.csv")]
        result = folder / "resultado.json"
        pairs = [(timed(call, result), timed(reference, os.devnull)) for _ in range(ROUNDS + 1)][1:]
        document = json.loads(result.read_text(encoding="utf-8"))
        if document["renglones"] != ROWS or document["asociados"] != ROWS // 2:
            broken("the review is not what the workbook holds")
    taken, other = (statistics.median(pair[side][0] for pair in pairs) * 1000 for side in (0, 1))
    memory = max(pair[0][1] for pair in pairs)
    print(
        f"importar-excel --simular --json, {ROWS} rows, whole process: {taken:.0f} ms, reference (ssconvert to csv): "
        f"{other:.0f} ms, ratio {taken / other:.4f} (aim {AIM:g}); {memory:.0f} MB (aim {AIM_MEGABYTES})"
    )
    return 0 if taken <= AIM * other and memory <= AIM_MEGABYTES else 1


if __name__ == "__main__":
    tree = pathlib.Path(__file__).resolve().parent.parent
    sys.exit(main(sys.argv[1] if len(sys.argv) > 1 else str(tree / "build/release/bin/tolvan-impexp")))
