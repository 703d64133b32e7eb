"""What the programs' own help says: asked once for as long as a program is the same, and told as lists of words."""
import os
import re
import subprocess
import tempfile

PROGRAMS = ("kelvora", "kelvora-cli", "kelvora-bench")


class Help:
    """BIN is the folder where the programs are built."""

    def __init__(self, bin):
        self.bin = bin
        self.programs = [name for name in PROGRAMS if os.access(os.path.join(bin, name), os.X_OK)]
        self.commands = [command for program in self.programs for command in self._all([program])]

    def _all(self, command):
        return [command] + [each for name in self.below(command) for each in self._all(command + [name])]

    def text(self, command):
        program = os.path.join(self.bin, command[0])
        told = os.path.join(self.bin, "..", "help", "-".join(command))
        if not os.path.exists(told) or os.path.getmtime(told) <= os.path.getmtime(program):
            os.makedirs(os.path.dirname(told), exist_ok=True)
            # Several tests ask at the same time.
            with tempfile.NamedTemporaryFile(dir=os.path.dirname(told), delete=False) as asked:
                subprocess.run([program, *command[1:], "--help"], stdout=asked, check=True)
            os.replace(asked.name, told)
        with open(told, encoding="utf-8") as file:
            return file.read()

    def options(self, command):
        """The names of all its options."""
        heads = re.findall(r"^  (-\S.*?)(?:   .*|$)", self.text(command), re.M)
        return [word for head in heads for word in re.split(r"[, ]+", head) if re.match(r"--?[a-z0-9]", word)]

    def below(self, command):
        """The names of the commands below it."""
        section = re.search(r"^Subcommands:\n(.*?)(?:^$|\Z)", self.text(command), re.M | re.S)
        return re.findall(r"^  ([a-z0-9-]+) ", section[1], re.M) if section else []


class Comparison:
    """Lists of words that should be the same; their order does not count."""

    def __init__(self):
        self.failed = False

    def same(self, what, expected, found):
        expected, found = set(expected), set(found)
        if expected != found:
            self.failed = True
            print(f"{what}: missing {sorted(expected - found)}, needless {sorted(found - expected)}")
