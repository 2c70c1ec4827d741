#!/usr/bin/python3
"""The command `vexlor` as a whole process against the sqlite3 shell running the same day total on the same store.

Makes a demo store in a folder of its own, fills it up to 300,000 sales over the ninety days before today, and runs both
programs in turn, so that a noisy moment meets both; the medians are compared. Both must give the same total, or the
measurement fails. Ends with 1 when the aim is missed, with 2 when something else is wrong.

    benchmarks/vexlor_process.py [PATH_OF_THE_COMMAND]
"""
import datetime
import os
import pathlib
import random
import sqlite3
import statistics
import subprocess
import sys
import tempfile
import time

SALES = 300_000
DAYS = 90
ROUNDS = 41
AIM = 3.0
SECONDS = 60

COLUMNS = "idVenta, idCompania, FechaValidacion, VentaRealizada, Anulado, SubTotal, Impuestos, GranTotal"


def fill(database, yesterday):
    """Sales of one day lie apart, as they do after years of changes. A few are not completed, a few voided."""
    chance = random.Random(1)
    with sqlite3.connect(database) as connection:
        count, last = connection.execute("SELECT count(*), max(idVenta) FROM Ventas").fetchone()

        def sale(number):
            day = yesterday - datetime.timedelta(days=number % DAYS)
            moment = f"{day} {chance.randrange(8, 20):02}:{chance.randrange(60):02}:{chance.randrange(60):02}"
            net = chance.randrange(1_000, 500_000) / 100
            tax = round(net * 0.18, 2)
            return (last + 1 + number, 1, moment, int(number % 50 != 0), int(number % 41 == 0), net, tax, net + tax)

        rows = (sale(number) for number in range(SALES - count))
        connection.executemany(f"INSERT INTO Ventas ({COLUMNS}) VALUES (?, ?, ?, ?, ?, ?, ?, ?)", rows)
    connection.close()


def day_total(day):
    return (
        "SELECT Sum(Ventas.GranTotal - Ventas.Impuestos) AS SumaDeGranTotal From Ventas "
        "WHERE (((Ventas.VentaRealizada)=1) AND ((Ventas.Anulado)<>1)) "
        f"AND Ventas.FechaValidacion >= '{day} 00:00:00' "
        f"AND Ventas.FechaValidacion < '{day + datetime.timedelta(days=1)} 00:00:00'"
    )


def broken(cause):
    print(cause, file=sys.stderr)
    sys.exit(2)


def timed(command):
    begin = time.perf_counter()
    run = subprocess.run(command, capture_output=True, text=True, timeout=SECONDS, stdin=subprocess.DEVNULL)
    taken = time.perf_counter() - begin
    if run.returncode != 0:
        broken(f"{command[0]} ended with {run.returncode}: {run.stderr}")
    return taken, run.stdout


def same_total(folder, shell_output):
    """The record in the written file holds the total of the shell, rounded to whole units."""
    files = list(folder.glob("Exportar/*.txt"))
    if len(files) != 1:
        broken(f"the command left {len(files)} files in {folder}/Exportar")
    written = int(files[0].read_text(encoding="cp1252").split(",")[1])
    return abs(written - float(shell_output)) <= 0.5001


def main(command):
    with tempfile.TemporaryDirectory(prefix="tolvan-bench-") as name:
        folder = pathlib.Path(name)
        os.environ.update(XDG_CONFIG_HOME=f"{name}/settings", XDG_STATE_HOME=f"{name}/settings")  # not the user's own
        timed([command, "demo", str(folder)])
        yesterday = datetime.date.today() - datetime.timedelta(days=1)
        database = str(folder / "tienda.db")
        fill(database, yesterday)
        vexlor = [command, "--host", str(folder / "tolvan.ini"), "--silencio", "vexlor"]
        shell = ["sqlite3", "-batch", "-init", "/dev/null", database, day_total(yesterday)]
        pairs = [(timed(vexlor), timed(shell)) for _ in range(ROUNDS + 1)][1:]
        if not same_total(folder, pairs[-1][1][1]):
            broken("the two totals differ")
    taken, reference = (statistics.median(pair[side][0] for pair in pairs) * 1000 for side in (0, 1))
    print(
        f"vexlor as a whole process, {SALES} sales: {taken:.3f} ms, reference (sqlite3 shell, same sum): "
        f"{reference:.3f} ms, ratio {taken / reference:.4f} (aim {AIM:g})"
    )
    return 0 if taken <= AIM * reference else 1


if __name__ == "__main__":
    tree = pathlib.Path(__file__).resolve().parent.parent
    sys.exit(main(sys.argv[1] if len(sys.argv) > 1 else str(tree / "build/release/bin/tolvan-impexp")))
