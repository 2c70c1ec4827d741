"""Runs ./start as a shopkeeper does, twice, into a folder with a blank and an accent in its name."""
import datetime
import os
import pathlib
import subprocess
import tempfile
import unittest

TREE = pathlib.Path(__file__).resolve().parents[2]


# Runs a command on a screen, closes the window that comes up, and ends as the command does.
CLOSES_THE_WINDOW = """
"$@" & command=$!
until xdotool search --onlyvisible --name '^Importar/Exportar Datos$' windowactivate --sync 2>/dev/null; do
  kill -0 "$command" 2>/dev/null || break
  sleep 0.2
done
xdotool key alt+F4
wait "$command"
"""


def start(*arguments, before=()):
    """The store's settings go to a folder of their own, so that the user's stay as they are."""
    environment = {name: value for name, value in os.environ.items() if name not in ("DISPLAY", "WAYLAND_DISPLAY")}
    with tempfile.TemporaryDirectory() as settings:
        environment.update(XDG_CONFIG_HOME=settings, XDG_STATE_HOME=settings)
        return subprocess.run([*before, TREE / "start", *arguments], capture_output=True, text=True, timeout=1200,
                              stdin=subprocess.DEVNULL, env=environment)


class StartTest(unittest.TestCase):
    def test_leaves_yesterdays_file_and_shows_it(self):
        with tempfile.TemporaryDirectory() as place:
            folder = pathlib.Path(place, "mi almacén")
            for attempt in ("first", "again"):
                with self.subTest(attempt):
                    run = start(str(folder))
                    self.assertEqual(run.returncode, 0, run.stdout + run.stderr)
                    yesterday = datetime.date.today() - datetime.timedelta(days=1)
                    file = folder / "Exportar" / f"{yesterday:%y%m%d}.txt"
                    record = file.read_text(encoding="cp1252").strip()
                    self.assertRegex(record, rf'^0001,[1-9][0-9]*,"19:00","{yesterday:%d/%m/%Y}",$')
                    self.assertIn(str(file), run.stdout)
                    self.assertIn(record, run.stdout)
                    self.assertIn("No hay pantalla", run.stdout)
                    self.assertTrue((TREE / "build/release/share/man/man1/tolvan-impexp.1").is_file())

    def test_opens_the_window_where_there_is_a_screen(self):
        with tempfile.TemporaryDirectory() as place:
            screen = TREE / "tests" / "desktop" / "with_display"
            run = start(place + "/tienda", before=(screen, "bash", "-c", CLOSES_THE_WINDOW, "bash"))
            self.assertEqual(run.returncode, 0, run.stdout + run.stderr)
            self.assertIn("Abriendo la ventana", run.stdout)

    def test_says_what_is_wrong_and_stops(self):
        with tempfile.NamedTemporaryFile() as file:
            for arguments, said in ((["--nada"], "--nada"), ([file.name], "tienda de demostración")):
                run = start(*arguments)
                self.assertNotEqual(run.returncode, 0)
                self.assertIn("ERROR", run.stderr)
                self.assertIn(said, run.stderr)


if __name__ == "__main__":
    unittest.main()
