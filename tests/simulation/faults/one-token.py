#!/usr/bin/env python3
"""Plants faults of one token in the core, one at a time, and says which no test sees.

A fault is a comparison, a condition, an offset or a number that is a little wrong. They are drawn at random by a seed
from the sources of the core, in a clone of the last commit, and built there without sanitizers. A fault counts as seen
when a test program fails: that of its folder is asked first, then the others that it is part of, the quickest before
the slower, and the simulation last; none is linked before its turn. Those that nobody sees are printed as a patch:
each is to be read, and given a test or shown to change nothing. The tests of windows are not among them: they take much
longer to build, and see few faults of the core that others do not.

What was seen stands in a log, and is not tried again as long as that is there.
"""

import argparse
import contextlib
import os
import pathlib
import random
import re
import resource
import signal
import subprocess
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parents[3]
# Whether a picture is right, eyes judge; what a device does, the program.
FOLDERS = ["catalogue", "comms", "eeprom", "flash", "journal", "keymap", "layout", "network", "platform", "ports", "recovery",
           "report", "series", "setup", "windows"]
NOT_CORE = {"forms", "icons", "qt"}
TESTS = [*FOLDERS, "bench", "picture", "cli", "simulation"]

SWAPS = {"==": ["!="], "!=": ["=="], "<": ["<=", ">"], "<=": ["<", ">="], ">": [">=", "<"], ">=": [">", "<="],
         "&&": ["||"], "||": ["&&"], "+": ["-"], "-": ["+"], "true": ["false"], "false": ["true"], "++": ["--"]}
# What is told apart first is no fault's place: comments, texts, includes, templates' brackets, and room taken in advance.
TOKEN = re.compile(r"""(?P<skip>//[^\n]*|"(?:\\.|[^"\\\n])*"|'(?:\\.|[^'\\\n])+'|\#[^\n]*|\b[\w:]+<[\w:\s*&,<>()]*>[>({&\s]"""
                   r"""|static_assert[^;]*;|\breserve\([^;]*;)"""
                   r"""|(?P<operator>(?<=\s)(?:==|!=|<=|>=|<|>|&&|\|\||\+|-)(?=\s)|\+\+(?=\w)|(?<=[(\s])!(?=[\w(]))"""
                   r"""|(?P<word>\b(?:true|false)\b)|(?P<number>\b(?:0x[0-9A-Fa-f]+|0|[1-9]\d*)U?\b)""")


def faults_of(path):
    """Each as (path, start, end, what stands there instead)."""
    for found in TOKEN.finditer(path.read_text(encoding="utf-8")):
        token = found.group()
        if found.lastgroup == "number":
            number = int(token.rstrip("U"), 0)
            instead = [str(each) + token[len(token.rstrip("U")):] for each in (number + 1, number - 1) if each >= 0]
        else:
            instead = [""] if token == "!" else SWAPS.get(token, [])
        if found.lastgroup != "skip":
            for each in instead:
                yield path, found.start(), found.end(), each


def processor_time():
    """Seconds that ended children have taken."""
    used = resource.getrusage(resource.RUSAGE_CHILDREN)
    return used.ru_utime + used.ru_stime


def run(arguments, cost):
    """Whether it succeeds within some times its cost, in seconds of the processor: what goes wrong may go on for ever, and
    take memory while it does."""
    def limit():
        resource.setrlimit(resource.RLIMIT_AS, (4 << 30, 4 << 30))
        resource.setrlimit(resource.RLIMIT_CPU, (int(4 * cost) + 5, int(4 * cost) + 5))
    # Where it was called from may be taken away meanwhile, and no test program begins in a folder that is gone.
    with subprocess.Popen(arguments, cwd=arguments[0].parent, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                          start_new_session=True, preexec_fn=limit) as process:
        try:
            return process.wait(20 * cost + 60) == 0
        except subprocess.TimeoutExpired:
            return False
        finally:
            # It may have left children, and live on when this is broken off.
            with contextlib.suppress(ProcessLookupError):
                os.killpg(process.pid, signal.SIGKILL)


class Trial:
    def __init__(self, clone, sessions, jobs):
        self.clone, self.jobs = clone, jobs
        self.build_folder = clone / "build-faults"
        programs = {f"{each}_tests": ["--gtest_brief=1", "--gtest_fail_fast"] for each in TESTS}
        programs["kelvora_simulation"] = ["--first", "--jobs", str(jobs), "--sessions", str(sessions)]
        self.programs = {name: [self.build_folder / "tests" / name, *rest] for name, rest in programs.items()}
        self.costs = {}

    def prepare(self):
        if not (self.clone / ".git").is_dir():
            subprocess.run(["git", "clone", "--quiet", "--shared", ROOT, self.clone], check=True)
        subprocess.run(["git", "-C", self.clone, "fetch", "--quiet", ROOT, "HEAD"], check=True)
        subprocess.run(["git", "-C", self.clone, "checkout", "--quiet", "--force", "FETCH_HEAD"], check=True)
        # What is touched again and again is compiled alone, all else together.
        for each in FOLDERS:
            lists = self.clone / "src" / each / "CMakeLists.txt"
            lists.write_text("set(CMAKE_UNITY_BUILD OFF)\n" + lists.read_text(encoding="utf-8"), encoding="utf-8")
        subprocess.run(["cmake", "-S", self.clone, "-B", self.build_folder, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Release",
                        "-DCMAKE_CXX_FLAGS_RELEASE=-O0", "-DCMAKE_CXX_COMPILER=clang++-14",
                        "-DCMAKE_EXE_LINKER_FLAGS=-fuse-ld=lld", "-DKELVORA_FORMS=OFF", "-DKELVORA_PRECOMPILE=ON",
                        "-DCMAKE_UNITY_BUILD=ON", "-DCMAKE_UNITY_BUILD_BATCH_SIZE=0"], check=True,
                       stdout=subprocess.DEVNULL)
        if not self.build(*self.programs):
            sys.exit("it does not build")
        for name, arguments in self.programs.items():
            before = processor_time()
            if not run(arguments, 300):
                sys.exit(f"without any fault {name} fails")
            self.costs[name] = processor_time() - before

    def build(self, *targets):
        return subprocess.run(["ninja", "-C", self.build_folder, f"-j{self.jobs}", *targets], check=False,
                              stdout=subprocess.DEVNULL).returncode == 0

    def seen_by(self, folder):
        """The program that sees what is planted; nothing when none does."""
        for name in sorted(self.programs, key=lambda name: (name != f"{folder}_tests", self.costs[name])):
            program = self.programs[name][0]
            linked = program.stat().st_mtime_ns
            if not self.build(name):
                return "the compiler"
            if program.stat().st_mtime_ns != linked and not run(self.programs[name], self.costs[name]):
                return name
        return "NOBODY"

    def plant(self, path, start, end, instead):
        text = path.read_text(encoding="utf-8")
        path.write_text(text[:start] + instead + text[end:], encoding="utf-8")
        diff = subprocess.run(["git", "-C", self.clone, "diff", "-U1", path], check=True, capture_output=True,
                              text=True).stdout
        try:
            return self.seen_by(path.relative_to(self.clone / "src").parts[0]), diff
        finally:
            path.write_text(text, encoding="utf-8")


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--count", type=int, default=20, help="faults that build")
    parser.add_argument("--sessions", type=int, default=400, help="of the simulation for each that the tests do not see")
    parser.add_argument("--jobs", type=int, default=2)
    parser.add_argument("--clone", type=pathlib.Path, help="where to; one that is there is used again")
    parser.add_argument("--log", type=pathlib.Path, help="goes on from there; one-token.txt beside the clone's build")
    parser.add_argument("folders", nargs="*", default=FOLDERS, metavar="FOLDER", help="of src; the core's")
    arguments = parser.parse_args()
    clone = (arguments.clone or pathlib.Path(tempfile.mkdtemp()) / "clone").resolve()
    log = arguments.log or clone / "build-faults/one-token.txt"
    trial = Trial(clone, arguments.sessions, arguments.jobs)
    trial.prepare()
    faults = [fault for folder in arguments.folders for path in sorted((clone / "src" / folder).rglob("*.cpp"))
              if not NOT_CORE & set(path.parts) for fault in faults_of(path)]
    random.Random(arguments.seed).shuffle(faults)
    known = dict(line.rsplit(": ", 1) for line in log.read_text().splitlines()) if log.exists() else {}
    counts = {}
    for path, start, end, instead in faults:
        if sum(counts.values()) == arguments.count:
            break
        before = path.read_text(encoding="utf-8")[:start].splitlines(keepends=True) or [""]
        name = f"{path.relative_to(clone)}:{len(before)}:{len(before[-1]) + 1} {instead}"
        if name not in known:
            began = time.monotonic()
            known[name], diff = trial.plant(path, start, end, instead)
            with log.open("a") as lines:
                lines.write(f"{name}: {known[name]}\n")
            print(f"{name}: {known[name]}, {time.monotonic() - began:.0f} s", flush=True)
            if known[name] == "NOBODY":
                print(diff, flush=True)
        if known[name] != "the compiler":
            counts[known[name]] = counts.get(known[name], 0) + 1
    print(f"{sum(counts.values())} faults: " + ", ".join(f"{count} by {who}" for who, count in counts.items()))


if __name__ == "__main__":
    main()
