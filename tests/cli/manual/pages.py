#!/usr/bin/env python3
"""pages.py PROGRAMS MANUAL TEXTS: every command has a manual page, with all that its help tells and no more, and
something written by hand."""
import os
import re
import shutil
import subprocess
import sys

from program_help import Comparison, Help


def listed(page, section):
    """The bold names in the heads of a section's items."""
    text = re.search(rf"^\.SH {section}$(.*?)(?:^\.SH|\Z)", page, re.M | re.S)
    heads = re.findall(r"^\.TP\n(.*)$", text[1], re.M) if text else []
    return [name for head in heads for name in re.findall(r"\\fB(.*?)\\fP", head.replace(r"\-", "-"))]


def main():
    programs, manual, texts = sys.argv[1:]
    compared, help = Comparison(), Help(programs)
    pages = {"-".join(command): command for command in help.commands}
    for name, command in pages.items():
        with open(f"{manual}/man/{name}.1", encoding="utf-8") as file:
            page = file.read()
        compared.same(f"options in {name}.1", help.options(command), listed(page, "OPTIONS"))
        compared.same(f"commands in {name}.1", help.below(command), listed(page, "COMMANDS"))
    if shutil.which("mandoc"):
        files = [f"{manual}/man/{name}.1" for name in pages]
        compared.failed |= subprocess.run(["mandoc", "-T", "lint", "-W", "warning", *files], check=False).returncode != 0
    # Without the windows there is no program whose help tells of them.
    if "kelvora" in help.programs:
        compared.same("pages", pages, [name.removesuffix(".1") for name in os.listdir(f"{manual}/man")])
        texts = [name.removesuffix(".roff") for name in os.listdir(texts) if name.endswith(".roff")]
        compared.same("hand-written texts", pages, texts)
    return compared.failed


if __name__ == "__main__":
    sys.exit(main())
