"""faults.py CHECK PROGRAMS: the check of the languages names each fault that is put into the Italian one."""
import contextlib
import io
import pathlib
import runpy
import shutil
import sys
import tempfile

# File, what stands in it, what stands there instead, and the words that the check has to say.
FAULTS = [
    ("ZelITA.mes", "590, Pronto \r\n", "", "590 is missing: Ready"),
    ("ZelITA.mes", "590, Pronto \r\n", "589, Pronto \r\n590, Pronto \r\n", "589 is read by nobody"),
    ("ZelITA.mes", "642, Guida di Kelvora", "642, Kelvora Help", "642 is still English"),
    ("ZelITA.mes", "590, Pronto", f"590, {'x' * 126}", "590 has 127 characters"),
    ("ZelITA.mes", "590, Pronto \r\n", "590, Pronto\r\n", "not \"number, text \": '590, Pronto'"),
    ("ZelITA.mes", "590, Pronto \r\n", "590, Pronto \r\n112, x \r\n", "112 stands behind 590"),
    ("ZelITA.mes", "590, Pronto", "590, Pront\u00c3\u00b2", "is UTF-8"),
    ("ZelITA.mes", "590, Pronto", "590, Pronto\x81", "is no character of cp1252"),
    ("ZelITA.mes", "(stato 999)", "", "226 lacks, or has too much of: 999"),
    ("ZelITA.mes", "640, Un", "640, --line Un", "640 lacks, or has too much of: --line"),
    ("ZelITA.mes", "663, Stato", "663, Stato:", '663 has to end with ""'),
    ("ZelITA.mes", "659,  tasti", "659, tasti", '659 has to begin with " "'),
    ("ZelITA.mes", "301, &Nuovo", "301, Nuovo", "301 needs one & before a letter"),
    ("ZelITA.mes", "590, Pronto", "590, &Pronto", "590 needs one & before a letter"),
    ("ZelITA.mes", 'Premere "Avanti >>"', 'Premere "Poi >>"', "791 names a button by another text than it has"),
    ("ZelITA.mes", "000, Dravon Messages ", "000, Dravon Messages", "the first line has to be"),
    ("../ZelITA.ini", "COM1", "COM2", "ZelITA.ini: sets something else"),
    ("FenhoITA/main.html", '<h2 id="open">', "<h2>", "FenhoITA/main.html: headings, tables or pictures differ"),
    ("FenhoITA/main.html", "index.html", "indice.html", "leads nowhere: indice.html"),
    ("FenhoITA/main.html", "File &gt; Apri<", "File &gt; Aprire<", "no menu has this entry: File > Aprire"),
    ("FenhoITA/main.html", "<b>KB64,", "<b>KB 64,", "names by other words than the windows: KB64"),
    ("FenhoITA/main.html", ' alt="', ' title="', "the picture has no alt text: pictures/main.png"),
    ("FenhoITA/main.html", "pictures/main.png", "pictures/mian.png", "was not made: pictures/mian.png"),
    ("FenhoITA/main.html", 'lang="it"', 'lang="en"', "has to say its own language"),
    ("FenhoITA/index.html", "files.html", "flash.html", "FenhoITA/files.html: is not in the index"),
    ("FenhoITA/keys.html", None, None, "FenhoITA/keys.html: is missing"),
]


def copied(programs, to):
    program = pathlib.Path(to, "bin")
    program.mkdir()
    for code in ("ENG", "ITA"):
        shutil.copy(programs / f"Zel{code}.mes", program)
        shutil.copy(programs.parent / f"Zel{code}.ini", to)
        shutil.copytree(programs / f"Fenho{code}", program / f"Fenho{code}")
    return program


def planted(program, name, there, instead, _):
    """Whether there was place for it."""
    file = program / name
    if there is None:
        file.unlink()
        return True
    whole = file.read_bytes()
    broken = whole.replace(there.encode("latin-1"), instead.encode("latin-1"))
    file.write_bytes(broken)
    return broken != whole


def told(check, program):
    """What the check says, in this process: a start takes longer than the work. Nothing of whole files."""
    said, sys.argv[1:] = io.StringIO(), ["--program", str(program), "ITA"]
    with contextlib.redirect_stdout(said):
        failed = check()
    return said.getvalue() if failed else ""


def main():
    check = runpy.run_path(sys.argv[1])["main"]
    missed, left, together = [], FAULTS, True
    with tempfile.TemporaryDirectory() as folder:
        whole = copied(pathlib.Path(sys.argv[2]), folder)
        if told(check, whole):
            missed.append("it finds fault with the whole files")
        while left:
            with tempfile.TemporaryDirectory() as other:
                program = copied(whole, other)
                tried = [fault for fault in (left if together else left[:1]) if planted(program, *fault)]
                said = told(check, program)
            named = [fault for fault in tried if fault[3] in said]
            if not together and not named:
                missed.append(f"{left[0][3]}\n    told instead: {said}")
            left = [fault for fault in left[0 if together else 1:] if fault not in named]
            # Many at once, for as long as that names some; then each by itself, for one may hide another.
            together = together and bool(named)
    print("\n".join(missed or [f"{len(FAULTS)} faults, each named"]))
    return bool(missed)


if __name__ == "__main__":
    sys.exit(main())
