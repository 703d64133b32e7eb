#!/usr/bin/env python3
"""tidy.py BUILD_FOLDER: clang-tidy over the sources without windows.

Most of its time goes into the standard headers, which clang-tidy reads and matches anew for each file. So the sources
that are compiled together are put one behind the other into one file, and what it says of that is told of the source
that it is from."""
import concurrent.futures
import os
import re
import subprocess
import sys

import sources

PLACE = re.compile(r"^(\S+):(\d+):(\d+): ")
# What one source says twice, or needlessly, cannot be seen in several: here_wrong looks for it.
CHECKS = "-readability-duplicate-include,-misc-unused-using-decls"
# What follows a function's paths would else spend its steps on those of std::string, and nine tenths of all time. A
# function that takes more steps than this is given up in either case.
STEPS = "c++-stdlib-inlining=false,max-nodes=75000"


def here_wrong(name):
    """What is wrong with a source by its own text: an include said twice, a using declaration without use."""
    with open(os.path.join(sources.ROOT, name), encoding="utf-8") as file:
        text = file.read()
    includes = re.findall(r"^#include .*$", text, re.M)
    told = [f"{name}: said twice: {each}" for each in sorted(set(includes)) if includes.count(each) > 1]
    for using in re.finditer(r"^using [\w:]*::(\w+);$", text, re.M):
        if len(re.findall(rf"\b{using[1]}\b", text)) < 2:
            told.append(f"{name}: not used: {using[0]}")
    return told


class Unit:
    """Sources that are compiled together, in one file."""

    def __init__(self, compiled, flags, names, place):
        self.flags, self.names, self.starts = flags, names, []
        self.has_windows = any(re.search(r"/(forms|\w*forms|qt)/", each) for each in names)
        self.path = os.path.join(place, re.sub(r"[^\w.]+", "-", os.path.relpath(compiled, place)) + ".cpp")
        line = 1
        with open(self.path, "w", encoding="utf-8") as unit:
            for name in names:
                self.starts.append((line, name))
                with open(os.path.join(sources.ROOT, name), encoding="utf-8") as file:
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
                         capture_output=True, text=True, check=False, cwd=sources.ROOT)
    # Its standard error counts what it leaves out.
    return run.returncode, unit.told(run.stdout)


def main():
    build = os.path.abspath(sys.argv[1])
    place = os.path.join(build, "tidy")
    os.makedirs(place, exist_ok=True)
    units = [Unit(*each, place) for each in sources.together(build)]
    # The longest first, so that none is left to run alone.
    units.sort(key=lambda unit: -os.path.getsize(unit.path))
    told = [line for unit in units for name in unit.names for line in here_wrong(name)]
    failed = bool(told)
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        for code, lines in pool.map(tidy, [unit for unit in units if not unit.has_windows]):
            failed = failed or code != 0
            told += lines
    print("\n".join(told))
    print(f"{sum(len(unit.names) for unit in units)} sources in {len(units)} files")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
