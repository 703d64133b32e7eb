#!/usr/bin/env python3
"""lint.py BUILD_FOLDER: clang-tidy over the sources without windows, and whether each source includes what it uses.

Most of its time goes into the standard headers, which clang-tidy reads and matches anew for each file. So the sources
that are compiled together are put one behind the other into one file, and what it says of that is told of the source
that it is from. That a source can be compiled alone, as no build does, is looked at for all of them."""
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
# What follows a function's paths would else spend its steps on those of std::string, and nine tenths of all time. A
# function that takes more steps than this is given up in either case.
STEPS = "c++-stdlib-inlining=false,max-nodes=75000"


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


def arguments(command):
    """The flags that say what a source means."""
    flags = []
    words = iter(shlex.split(command))
    for word in words:
        if word in ("-o", "-c", "-Xclang"):
            next(words)
        elif word == "-isystem":
            flags.append(word + next(words))
        elif re.match(r"-(I|D|W|std)", word) and word != "-Winvalid-pch":
            flags.append(word)
    return flags


class Unit:
    """Sources that are compiled together, in one file."""

    def __init__(self, entry, place):
        self.flags, self.starts = arguments(entry["command"]), []
        with open(entry["file"], encoding="utf-8") as file:
            sources = re.findall(r'^#include "(.*)"$', file.read(), re.M)
        # What the build has made is not looked at.
        self.names = [os.path.relpath(each, ROOT) for each in sources if each.startswith(f"{ROOT}/src/")]
        self.has_windows = any(re.search(r"/(forms|\w*forms|qt)/", each) for each in self.names)
        self.path = os.path.join(place, re.sub(r"[^\w.]+", "-", os.path.relpath(entry["file"], place)) + ".cpp")
        line = 1
        with open(self.path, "w", encoding="utf-8") as unit:
            for name in self.names:
                self.starts.append((line, name))
                with open(os.path.join(ROOT, name), encoding="utf-8") as file:
                    text = file.read()
                unit.write(text)
                line += text.count("\n")

    def told(self, output):
        """What was said of the unit, told of its sources."""
        lines = []
        for line in output.splitlines():
            place = PLACE.match(line)
            if place and place[1] == self.path:
                start, name = [each for each in self.starts if each[0] <= int(place[2])][-1]
                line = f"{name}:{int(place[2]) - start + 1}:{line[place.end(2) + 1:]}"
            lines.append(line)
        return lines


def tidy(unit):
    run = subprocess.run(["clang-tidy", "--quiet", f"--checks={CHECKS}", unit.path, "--", *unit.flags,
                          "-Xclang", "-analyzer-config", "-Xclang", STEPS],
                         capture_output=True, text=True, check=False, cwd=ROOT)
    # Its standard error counts what it leaves out.
    return run.returncode, unit.told(run.stdout)


def alone(flags, name):
    run = subprocess.run(["clang++-14", "-fsyntax-only", *flags, name],
                         capture_output=True, text=True, check=False, cwd=ROOT)
    return run.returncode, run.stderr.splitlines()


def main():
    build = os.path.abspath(sys.argv[1])
    with open(os.path.join(build, "compile_commands.json"), encoding="utf-8") as file:
        database = json.load(file)
    place = os.path.join(build, "lint")
    os.makedirs(place, exist_ok=True)
    together = [entry for entry in database if "/Unity/" in entry["file"]]
    units = [unit for unit in (Unit(entry, place) for entry in together) if unit.names]
    # The longest first, so that none is left to run alone.
    units.sort(key=lambda unit: -os.path.getsize(unit.path))
    told = [line for unit in units for name in unit.names for line in here_wrong(name)]
    failed = bool(told)
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        runs = [pool.submit(tidy, unit) for unit in units if not unit.has_windows]
        runs += [pool.submit(alone, unit.flags, name) for unit in units for name in unit.names]
        for run in runs:
            code, lines = run.result()
            failed = failed or code != 0
            told += lines
    print("\n".join(told))
    print(f"{sum(len(unit.names) for unit in units)} sources in {len(units)} files")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
