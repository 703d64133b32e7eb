"""windows.py PROGRAMS EXAMPLES: the first path, a scan and a download by names and roles alone, with the screen reader's own
interface. Ends with 77 where that is not installed."""
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile


def on_a_desktop_of_its_own(folder):
    """This script once more, on a screen and a bus that nobody else has."""
    screen, number = os.pipe()
    with subprocess.Popen(["Xvfb", "-displayfd", str(number), "-screen", "0", "1280x800x24", "-nolisten", "tcp"],
                          pass_fds=[number], stderr=subprocess.DEVNULL) as server:
        os.close(number)
        with os.fdopen(screen) as told:
            display = told.readline().strip()
        environment = {**os.environ, "DISPLAY": f":{display}", "QT_QPA_PLATFORM": "xcb", "LC_ALL": "C.UTF-8",
                       "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1", "HOME": folder}
        for name in ("CONFIG_HOME", "DATA_HOME", "STATE_HOME", "CACHE_HOME", "RUNTIME_DIR"):
            os.mkdir(os.path.join(folder, name), 0o700)
            environment[f"XDG_{name}"] = os.path.join(folder, name)
        try:
            return subprocess.call(["dbus-run-session", "--", sys.executable, __file__, *sys.argv[1:], folder],
                                   env=environment)
        finally:
            server.terminate()


def first_path(reader, till):
    reader.press("menu item", "Open...")
    reader.enter("Open Setup")
    reader.type("File name:", str(till))
    reader.press("push button", "Open")
    reader.enter("Kelvora")
    reader.press("list item", "Slave Keyboard, device 2 of 4")
    reader.enter("Extension Keyboard (KM064) - till")
    reader.press("list item", "Key 106, single key, row 2, column 2")
    reader.find("list item", "Key 106, single key, row 2, column 2", STATE_SELECTED)
    reader.press("radio button", "Quadruple key")
    reader.hear("Key 106, quadruple key, row 2, column 2")
    reader.find("push button", "Undo change", STATE_ENABLED)
    reader.press("push button", "Keep and close")
    reader.enter("Kelvora - [till*]")
    reader.find("menu item", "Save", STATE_ENABLED)
    reader.enter("Kelvora")
    reader.press("menu item", "Save")
    reader.hear("The setup is saved.")


def download(reader):
    reader.press("menu item", "Flash memory Download")
    reader.enter("Flash Download: COM1")
    reader.press("push button", "Yes")
    reader.enter("Flash Download")
    reader.find("alert", "Flash Download")
    reader.leave("OK")
    reader.enter("Kelvora")


def scan(reader):
    reader.press("menu item", "Line scan")
    reader.hear("Line Scan + Flash Upload")
    reader.find("label", "Operation: Ready")
    reader.enter("Kelvora - [PosConfiguration 2*]")
    reader.find("list item", "ICCR, device 4 of 4", STATE_SHOWING)
    reader.enter("Kelvora")


def main():
    reader = Reader("Kelvora")
    programs, examples, folder = map(pathlib.Path, sys.argv[1:4])
    till = folder / "till.dat"
    shutil.copy(examples / "all-four.dat", till)
    # Bytes that take no time: what is announced is heard of a quick line too.
    with subprocess.Popen([programs / "kelvora-bench", "--unpaced", "--until-eof"], text=True,
                          stdin=subprocess.PIPE, stdout=subprocess.PIPE) as bench, \
            subprocess.Popen([programs / "kelvora", "--line", "1=" + bench.stdout.readline().split()[1]]) as program:
        try:
            first_path(reader, till)
            if "QQ" not in till.read_text(encoding="cp1252"):
                sys.exit("the saved setup has no quadruple key")
            download(reader)
            scan(reader)
            reader.press("menu item", "Exit")
            reader.press("push button", "No")
            if program.wait(60):
                sys.exit(f"it ended with {program.returncode}")
        finally:
            program.kill()


if len(sys.argv) == 4:
    from pyatspi import STATE_ENABLED, STATE_SELECTED, STATE_SHOWING

    from reader import Reader

    main()
else:
    NEEDED = ("Xvfb", "dbus-run-session")
    if not all(map(shutil.which, NEEDED)) or subprocess.call(
            [sys.executable, "-c", "import gi; gi.require_version('Atspi', '2.0'); import pyatspi"],
            stderr=subprocess.DEVNULL) != 0:
        sys.exit(77)
    with tempfile.TemporaryDirectory() as own:
        sys.exit(on_a_desktop_of_its_own(own))
