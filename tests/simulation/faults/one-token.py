#!/usr/bin/env python3
"""Plants faults of one token in the core, one at a time, and says which no test sees.

A fault is a comparison, a condition, an offset or a number that is a little wrong. They are drawn at random by a seed
from the sources of the core, in a clone of the last commit; the core's tests and the simulation are built there without
sanitizers, and a fault counts as seen when a test or the simulation fails: first the tests of its folder, then all
others. Those that nobody sees are printed as a patch: each is to be read, and given a test or shown to change nothing.
"""

import argparse
import os
import pathlib
import random
import re
import resource
import signal
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parents[3]
FOLDERS = ["catalogue", "comms", "eeprom", "flash", "journal", "keymap", "layout", "platform", "ports", "recovery", "series",
           "setup"]
NOT_CORE = {"forms", "qt"}

SWAPS = {"==": ["!="], "!=": ["=="], "<": ["<=", ">"], "<=": ["<", ">="], ">": [">=", "<"], ">=": [">", "<="],
         "&&": ["||"], "||": ["&&"], "+": ["-"], "-": ["+"], "true": ["false"], "false": ["true"], "++": ["--"]}
# What is told apart first is no fault's place: comments, texts, includes, lambdas' and templates' brackets.
TOKEN = re.compile(r"""(?P<skip>//[^\n]*|"(?:\\.|[^"\\\n])*"|'(?:\\.|[^'\\\n])+'|\#[^\n]*|\b[\w:]+<[\w:\s*&,<>()]*>[>({&\s]"""
                   r"""|static_assert[^;]*;)"""
                   r"""|(?P<operator>(?<=\s)(?:==|!=|<=|>=|<|>|&&|\|\||\+|-)(?=\s)|\+\+(?=\w)|(?<=[(\s])!(?=[\w(]))"""
                   r"""|(?P<word>\b(?:true|false)\b)|(?P<number>\b(?:0x[0-9A-Fa-f]+|0|[1-9]\d*)\b)""")


def faults_of(path):
    """Each as (path, start, end, what stands there instead)."""
    for found in TOKEN.finditer(path.read_text(encoding="utf-8")):
        token = found.group()
        if found.lastgroup == "number":
            instead = [str(int(token, 0) + 1)] + ([str(int(token, 0) - 1)] if int(token, 0) > 0 else [])
        elif token == "!":
            instead = [""]
        else:
            instead = SWAPS.get(token, [])
        if found.lastgroup != "skip":
            for each in instead:
                yield path, found.start(), found.end(), each


def limit():
    """What goes wrong may go on for ever, and take memory while it does."""
    resource.setrlimit(resource.RLIMIT_AS, (4 << 30, 4 << 30))


def run(arguments, seconds):
    """Whether it succeeds in that time."""
    with subprocess.Popen(arguments, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, start_new_session=True,
                          preexec_fn=limit) as process:
        try:
            return process.wait(seconds) == 0
        except subprocess.TimeoutExpired:
            os.killpg(process.pid, signal.SIGKILL)
            return False


class Trial:
    def __init__(self, clone, seconds, jobs):
        self.clone, self.seconds, self.jobs = clone, seconds, jobs
        self.build_folder = clone / "build-faults"

    def prepare(self):
        if not (self.clone / ".git").is_dir():
            subprocess.run(["git", "clone", "--quiet", "--shared", ROOT, self.clone], check=True)
        subprocess.run(["git", "-C", self.clone, "fetch", "--quiet", ROOT, "HEAD"], check=True)
        subprocess.run(["git", "-C", self.clone, "checkout", "--quiet", "--force", "FETCH_HEAD"], check=True)
        subprocess.run(["cmake", "-S", self.clone, "-B", self.build_folder, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=Release",
                        "-DCMAKE_CXX_FLAGS_RELEASE=-O1", "-DCMAKE_CXX_COMPILER=clang++-14",
                        "-DCMAKE_EXE_LINKER_FLAGS=-fuse-ld=lld", "-DKELVORA_FORMS=OFF", "-DKELVORA_PRECOMPILE=ON"],
                       check=True, stdout=subprocess.DEVNULL)

    def build(self, *targets):
        return run(["ninja", "-C", self.build_folder, f"-j{self.jobs}", *targets], 3600)

    def test(self, *choice):
        return run(["ctest", "--test-dir", self.build_folder, f"-j{self.jobs}", "--stop-on-failure", "--timeout", "60",
                    *choice], 600)

    def seen_by(self, folder):
        """Who sees what is planted: the tests of its folder, all tests, the simulation; nothing when nobody does."""
        if not self.build(f"{folder}_tests"):
            return "the compiler"
        if not self.test("-R", f"^{folder}_tests"):
            return "its tests"
        if not self.build():
            return "the compiler"
        if not self.test("-E", f"^{folder}_tests"):
            return "other tests"
        simulation = [self.build_folder / "tests/kelvora_simulation", "--first", "--jobs", str(self.jobs), "--seconds",
                      str(self.seconds)]
        return None if run(simulation, self.seconds + 120) else "the simulation"

    def plant(self, path, start, end, instead):
        text = path.read_text(encoding="utf-8")
        path.write_text(text[:start] + instead + text[end:], encoding="utf-8")
        diff = subprocess.run(["git", "-C", self.clone, "diff", "-U1"], check=True, capture_output=True, text=True).stdout
        try:
            return self.seen_by(path.relative_to(self.clone / "src").parts[0]), diff
        finally:
            path.write_text(text, encoding="utf-8")


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--count", type=int, default=20, help="faults that build")
    parser.add_argument("--seconds", type=int, default=20, help="of simulation for each that the tests do not see")
    parser.add_argument("--jobs", type=int, default=2)
    parser.add_argument("--clone", type=pathlib.Path, help="where to; one that is there is used again")
    parser.add_argument("folders", nargs="*", default=FOLDERS, metavar="FOLDER", help="of src; the core's")
    arguments = parser.parse_args()
    clone = arguments.clone or pathlib.Path(tempfile.mkdtemp()) / "clone"
    trial = Trial(clone.resolve(), arguments.seconds, arguments.jobs)
    trial.prepare()
    if (seen := trial.seen_by(arguments.folders[0])) is not None:
        sys.exit(f"without any fault it fails: {seen}")
    faults = [fault for folder in arguments.folders for path in sorted((trial.clone / "src" / folder).rglob("*.cpp"))
              if not NOT_CORE & set(path.parts) for fault in faults_of(path)]
    random.Random(arguments.seed).shuffle(faults)
    counts = {}
    for fault in faults:
        if sum(counts.values()) == arguments.count:
            break
        seen, diff = trial.plant(*fault)
        if seen == "the compiler":
            continue
        counts[seen] = counts.get(seen, 0) + 1
        line = fault[0].read_text(encoding="utf-8")[:fault[1]].count("\n") + 1
        print(f"{fault[0].relative_to(trial.clone)}:{line}: seen by {seen or 'NOBODY'}", flush=True)
        if seen is None:
            print(diff, flush=True)
    print(f"{sum(counts.values())} faults: " + ", ".join(f"{count} by {who or 'nobody'}" for who, count in counts.items()))


if __name__ == "__main__":
    main()
