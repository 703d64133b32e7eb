"""The sources of a build with the flags that say what each of them means, from its compile_commands.json."""
import json
import os
import re
import shlex

ROOT = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))


def arguments(command):
    """The flags of a compiler's command that say what a source means."""
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


def together(build):
    """The program's sources that are compiled together: for each such file its path, flags, and the sources' names.
    What the build itself has made is left out."""
    with open(os.path.join(build, "compile_commands.json"), encoding="utf-8") as file:
        database = json.load(file)
    found = []
    for entry in database:
        if "/Unity/" in entry["file"]:
            with open(entry["file"], encoding="utf-8") as file:
                included = re.findall(r'^#include "(.*)"$', file.read(), re.M)
            names = [os.path.relpath(each, ROOT) for each in included if each.startswith(f"{ROOT}/src/")]
            if names:
                found.append((entry["file"], arguments(entry["command"]), names))
    return found
