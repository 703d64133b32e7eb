#!/usr/bin/env python3
"""Judges languages by the English: texts, settings and help pages. Says what is wrong, a line each.

    check-languages.py [--program FOLDER] [--settings FOLDER] [CODE...]

--program is the folder with ZelENG.mes and FenhoENG, /opt/kelvora/bin if it is not given; --settings the one with
the ini files, the folder above it. Without a code it judges every language that has a message file there.
"""
import argparse
import collections
import html
import html.parser
import pathlib
import re
import sys

HEADER = "000, Dravon Messages "
LONGEST = 126  # characters of a text with its closing blank
ENCODING = "cp1252"
# Menu entries, which may have a mnemonic that the English has not.
MENUS = range(300, 400)

# What is the same in every language: names, numbers, options, what points somewhere.
KEPT = re.compile(r"--[a-z-]+|\^\^|<<|>>|/dev/\w+|\b(?:tcp|raw):|\bbridge:(?=\S)|\[[A-Z0-9]+\]|"
                  r"\b[A-Z]*\d+[A-Z0-9]*\b|\bCOM\b|\bMID\b|\bEsc\b")


class Language:
    def __init__(self, program, settings, code):
        self.code = code
        self.texts_file = program / f"Zel{code}.mes"
        self.settings_file = settings / f"Zel{code}.ini"
        self.help = program / f"Fenho{code}"
        self.wrong = []
        self.texts = self.read_texts()

    def say(self, where, what):
        self.wrong.append(f"{where}: {what}")

    def read(self, path, encoding):
        try:
            return path.read_bytes().decode(encoding)
        except FileNotFoundError:
            self.say(path.name, "is missing")
        except UnicodeDecodeError as error:
            self.say(path.name, f"byte {error.start} is no character of {encoding}")
        return ""

    def read_texts(self):
        name = self.texts_file.name
        content = self.read(self.texts_file, ENCODING)
        if re.search("[\u00c2\u00c3][\u0080-\u00bf]", content):
            self.say(name, "is UTF-8; it has to be Windows-1252")
        lines = content.split("\r\n")
        if content and (lines[0] != HEADER or lines[-1]):
            self.say(name, f'the first line has to be "{HEADER}", and every line to end with CR LF')
        texts = {}
        last = 0
        for line in lines[1:-1]:
            parts = re.fullmatch(r"(\d{3}), (.+) ", line)
            if not parts or "\n" in line:
                self.say(name, f'not "number, text ": {line!r}')
                continue
            number = int(parts[1])
            if number <= last:
                self.say(name, f"{number} stands behind {last}")
            if len(parts[2]) >= LONGEST:
                self.say(name, f"{number} has {len(parts[2]) + 1} characters with its closing blank, "
                               f"{LONGEST} are the most")
            last = max(number, last)
            texts[number] = parts[2]
        return texts


def plain(caption):
    """A caption as the help writes it."""
    return caption.replace("&", "").rstrip(".")


def kept(text):
    return collections.Counter(KEPT.findall(text))


def ending(text):
    return re.search(r"( ?\.\.\.|[:?])?$", text)[0]


def check_text(language, english, number):
    name = language.texts_file.name
    there, here = english.texts[number], language.texts[number]
    # One word may be the same; what stands in quotes is written so into files.
    if here == there and language is not english and len(re.findall("[A-Za-z]{2,}", there)) > 1 and there[0] != '"':
        language.say(name, f"{number} is still English: {there}")
    if kept(there) != kept(here):
        differs = (kept(there) - kept(here)) + (kept(here) - kept(there))
        language.say(name, f"{number} lacks, or has too much of: {' '.join(sorted(differs))}")
    if ending(there) != ending(here):
        language.say(name, f'{number} has to end with "{ending(there)}", as in English: {here}')
    if there.startswith((" ", ":")) and here[0] != there[0]:
        language.say(name, f'{number} has to begin with "{there[0]}"')
    marks = len(re.findall("&[^& ]", here))
    if marks != here.count("&") or marks > 1 or ("&" in there) > marks or marks > ("&" in there) + (number in MENUS):
        language.say(name, f"{number} needs one & before a letter where the English has one, and no other: {here}")
    for quoted in re.findall('"([A-Z<>][^"]*)"', there):
        same = [each for each, text in english.texts.items() if plain(text) == quoted]
        if same and not any(f'"{plain(language.texts.get(each, ""))}"' in here for each in same):
            language.say(name, f"{number} names a button by another text than it has: {here}")


def check_texts(language, english):
    name = language.texts_file.name
    for number in sorted(english.texts.keys() - language.texts.keys()):
        language.say(name, f"{number} is missing: {english.texts[number]}")
    for number in sorted(language.texts.keys() - english.texts.keys()):
        language.say(name, f"{number} is read by nobody")
    for number in sorted(english.texts.keys() & language.texts.keys()):
        check_text(language, english, number)


def check_settings(language, english):
    def settings(path):
        return sorted(line for line in language.read(path, ENCODING).split("\r\n") if not line.startswith("'"))
    if settings(language.settings_file) != settings(english.settings_file):
        language.say(language.settings_file.name, "sets something else than the English one, or not with CR LF")


class Page(html.parser.HTMLParser):
    """A page's bones, which are the same in every language, and what it points to."""
    BONES = ("h1", "h2", "p", "ul", "ol", "li", "table", "tr", "td", "pre", "img")

    def __init__(self, content):
        super().__init__()
        self.bones, self.links, self.places, self.pictures = [], [], set(), []
        self.language = None
        self.feed(content)
        bold = [re.sub(r"\s+", " ", each) for each in re.findall("<b>(.*?)</b>", content, re.S)]
        # The menus' entries as the page writes them, and every name of a control.
        self.entries = [each for each in bold if "&gt;" in each]
        self.names = {html.unescape(part).strip() for each in bold for part in re.split("&gt;|, ", each)}

    def handle_starttag(self, tag, attributes):
        found = dict(attributes)
        if tag in self.BONES:
            self.bones.append(tag + (f" {found['id']}" if "id" in found else "") +
                              (f" {found['src']}" if tag == "img" else ""))
        if "id" in found:
            self.places.add(found["id"])
        if tag == "html":
            self.language = found.get("lang")
        if tag == "a":
            self.links.append(found["href"])
        if tag == "img":
            self.pictures.append((found["src"], found.get("alt")))


def check_links(language, pages):
    for name, page in pages.items():
        where = f"{language.help.name}/{name}"
        for link in page.links:
            to, _, place = link.partition("#")
            if to not in pages or (place and place not in pages[to].places):
                language.say(where, f"leads nowhere: {link}")
        if name != "index.html" and name not in pages["index.html"].links:
            language.say(where, "is not in the index")
        captions = {plain(text) for text in language.texts.values()}
        for entry in page.entries:
            for part in entry.split("&gt;"):
                if part.strip() not in captions:
                    language.say(where, f"no menu has this entry: {entry.replace('&gt;', '>')}")
        for source, words in page.pictures:
            if not words:
                language.say(where, f"the picture has no alt text: {source}")
    shown = {source for page in pages.values() for source, _ in page.pictures}
    made = {f"pictures/{file.name}" for file in language.help.glob("pictures/*")}
    for source in sorted(shown ^ made) if made else []:
        language.say(language.help.name, ("is not shown" if source in made else "was not made") + f": {source}")


def check_names(language, english, where, page, original):
    """What is bold in English because a window has it bears its name in the language too."""
    for name in sorted(original.names):
        same = [number for number, text in english.texts.items() if plain(text) == name and name[0].isupper()]
        here = {plain(language.texts.get(number, "")) for number in same}
        # What is in English in every language keeps its name.
        if same and not here & page.names and name not in page.names:
            language.say(where, f"names by other words than the windows: {name}")


def check_help(language, english):
    def read(of):
        return {path.name: Page(language.read(path, "utf-8")) for path in sorted(of.help.glob("*.html"))}
    pages, originals = read(language), read(english)
    if language is not english:
        for name in sorted(pages.keys() ^ originals.keys()):
            language.say(f"{language.help.name}/{name}", "is missing" if name in originals else "is needless")
    for name in sorted(pages.keys() & originals.keys()):
        where = f"{language.help.name}/{name}"
        page, original = pages[name], originals[name]
        if language is not english and page.language == original.language or not page.language:
            language.say(where, f'has to say its own language: <html lang="xx">, not {page.language}')
        heads = [[bone for bone in each.bones if not bone.startswith(("p", "li"))] for each in (page, original)]
        if heads[0] != heads[1]:
            at = next((i for i, pair in enumerate(zip(*heads)) if pair[0] != pair[1]), min(map(len, heads)))
            language.say(where, f"headings, tables or pictures differ from the English page, "
                                f"first: {(heads[0] + ['the end'])[at]} for {(heads[1] + ['the end'])[at]}")
        check_names(language, english, where, page, original)
    if "index.html" in pages:
        check_links(language, pages)


def main():
    parser = argparse.ArgumentParser(description=__doc__.split("\n", 1)[0])
    parser.add_argument("--program", type=pathlib.Path, default=pathlib.Path("/opt/kelvora/bin"))
    parser.add_argument("--settings", type=pathlib.Path)
    parser.add_argument("codes", metavar="CODE", nargs="*")
    given = parser.parse_args()
    settings = given.settings or given.program.parent
    found = sorted(path.name[3:6] for path in given.program.glob("Zel???.mes"))
    english = Language(given.program, settings, "ENG")
    wrong = []
    for code in given.codes or found:
        language = english if code == "ENG" else Language(given.program, settings, code)
        check_texts(language, english)
        check_settings(language, english)
        check_help(language, english)
        wrong += language.wrong
    print("\n".join(wrong or [f"{len(given.codes or found)} languages: nothing is wrong"]))
    return bool(wrong)


if __name__ == "__main__":
    sys.exit(main())
