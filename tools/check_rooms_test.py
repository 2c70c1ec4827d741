"""Plants violations in a small tree of its own and expects tools/check_rooms.py to name each, and nothing else."""
import pathlib
import subprocess
import sys
import tempfile
import unittest

CHECK = pathlib.Path(__file__).resolve().parent / "check_rooms.py"

ALLOWED = {
    "src/base/Text.cpp": '#include "base/Text.h"\n\n#include <utf8proc.h>\n\n#include <array>\n',
    "src/base/Text.h": "#pragma once\n#include <string>\n",
    "src/host/Clock.h": '#include "base/Text.h"\n',
    "src/export/File.cpp": '#include "services/Sum.h"\n',
    "src/ui/Options.cpp": '#include "export/File.h"\n#include "transport/Batch.h"\n',
    "src/component/Entry.cpp": '#include "ui/Options.h"\n',
    "src/database/sqlite/Database.cpp": '#include <sqlite3.h>\n#include "database/sql/Dialect.h"\n',
    "src/store/Host.cpp": '#include "database/sqlite/Database.h"\n#include "host/Clock.h"\n',
    "src/cli/main.cpp": '#include <CLI/CLI.hpp>\n#include "store/Host.h"\n#include "component/Entry.h"\n',
    "tests/ui/OptionsTest.cpp": "namespace tolvan {\nnamespace {\nstruct Fake {};\n}  // namespace\n}\n",
    "tests/export/FileTest.cpp": "namespace tolvan {\nnamespace {\nstruct Fake {};\n}  // namespace\n}\n",
}

PLANTED = {
    "src/base/Up.h": ('#include "host/Clock.h"\n', "base/ may not include host/"),
    "src/export/Sideways.cpp": ('#include "import/Flow.h"\n', "export/ may not include import/"),
    "src/ui/Provider.cpp": ('#include "database/sqlite/Database.h"\n', "ui/ may not include database/"),
    "src/database/odbc/Neighbour.cpp": ('#include "database/sqlite/Database.h"\n', "another engine"),
    "src/network/Above.cpp": ('#include "services/Sum.h"\n', "network/ may not include services/"),
    "src/xml/Sideways.cpp": ('#include "database/sql/Dialect.h"\n', "xml/ may not include database/"),
    "src/system/Portable.h": ("#include <fcntl.h>\n", "vendor's header"),
    "src/cli/Main.cpp": ('#include "desktop/Window.h"\n', "cli/ may not include desktop/"),
    "src/host/Vendor.cpp": ("#include <sqlite3.h>\n", "vendor's header"),
    "src/host/Posix.cpp": ("#  include <unistd.h>\n", "vendor's header"),
    "src/database/sqlite/Leak.h": ("#include <sqlite3.h>\n", "vendor's header"),
    "src/services/Utf.cpp": ("#include <utf8proc.h>\n", "vendor's header"),
    "src/services/Paths.cpp": ("#include <filesystem>\n", "not for portable rooms"),
    "src/import/System.cpp": ("#ifdef _WIN32\n#endif\n", "system macro"),
    "src/base/Nowhere.cpp": ('#include "Text.h"\n', "in no room"),
    "src/helpers/Odd.cpp": ("\n", "lies in no room"),
    "src/base/Long.cpp": ("//\n" * 501, "501 lines"),
}


def check(files):
    with tempfile.TemporaryDirectory() as folder:
        for name, text in files.items():
            path = pathlib.Path(folder, name)
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text, encoding="utf-8")
        run = subprocess.run([sys.executable, CHECK, folder], capture_output=True, text=True, timeout=60)
    return run.returncode, run.stdout.splitlines()[:-1]


class CheckRoomsTest(unittest.TestCase):
    def test_what_the_design_allows_passes(self):
        self.assertEqual(check(ALLOWED), (0, []))

    def test_each_planted_fault_is_the_only_one_named(self):
        for name, (text, cause) in PLANTED.items():
            with self.subTest(name):
                status, faults = check({**ALLOWED, name: text})
                self.assertEqual((status, len(faults)), (1, 1), faults)
                self.assertIn(name, faults[0])
                self.assertIn(cause, faults[0])

    def test_a_class_of_one_name_in_two_tests_is_named(self):
        named = {name: text.replace("namespace {\n", "") for name, text in ALLOWED.items() if name.startswith("tests/")}
        status, faults = check({**ALLOWED, **named})
        self.assertEqual((status, len(faults)), (1, 1), faults)
        self.assertIn("class Fake is defined by tests/export/FileTest.cpp and tests/ui/OptionsTest.cpp", faults[0])


if __name__ == "__main__":
    unittest.main()
