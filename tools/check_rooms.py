#!/usr/bin/python3
"""Checks the walls between the rooms of src/.

    tools/check_rooms.py [TREE]

- A file includes its own room and rooms further down, as the table below has it; never up, never sideways.
- In the portable rooms a header is the standard library's (<filesystem> and threads aside, which the Windows build
  does not promise) or the tree's own. Other headers stand in .cpp files of providers and fronts only; utf8proc in
  .cpp files of base/. The classes of desktop/ are windows of wxWidgets, so its headers name that toolkit.
- The platform is chosen by source lists: no system macro in a portable room.
- No source is longer than 500 lines. A class that two test files define at namespace scope would be one class in the
  common test program, so such names are unique, or stand in an unnamed namespace.
"""
import collections
import pathlib
import re
import sys

ACTIONS = ["export", "import", "fiscal", "transport"]
BELOW = {"base": [], "host": ["base"]}
BELOW["services"] = ["host", "base"]
for action in ACTIONS:
    BELOW[action] = ["services", "host", "base"]
BELOW["ui"] = ACTIONS + BELOW["export"]
BELOW["component"] = ["ui"] + BELOW["ui"]
PORTABLE = list(BELOW)
BELOW["system"] = ["host", "base"]
for provider in ["database", "spreadsheet", "xml", "network"]:
    BELOW[provider] = ["system", "host", "base"]
PROVIDERS = [room for room in BELOW if room not in PORTABLE]
BELOW["store"] = PROVIDERS + ["host", "base"]
PROVIDERS.append("store")
MAINS = ["cli", "desktop", "com"]
for main_room in MAINS:
    BELOW[main_room] = ["component"] + PROVIDERS + BELOW["component"]


MOST_LINES = 500
CHECKED_LENGTH = {".cpp", ".h", ".py", ".sh", ".cmake"}
FOLDERS = ["src", "tests", "benchmarks", "fuzz", "tools", "cmake"]

STANDARD = set("""
algorithm any array atomic barrier bit bitset cassert cctype cerrno cfloat charconv chrono cinttypes climits clocale
cmath codecvt compare complex concepts condition_variable coroutine csetjmp csignal cstdarg cstddef cstdint cstdio
cstdlib cstring ctime cuchar cwchar cwctype deque exception execution filesystem forward_list fstream functional future
initializer_list iomanip ios iosfwd iostream istream iterator latch limits list locale map memory memory_resource mutex
new numbers numeric optional ostream queue random ranges ratio regex scoped_allocator semaphore set shared_mutex
source_location span sstream stack stdexcept stop_token streambuf string string_view strstream syncstream system_error
thread tuple type_traits typeindex typeinfo unordered_map unordered_set utility valarray variant vector version
""".split())
# The system's own headers, which the headers of a provider may need for their types.
SYSTEM = {"fcntl.h", "unistd.h", "sys/types.h", "sys/stat.h"}
NOT_PORTABLE = {"filesystem", "thread", "future", "condition_variable", "mutex", "shared_mutex", "csignal"}
SYSTEM_MACRO = re.compile(r"^\s*#\s*(?:if|ifdef|ifndef|elif)\b.*\b(_WIN32|WIN32|__MINGW\w*|__linux__|__unix__|_MSC_VER)\b")
INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]')
CLASS = re.compile(r"^(?:class|struct)\s+(\w+)\b(?!\s*;)")


def sources(folder, suffixes):
    if folder.is_dir():
        for path in sorted(folder.rglob("*")):
            if path.suffix in suffixes and path.is_file() and "__pycache__" not in path.parts:
                yield path


def room_fault(parts, target):
    """Why a file at `parts` below src may not include `target`, a path below src; nothing when it may."""
    room, other = parts[0], target.split("/")[0]
    if other not in BELOW:
        return f'"{target}" is in no room: includes begin at src/'
    if other == room:
        return engine_fault(parts, target.split("/"))
    return None if other in BELOW[room] else f'{room}/ may not include {other}/ ("{target}")'


def engine_fault(parts, target):
    """In database/ an engine knows itself and what all share."""
    if parts[0] != "database" or target[1] in (parts[1], "sql"):
        return None
    return f"database/{parts[1]}/ may not include another engine ({'/'.join(target)})"


def header_fault(parts, header):
    """Why a file may not include <header>."""
    room, is_source = parts[0], parts[-1].endswith(".cpp")
    if room in PORTABLE and header in NOT_PORTABLE:
        return f"<{header}> is not for portable rooms"
    if header in SYSTEM and parts[:2] == ("system", "posix"):
        return None
    if header in STANDARD or (room in PROVIDERS + MAINS and is_source):
        return None
    if room == "base" and is_source and header == "utf8proc.h":
        return None
    if room == "desktop" and header.startswith("wx/"):
        return None
    return f"<{header}> is a vendor's header: only .cpp files of providers and fronts include one"


def check_includes(tree):
    for path in sources(tree / "src", {".cpp", ".h"}):
        parts = path.relative_to(tree / "src").parts
        name = path.relative_to(tree)
        if len(parts) < 2 or parts[0] not in BELOW:
            yield f"{name}: lies in no room"
            continue
        for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
            found = INCLUDE.match(line)
            if found:
                fault = header_fault(parts, found[2]) if found[1] == "<" else room_fault(parts, found[2])
                if fault:
                    yield f"{name}:{number}: {fault}"
            elif parts[0] in PORTABLE and SYSTEM_MACRO.match(line):
                yield f"{name}:{number}: a system macro in a portable room; give the system its own file in system/"


def check_lengths(tree):
    for folder in FOLDERS:
        for path in sources(tree / folder, CHECKED_LENGTH):
            lines = path.read_text(encoding="utf-8").count("\n")
            if lines > MOST_LINES:
                yield f"{path.relative_to(tree)}: {lines} lines, at most {MOST_LINES}"


def named_classes(path):
    """The classes that a file defines outside unnamed namespaces."""
    hidden = False
    for line in path.read_text(encoding="utf-8").splitlines():
        if line.startswith("namespace {"):
            hidden = True
        elif re.match(r"}\s*//\s*namespace\s*$", line):
            hidden = False
        elif not hidden and (found := CLASS.match(line)):
            yield found[1]


def check_test_classes(tree):
    places = collections.defaultdict(list)
    for path in sources(tree / "tests", {".cpp"}):
        for name in set(named_classes(path)):
            places[name].append(str(path.relative_to(tree)))
    for name, files in sorted(places.items()):
        if len(files) > 1:
            yield f"class {name} is defined by {' and '.join(files)}: use unnamed namespaces or a shared header"


def main(arguments):
    tree = pathlib.Path(arguments[0] if arguments else pathlib.Path(__file__).parent.parent).resolve()
    faults = [*check_includes(tree), *check_lengths(tree), *check_test_classes(tree)]
    for fault in faults:
        print(fault)
    print(f"rooms: {sum(1 for _ in sources(tree / 'src', {'.cpp', '.h'}))} sources, {len(faults)} faults")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
