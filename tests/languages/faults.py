"""faults.py CHECK PROGRAMS: the check of the languages names each fault that is put into the Italian one."""
import pathlib
import shutil
import subprocess
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


def told(check, program):
    return subprocess.run([sys.executable, check, "--program", program, "ITA"], capture_output=True, text=True, check=False)


def main():
    check, programs = sys.argv[1], pathlib.Path(sys.argv[2])
    missed = []
    with tempfile.TemporaryDirectory() as folder:
        program = copied(programs, folder)
        if told(check, program).returncode:
            missed.append("it finds fault with the whole files")
        for name, there, instead, words in FAULTS:
            file = program / name
            whole = file.read_bytes()
            if there is None:
                file.unlink()
            else:
                encoding = "latin-1"
                assert there.encode(encoding) in whole, there
                file.write_bytes(whole.replace(there.encode(encoding), instead.encode(encoding)))
            found = told(check, program)
            if not found.returncode or words not in found.stdout:
                missed.append(f"{words}\n    told instead: {found.stdout}{found.stderr}")
            file.write_bytes(whole)
    print("\n".join(missed or [f"{len(FAULTS)} faults, each named"]))
    return bool(missed)


if __name__ == "__main__":
    sys.exit(main())
