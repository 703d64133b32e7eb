#!/usr/bin/env python3
"""alone.py BUILD_FOLDER: whether each source can be compiled alone, with what it includes itself. No build does so: it
puts many together, where one finds what another before it has included.

Nearly all the time would go into the same headers of the libraries. So what many sources read is precompiled, in a few
selections, and a source is given the largest of those that its first include reads anyhow, file by file. That is its own
header: neither sees what it has not included, or what is included behind it."""
import collections
import concurrent.futures
import os
import re
import subprocess
import sys
import tempfile

import sources

COMPILER = "clang++-14"
INCLUDE = re.compile(r'^\s*#\s*include\s+(["<])([^">]+)[">]', re.M)
# A header of a library that fewer sources include is not precompiled.
SHARED_BY = 8
# What precompiling a file takes beside reading it once.
PRECOMPILING = 1.0


class Headers:
    """What each source includes, by way of our own headers too."""

    def __init__(self):
        self.included = {}

    def of_libraries(self, path, folders, seen=None, first=False):
        """The headers of libraries that a file includes; by its first include alone, if that is wanted."""
        seen = seen if seen is not None else set()
        if path in seen:
            return set()
        seen.add(path)
        if path not in self.included:
            with open(path, encoding="utf-8") as file:
                self.included[path] = INCLUDE.findall(file.read())
        found = set()
        for kind, name in self.included[path][:1 if first else None]:
            places = [os.path.normpath(os.path.join(each, name)) for each in [os.path.dirname(path), *folders]]
            ours = next((each for each in places if kind == '"' and os.path.exists(each)), None)
            found |= self.of_libraries(ours, folders, seen) if ours else {name}
        return found


def files_of(header, flags):
    """The files that a library's header leads to, itself among them."""
    run = subprocess.run([COMPILER, *flags, "-M", "-xc++", "-"], input=f"#include <{header}>\n",
                         capture_output=True, text=True, check=True)
    return frozenset(run.stdout.replace("\\\n", " ").split()[1:])


class Sizes:
    """How much there is to read in files."""

    def __init__(self):
        self.known = {}

    def __call__(self, files):
        for each in files:
            if each not in self.known:
                self.known[each] = os.path.getsize(each)
        return sum(self.known[each] for each in files)


def selections(read, size):
    """Which sets of files to precompile for the sources that read these files, and for each source which of them (-1
    for none): by turns the set that saves most."""
    chosen, given, saved = [], dict.fromkeys(read, -1), dict.fromkeys(read, 0)
    sizes = {files: size(files) for files in set(read.values())}

    def users(files):
        return [each for each in read if sizes[files] > saved[each] and files <= read[each]]

    def gain(files):
        return sum(sizes[files] - saved[each] for each in users(files)) - PRECOMPILING * sizes[files]

    while sizes:
        best = max(sizes, key=gain)
        if gain(best) <= 0:
            break
        for each in users(best):
            given[each], saved[each] = len(chosen), sizes[best]
        chosen.append(best)
    return chosen, given


def precompile(path, headers, flags):
    text = "".join(f"#include <{each}>\n" for each in sorted(headers))
    subprocess.run([COMPILER, *flags, "-fpch-instantiate-templates", "-xc++-header", "-", "-o", path],
                   input=text, text=True, check=True)
    return path


def alone(name, flags, precompiled):
    given = ["-include-pch", precompiled] if precompiled else []
    run = subprocess.run([COMPILER, "-fsyntax-only", *flags, *given, name],
                         capture_output=True, text=True, check=False, cwd=sources.ROOT)
    return run.returncode, run.stderr


def main():
    build = os.path.abspath(sys.argv[1])
    flags_of = {name: flags for _, flags, names in sources.together(build) for name in names}
    common = sorted({flag for flags in flags_of.values() for flag in flags if re.match(r"-(isystem|W|std)", flag)})
    headers = Headers()
    included = {}
    for name, flags in flags_of.items():
        folders = [each[2:] for each in flags if each.startswith("-I")]
        included[name] = headers.of_libraries(os.path.join(sources.ROOT, name), folders, first=True)
    users = collections.Counter(header for found in included.values() for header in found)
    shared = [header for header, count in users.items() if count >= SHARED_BY]
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool, tempfile.TemporaryDirectory(dir=build) as place:
        files = dict(zip(shared, pool.map(lambda header: files_of(header, common), shared)))
        read = {name: frozenset().union(*(files[each] for each in found & files.keys()))
                for name, found in included.items()}
        chosen, given = selections(read, Sizes())
        paths = list(pool.map(lambda number: precompile(os.path.join(place, str(number)), [
            each for each in shared if files[each] <= chosen[number]], common), range(len(chosen))))
        paths.append(None)
        runs = list(pool.map(lambda name: alone(name, flags_of[name], paths[given[name]]), flags_of))
    sys.stdout.write("".join(told for _, told in runs))
    print(f"{len(flags_of)} sources, {len(chosen)} selections of headers")
    return 1 if any(code for code, _ in runs) else 0


if __name__ == "__main__":
    sys.exit(main())
