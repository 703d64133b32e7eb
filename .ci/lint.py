#!/usr/bin/env python3
"""lint.py BUILD_FOLDER: clang-tidy over the sources without windows: the others need what Qt generates.

Most of its time goes into the standard headers, which it reads and matches anew for each source. So the sources of a
folder are put one behind the other into one file, and what it says of that is told of the source that it is from.
Sources whose names clash are put into another file of that folder."""
import concurrent.futures
import json
import os
import re
import shlex
import subprocess
import sys

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
PLACE = re.compile(r"^(\S+):(\d+):(\d+): ")
# What one source says twice, or needlessly, cannot be seen in several: here_wrong looks for it.
CHECKS = "-readability-duplicate-include,-misc-unused-using-decls"


def sources(database):
    """The compile commands of each folder."""
    folders = {}
    for entry in database:
        name = os.path.relpath(entry["file"], ROOT)
        if name.startswith("src/") and not re.search(r"/(forms|\w*forms|qt)/", name):
            folders.setdefault(os.path.dirname(name), {})[name] = entry
    return folders


def here_wrong(name):
    """What is wrong with a source by its own text: an include said twice, a using declaration without use."""
    with open(os.path.join(ROOT, name), encoding="utf-8") as file:
        text = file.read()
    includes = re.findall(r"^#include .*$", text, re.M)
    told = [f"{name}: said twice: {each}" for each in sorted(set(includes)) if includes.count(each) > 1]
    for using in re.finditer(r"^using [\w:]*::(\w+);$", text, re.M):
        if len(re.findall(rf"\b{using[1]}\b", text)) < 2:
            told.append(f"{name}: not used: {using[0]}")
    return told


def arguments(entries):
    """The flags that all of them have, and each one's own definitions and include folders."""
    flags = []
    for entry in entries:
        words = iter(shlex.split(entry["command"]))
        for word in words:
            if word in ("-o", "-c", "-MT", "-MF", "-include"):
                next(words)
            elif word == "-isystem":
                word += next(words)
                flags += [word] if word not in flags else []
            elif re.match(r"-(I|D|W|std)", word) and word != "-Winvalid-pch" and word not in flags:
                flags.append(word)
    return flags


class Unit:
    """Sources of a folder in one file."""

    def __init__(self, path, names):
        self.path, self.starts = path, []
        line = 1
        with open(path, "w", encoding="utf-8") as unit:
            for name in names:
                self.starts.append((line, name))
                with open(os.path.join(ROOT, name), encoding="utf-8") as file:
                    text = file.read()
                unit.write(text)
                line += text.count("\n")

    def at(self, number):
        """The source and the line of it that stand at that line."""
        start, name = [each for each in self.starts if each[0] <= number][-1]
        return name, number - start + 1

    def told(self, output):
        """What was said of the unit, told of its sources."""
        lines = []
        for line in output.splitlines():
            place = PLACE.match(line)
            if place and place[1] == self.path:
                name, number = self.at(int(place[2]))
                line = f"{name}:{number}:{line[place.end(2) + 1:]}"
            lines.append(line)
        return lines


def units(folder, entries, place):
    """The folder's units with their flags: as few as its names allow."""
    left, made = list(entries), []
    flags = arguments(entries.values())
    while left:
        path = os.path.join(place, f"{folder.replace('/', '-')}-{len(made)}.cpp")
        clashing = []
        while True:
            unit = Unit(path, left)
            read = subprocess.run(["clang++-14", "-fsyntax-only", "-ferror-limit=0", *flags, path],
                                  capture_output=True, text=True, check=False)
            errors = [PLACE.match(line) for line in read.stderr.splitlines() if " error: " in line]
            wrong = {unit.at(int(each[2]))[0] for each in errors if each and each[1] == path}
            # One alone that cannot be read is for clang-tidy to tell of.
            if read.returncode == 0 or not wrong or len(left) == 1:
                break
            if len(wrong) == len(left):
                wrong = set(left[1:])
            clashing = [name for name in left if name in wrong] + clashing
            left = [name for name in left if name not in wrong]
        made.append((unit, flags))
        left = clashing
    return made


def lint(unit, flags):
    run = subprocess.run(["clang-tidy", "--quiet", f"--checks={CHECKS}", unit.path, "--", *flags],
                         capture_output=True, text=True, check=False, cwd=ROOT)
    # Its standard error counts what it leaves out.
    return run.returncode, unit.told(run.stdout)


def main():
    build = os.path.abspath(sys.argv[1])
    with open(os.path.join(build, "compile_commands.json"), encoding="utf-8") as file:
        folders = sources(json.load(file))
    place = os.path.join(build, "lint")
    os.makedirs(place, exist_ok=True)
    told = [line for entries in folders.values() for name in entries for line in here_wrong(name)]
    failed = bool(told)
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        made = list(pool.map(lambda item: units(*item, place), folders.items()))
        # The longest first, so that none is left to run alone.
        largest = sorted([pair for each in made for pair in each], key=lambda pair: -os.path.getsize(pair[0].path))
        for code, lines in pool.map(lambda pair: lint(*pair), largest):
            failed = failed or code != 0
            told += lines
    print("\n".join(told))
    print(f"{sum(map(len, folders.values()))} sources in {sum(map(len, made))} files")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
