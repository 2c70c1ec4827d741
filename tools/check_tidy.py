#!/usr/bin/python3
"""Runs clang-tidy 14 over the sources of a build folder, as many at once as there are processors.

    tools/check_tidy.py [BUILD_FOLDER] [PART_OF_PATH...]      default: build/dev, every source below src, tests and benchmarks

A source that was clean is not looked at again until something it is compiled from changes: the cache holds one empty
file per clean result, named by a hash over the compile command, the check lists and the contents of the source and of
every header of the tree it includes (the dependencies that ninja recorded; so build first). Headers of the system
count by size and time. Findings are never cached.
"""
import concurrent.futures
import hashlib
import json
import os
import pathlib
import re
import shlex
import subprocess
import sys

TREE = pathlib.Path(__file__).resolve().parent.parent
TOOL = "clang-tidy-14"
SECONDS_PER_SOURCE = 300


def cache_folder():
    base = os.environ.get("XDG_CACHE_HOME") or pathlib.Path("~/.cache").expanduser()
    folder = pathlib.Path(base) / "tolvan" / "tidy"
    folder.mkdir(parents=True, exist_ok=True)
    return folder


def recorded_dependencies(build):
    """Object file -> the files it was made from, as ninja recorded them."""
    listing = subprocess.run(["ninja", "-C", build, "-t", "deps"], capture_output=True, text=True, timeout=120).stdout
    dependencies, current = {}, None
    for line in listing.splitlines():
        if line.startswith("    "):
            current.append(line.strip())
        elif ": #deps" in line:
            current = dependencies.setdefault(line.split(": #deps")[0], [])
    return dependencies


class Fingerprints:
    """Hashes of files, each computed once."""

    def __init__(self):
        self.known = {}

    def of(self, path):
        if path not in self.known:
            self.known[path] = self.compute(path)
        return self.known[path]

    @staticmethod
    def compute(path):
        if path.is_relative_to(TREE):
            return hashlib.sha256(path.read_bytes()).hexdigest()
        status = path.stat()
        return f"{status.st_size} {status.st_mtime_ns}"


def result_key(entry, dependencies, fingerprints, rules):
    """Nothing when ninja knows no dependencies of the source; it is then looked at every time."""
    words = shlex.split(entry["command"])
    files = dependencies.get(words[words.index("-o") + 1])
    if not files:
        return None
    parts = [rules, entry["command"]]
    for name in sorted(files):
        path = (pathlib.Path(entry["directory"]) / name).resolve()
        parts.append(f"{path} {fingerprints.of(path)}")
    return hashlib.sha256("\n".join(parts).encode()).hexdigest()


def database_for_clang(build):
    """A folder with the compile commands without GCC's precompiled headers, which clang cannot read."""
    folder = pathlib.Path(build) / "tidy"
    folder.mkdir(exist_ok=True)
    commands = (pathlib.Path(build) / "compile_commands.json").read_text()
    (folder / "compile_commands.json").write_text(re.sub(r"-Winvalid-pch -include \S+cmake_pch\.hxx ", "", commands))
    return str(folder)


def look_at(source, build):
    """The findings, empty when the source is clean."""
    # GCC's own warning switches in the compile commands mean nothing to clang, which must not count them as findings.
    command = [TOOL, "-p", build, "--quiet", "--extra-arg=-Wno-unknown-warning-option", source]
    try:
        run = subprocess.run(command, capture_output=True, text=True, timeout=SECONDS_PER_SOURCE)
    except subprocess.TimeoutExpired:
        return f"{source}: no result within {SECONDS_PER_SOURCE} seconds\n"
    return "" if run.returncode == 0 else run.stdout + run.stderr


def sources_of(build, wanted):
    """The sources of the tree that the build folder compiles, generated ones aside."""
    for entry in json.loads((pathlib.Path(build) / "compile_commands.json").read_text()):
        path = pathlib.Path(entry["file"])
        if not path.is_relative_to(TREE) or path.is_relative_to(pathlib.Path(build).resolve()):
            continue
        name = str(path.relative_to(TREE))
        if not wanted or any(part in name for part in wanted):
            yield name, entry


def main(arguments):
    os.chdir(TREE)
    build = arguments[0] if arguments else "build/dev"
    rules = subprocess.run([TOOL, "--version"], capture_output=True, text=True, check=True, timeout=60).stdout
    rules += "".join(path.read_text() for path in sorted(TREE.glob("**/.clang-tidy")) if "build" not in path.parts)
    dependencies, fingerprints, cache = recorded_dependencies(build), Fingerprints(), cache_folder()

    jobs, clean = {}, 0
    for name, entry in sources_of(build, arguments[1:]):
        key = result_key(entry, dependencies, fingerprints, rules)
        if key and (cache / key).exists():
            clean += 1
        else:
            jobs[name] = key
    bad = 0
    database = database_for_clang(build)
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        running = {pool.submit(look_at, name, database): name for name in jobs}
        for done in concurrent.futures.as_completed(running):
            name = running[done]
            findings = done.result()
            if findings:
                bad += 1
                print(findings, end="", flush=True)
            elif jobs[name]:
                (cache / jobs[name]).touch()
    print(f"clang-tidy: {len(jobs)} sources looked at, {clean} unchanged since they were clean, {bad} with findings")
    if not jobs and not clean:
        sys.exit("no source found: is the folder configured?")
    return 1 if bad else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
