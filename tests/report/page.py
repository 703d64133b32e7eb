"""page.py PROGRAMS: the page of a report in Chromium, used as a person would, without scripts, and on paper. Ends with
77 where there is no Chromium."""
import base64
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

from browser import Browser

# Where the page is opened, and what it shows then: the first tills, how many they are, how they are sorted.
SHOWN = {
    "": (["<b>t4", "t1", "t10"], "201 tills", []),
    "deviates=1": (["t20", "t3"], "2 of 201 tills", []),
    "failed=1": (["t20"], "1 of 201 tills", []),
    "unread=1": (["<b>t4"], "1 of 201 tills", []),
    "q=KEY+97+verify": (["t3"], "1 of 201 tills", []),
    "days=-1": (["<b>t4", "t1", "t10"], "201 tills", []),
    "days=30&sort=name": (["<b>t4", "t1", "t2"], "200 of 201 tills", ["ascending"]),
    "sort=name&down=1": (["t200", "t199", "t198"], "201 tills", ["descending"]),
    "sort=result": (["t20", "t3", "<b>t4"], "201 tills", ["ascending"]),
    "sort=modules&down=1": (["t1", "t10", "t100"], "201 tills", ["descending"]),
    "q=nothing+like+it": ([], "0 of 201 tills", []),
}
# What is seen, of the page as it is then.
HELPERS = """
const seen = (where) => [...document.querySelectorAll(where)].map((each) => each.textContent);
const names = (many) => seen("tr.till button").slice(0, many);
const go = (hash) => { history.replaceState(null, "", `#${hash}`); dispatchEvent(new Event("hashchange")); };
const type = (where, text) => { byId(where).value = text; byId(where).dispatchEvent(new Event("input")); };
const frames = async () => { for (let i = 0; i < 3; ++i) await new Promise(requestAnimationFrame); };
const focused = () => {
  const { top, bottom } = document.activeElement.getBoundingClientRect(), seen = list.getBoundingClientRect();
  return [document.activeElement.textContent, top >= seen.top && bottom <= seen.bottom];
};
const settled = async () => {
  const drawn = () => [...document.querySelectorAll("tr.till")].slice(1, 9).every((row) => row.querySelector("img")?.naturalWidth);
  do await new Promise(requestAnimationFrame); while (!drawn());
};
"""
failures = []


def expect(what, found, expected):
    if found != expected:
        failures.append(f"{what}: {found}, not {expected}")


def make_page(program):
    for folder in ("setups", "results"):
        os.mkdir(folder)

    def write(name, text):
        pathlib.Path(name).write_text(text, encoding="utf-8")

    standard = "[Kelvora]\n[KM096]\n[KM064]\n[MCR]\n"
    write("standard.dat", standard)
    for number in range(1, 201):
        write(f"setups/t{number}.dat", standard)
    keys = " _\n".join(["=SSSSSSS", "VSSSSSSS", "VSSSSSSS"] + 5 * ["SSSSSSSS"])
    write("setups/t3.dat", f"[Kelvora]\n[KM096]\nFiscal = NO\n[KM064]\nKeyMap = {keys}\n[MCR]\n")
    write("setups/t20.dat", "[Kelvora]\n")
    write("setups/<b>t4.dat", "nothing\n")
    write("results/t20.json", '{"till":"t20","action":"download","exit":3,"diagnostics":["no <i>answer"]}')
    write("results/t3.json", '{"till":"t3","action":"verify","exit":0,"time":"2020-01-01T12:00:00Z"}')
    subprocess.run([program, "report", "setups", "--standard", "standard.dat", "--results", "results", "-o",
                    "report.html"], stderr=subprocess.DEVNULL, check=False, env={**os.environ, "TZ": "UTC"})


def look(browser):
    for hash_, expected in SHOWN.items():
        found = browser.run(f"go('{hash_}'), [names(3), byId('count').textContent,"
                            "[...document.querySelectorAll('[aria-sort$=ending]')].map((each) => each.ariaSort)]")
        expect(hash_, tuple(found), expected)
    browser.run("go(''), list.scrollTop = 1e6, settled()")
    expect("the end of the list", browser.run("[names(99).at(-1), seen('tr.till').length < 60, byId('tills').ariaRowCount,"
                                              "[...document.querySelectorAll('tr.till')].at(-1).ariaRowIndex]"),
           ["t99", True, "202", "202"])
    expect("rows of a long name, and pictures of what was drawn before or has no modules", browser.run(
        "go('q=verify'), drawPictures(), go('q=t20.dat'), shown[0].name = 'long '.repeat(99), redraw(), drawPictures(),"
        "[rows.querySelector('.till').offsetHeight === rowHeight, seen('.till img').length, pictures.size]"), [True, 0, 0])
    browser.run("shown[0].name = 't20'")
    expect("a row", browser.run("go('q=verify'), seen('tr.till > td')"), [
        "", "KM096, KM064, MCR", "fiscal keyboard: no; backlight: yes; tracks read: 1,2,3; separator after track 1: none; "
        "separator after track 2: none; separator after track 3: none; auto-read: yes", "4: Composite Keyboard, fiscal "
        "keyboard: yes -> no; Slave Keyboard, Key 97: single key -> unused; Slave Keyboard, Key 105: single key -> double "
        "vertical key; Slave Keyboard, Key 113: single key -> part of key 105", "verify: done", "2020-01-01 12:00"])


def look_at_sheet(browser):
    expect("sheet", browser.run("go('till=t3'), [sheet.open, seen('h2'), seen('#sheet h3')]"), [
        True, ["t3"], ["Deviations from the standard: 4", "Devices", "1. Composite Keyboard (KM096)",
                       "2. Slave Keyboard (KM064)", "3. MCR"]])
    expect("keys", browser.run("[...document.querySelectorAll('svg.keys')].map((each) => each.getAttribute('aria-label'))"), [
        "single key: 68; double horizontal key: 2", "unused: 1; single key: 61; double vertical key: 1"])
    expect("deviating keys", browser.run("seen('.deviates title')"),
           ["Key 97: unused", "Key 105: double vertical key"])


def use(browser):
    where = "[sheet.open, seen('h2')[0], location.hash]"
    browser.run("go(''), document.querySelector('tr.till button').focus()")
    browser.press("End", "ArrowUp", "Enter", "ArrowRight")
    expect("opened by keys", browser.run(where), [True, "t99", "#till=t99&file=setups%2Ft99.dat"])
    browser.press("Escape")
    expect("the till last shown has the focus", browser.run("frames().then(focused)"), ["t99", True])
    for width in (1200, 390):
        browser.call("Emulation.setDeviceMetricsOverride", width=width, height=800, deviceScaleFactor=1, mobile=False)
        browser.run("go(''), document.querySelector('tr.till button').focus()")
        browser.press("End")
        expect(f"the last till, {width} wide", browser.run("frames().then(focused)"), ["t99", True])
    browser.call("Emulation.clearDeviceMetricsOverride")
    browser.press("/")
    expect("closed by a key", browser.run("[sheet.open, document.activeElement.id]"), [False, "search"])
    browser.run("go(''); document.querySelector('tr.till td').click()")
    expect("opened by a click", browser.run(where), [True, "<b>t4", "#till=%3Cb%3Et4&file=setups%2F%3Cb%3Et4.dat"])
    expect("of a name, that with the file", browser.run("tills[1].name = 't10', go('till=t10&file=setups/t10.dat'), tills[1].name = 't1',"
                                                       "seen('#sheet-content > .facts')"), ["setups/t10.dat"])
    expect("closed by the address of a till that is not listed, and opened again at once", browser.run(
        "go('till=t10&q=t3'), isOpen = sheet.open, go('till=t20'), frames().then(() => [isOpen, sheet.open, state.till])"),
        [False, True, "t20"])
    browser.run("go('')")
    for _ in range(2):
        browser.run("document.querySelector('[data-sort=deviations]').click()")
    expect("sorted by clicks", browser.run("[names(2), location.hash]"), [["t20", "t3"], "#sort=deviations&down=1"])
    browser.run("go('failed=1'), byId('all').click(), type('search', 'T20'), type('days', '3')")
    expect("typed", browser.run("[names(3), location.hash]"), [["t200"], "#q=T20&days=3"])


def print_page(browser):
    browser.call("Emulation.setEmulatedMedia", media="print")
    expect("a filtered list on paper", browser.run(
        "go('q=verify&deviates=1&days=3'), till = tills.find((each) => each.name === 't3'), till.deviations = Array(9).fill(0),"
        "redraw(), [byId('filtered').innerText, deviationsCell(till).textContent.split('; ').pop()]"),
        ['Filtered by: "verify"; Deviates; older than 3 days', "and 4 more"])
    browser.call("Emulation.setEmulatedMedia", media="")
    browser.run("go('')")
    paper = base64.b64decode(browser.call("Page.printToPDF", landscape=True)["data"])
    expect("all rows are on paper", paper.count(b"/Type /Page\n") > 4, True)


def look_without_scripts(browser, address):
    browser.call("Emulation.setScriptExecutionDisabled", value=True)
    browser.open(address + "?plain")
    count = "[...document.querySelectorAll('{}')].filter((each) => each.checkVisibility()).length"
    for what, expected in {"tbody th[scope=row]": 201, "#filters, #list": 0}.items():
        expect(f"without scripts, {what}", browser.run(count.format(what)), expected)


def main():
    program = os.path.join(os.path.abspath(sys.argv[1]), "kelvora-cli")
    if not shutil.which("chromium"):
        sys.exit(77)
    with tempfile.TemporaryDirectory(ignore_cleanup_errors=True) as folder:
        os.chdir(folder)
        make_page(program)
        with Browser(folder) as browser:
            address = f"file://{folder}/report.html"
            browser.open(address)
            browser.run(HELPERS)
            look(browser)
            look_at_sheet(browser)
            use(browser)
            print_page(browser)
            look_without_scripts(browser, address)
    sys.exit("\n".join(failures) or 0)


main()
