#!/usr/bin/env python3
"""completion.py SHELL PROGRAMS MANUAL: a shell offers all commands and options that a program has, and no others, and
of values what fits. Ends with 77 where the shell is not installed."""
import os
import shutil
import subprocess
import sys
import tempfile

from program_help import Comparison, Help

LIBRARY = "/usr/share/bash-completion/bash_completion"
START = {"bash": ["bash"], "zsh": ["zsh", "-f"], "fish": ["fish", "--no-config"]}
VALUES = {
    "kelvora-cli ch": "check",
    "kelvora-cli check --nu": "--null",
    "kelvora-cli scan --port ": "1 2 3 4",
    "kelvora-cli scan --timeout ": "",
    "kelvora-bench --speed 1": "1200",
    "kelvora-cli check ": "till.dat old.TXT folder",
    "kelvora-cli check --json -v ": "till.dat old.TXT folder",
    "kelvora-cli identity restore --bench ": "till.dat old.TXT till.mem picture.svg page.html folder",
    "kelvora-cli restore --port 2 ": "till.mem folder",
    "kelvora-cli scan -o ": "till.dat old.TXT folder",
    "kelvora-cli render --output-folder ": "folder",
    "kelvora-cli render -o ": "picture.svg folder",
    "kelvora-cli report -o ": "page.html folder",
    "kelvora-cli report --standard ": "till.dat old.TXT folder",
    "kelvora-cli report --results ": "folder",
    "kelvora-cli diff ": "till.dat old.TXT folder",
    "kelvora ": "till.dat old.TXT folder",
}
# What a shell offers in its own way.
OWN_VALUES = {
    "bash": {"kelvora-cli scan --line ": "1= 2= 3= 4="},
    # What has been said once is offered no more.
    "zsh": {"kelvora-cli scan --line ": "1= 2= 3= 4=", "kelvora-cli download -y --ye": ""},
    "fish": {"kelvora-cli scan --output=o": "--output=old.TXT", "kelvora-cli scan -oti": "-otill.dat"},
}


def expected(shell, help):
    """What is to be offered where each line ends."""
    lines = {}
    for command in help.commands:
        lines[" ".join(command) + " -"] = help.options(command)
        if help.below(command):
            lines[" ".join(command) + " "] = help.below(command)
    values = (VALUES | OWN_VALUES[shell]).items()
    lines |= {line: words.split() for line, words in values if line.split()[0] in help.programs}
    if shell == "fish":
        lines["kelvora-cli check ~/files\\ of\\ a\\ till/"] = ["~/files of a till/till.dat"]
    return lines


def make_files(place):
    """The files that are there to be offered."""
    for folder in ("files/folder", "files of a till"):
        os.makedirs(os.path.join(place, folder))
    for name in ("files/till.dat", "files/old.TXT", "files/till.mem", "files/picture.svg", "files/page.html",
                 "files of a till/till.dat", "files of a till/till.mem"):
        open(os.path.join(place, name), "w", encoding="utf-8").close()


def offered(shell, manual, lines):
    """What the shell offers for each line. One shell is asked for all: a start takes longer than the answers."""
    script = os.path.join(os.path.dirname(os.path.abspath(__file__)), "complete." + shell)
    with tempfile.TemporaryDirectory() as place:
        make_files(place)
        environment = dict(os.environ, HOME=place, XDG_CONFIG_HOME=place, XDG_DATA_HOME=place)
        run = subprocess.run(START[shell] + [script, manual, LIBRARY], input="".join(line + "\n" for line in lines),
                             capture_output=True, text=True, check=False, cwd=os.path.join(place, "files"),
                             env=environment)
    answers = run.stdout.split("\0")[:-1]
    if len(answers) != len(lines):
        sys.exit(f"{shell} answered {len(answers)} of {len(lines)} lines:\n{run.stderr}")
    # A folder's "/" does not count.
    return {line: [word.rstrip("/") for word in answer.splitlines() if word] for line, answer in zip(lines, answers)}


def main():
    shell, programs, manual = sys.argv[1:]
    if not shutil.which(shell) or (shell == "bash" and not os.path.exists(LIBRARY)):
        return 77
    compared = Comparison()
    lines = expected(shell, Help(programs))
    answers = offered(shell, manual, lines)
    for line, words in lines.items():
        compared.same(f"{shell}: {line}", words, answers[line])
    return compared.failed


if __name__ == "__main__":
    sys.exit(main())
