#!/usr/bin/python3
"""Writes texts, the same in every run, for the benchmarks and for the peers that are measured beside the library.

Every text stands four levels deep. FOLDER gets

  languages/     a file for each language: de_DE, en_US, POSIX, and then as many others as wanted
  languages/short/   short texts: the first text of each group
  incomplete/    the same languages, but de_DE has only the first text of each group
  urls.txt       the URL of every text, one a line
  shown_in_full.txt  those that the short texts, and the incomplete de_DE, lack
  translations/  with --translations: the languages once more, each saying what en_US says
  peers/         with --peers: the texts of each language, compiled for QTranslator, gettext and ICU
"""

import argparse
import itertools
import json
import pathlib
import random
import subprocess
import sys
from xml.sax.saxutils import escape, quoteattr

# A key of each level; the texts of a device are found under keys like these.
MODULES = """AirQuality Alarms Backup Boiler Calendar Clock Commissioning Cooling Data Display Energy Files Heating
Lighting Menu Network Operation Pumps Rooms Security Service Shading Trends Users Ventilation""".split()
OBJECTS = """Actuator Address Channel Circuit Configuration Controller Device Diagnostics Event Filter Forecast Group
History Input Interface Level List Measurement Mode Output Parameter Report Schedule Sensor Status""".split()
ASPECTS = """Access Alert Button Caption Choice Column Command Confirmation Detail Dialog Error Explanation Field Header
Help Hint Label Limit Message Notification Page Question Title Unit Warning""".split()
TERMS = "Accept Cancel Delete Edit Finish Insert Open Reset Save Start".split()

WORDS = {
    "en_US": """the of and value has been setting alarm temperature pressure is too high low please check supply air
        extract filter dirty fan running stopped schedule new saved device restart now press confirm %1 room""",
    "de_DE": """der die und Wert wurde Einstellung Störung Temperatur Überdruck ist zu hoch niedrig bitte prüfen Zuluft
        Abluft Filter verschmutzt Lüfter läuft gestoppt Zeitplan neu übernommen Gerät neustarten bestätigen %1 Räume""",
}
WORDS["POSIX"] = WORDS["en_US"].upper()


def language_keys(count):
    return (["de_DE", "en_US", "POSIX"] + [f"xx_{number:03}" for number in range(count)])[:count]


def make_urls(count):
    """Groups of texts, filled one after the other, over the three levels above."""
    groups = -(-count // len(TERMS))
    width = next(width for width in range(1, len(MODULES) + 1) if width**3 >= groups)
    paths = itertools.product(MODULES[:width], OBJECTS[:width], ASPECTS[:width], TERMS)
    return ["/".join(path) for path in itertools.islice(paths, count)]


def make_texts(urls, language):
    chance = random.Random(language)
    words = WORDS.get(language, WORDS["de_DE"]).split()
    return {url: " ".join(chance.choices(words, k=chance.randint(1, 9))) for url in urls}


def translate(text, language):
    """A text of as many characters as another one, in words of its own."""
    if language == "en_US":
        return text
    return " ".join(word if "%" in word else word[::-1] for word in text.split())


def make_document(texts, language):
    content = {}
    for url, text in texts.items():
        *groups, term = url.split("/")
        nodes = content
        for key in groups:
            nodes = nodes.setdefault(key, {}).setdefault("childs", {})
        nodes[term] = {"text": text, "comment": f"Shown to the user of the device in {groups[0]}."}
    return {"Header": {"language": language, "subLanguage": language[-2:]}, "Content": content}


def write_language(folder, language, source, texts):
    folder.mkdir(parents=True, exist_ok=True)
    document = make_document(texts, source)
    stored = json.dumps(document, indent=4, sort_keys=True, ensure_ascii=False) + "\n"
    (folder / f"{language}.json").write_text(stored, encoding="utf-8")


def is_first_of_group(url):
    return url.endswith("/" + TERMS[0])


def compile_texts(command, source, content):
    source.write_text(content, encoding="utf-8")
    subprocess.run([*command, source], check=True, stdout=subprocess.DEVNULL)


def write_for_translator(folder, language, texts):
    messages = "\n".join(
        f"<message id={quoteattr(url)}><source></source><translation>{escape(text)}</translation></message>"
        for url, text in texts.items())
    source = folder / f"{language}.ts"
    compile_texts(["lrelease", "-silent", "-idbased", "-qm", source.with_suffix(".qm")], source,
                  f'<?xml version="1.0" encoding="utf-8"?>\n<!DOCTYPE TS>\n<TS version="2.1" language="{language}">'
                  f"\n<context><name></name>\n{messages}\n</context>\n</TS>\n")


def quoted(text):
    """A string as a .po file, and as the source of a resource bundle, wants it."""
    return json.dumps(text, ensure_ascii=False)


def write_for_gettext(folder, language, texts):
    header = 'msgid ""\nmsgstr "Content-Type: text/plain; charset=UTF-8\\n"\n'
    entries = "".join(f"\nmsgid {quoted(url)}\nmsgstr {quoted(text)}\n" for url, text in texts.items())
    catalogue = folder / language / "LC_MESSAGES" / "texts.mo"
    catalogue.parent.mkdir(parents=True, exist_ok=True)
    compile_texts(["msgfmt", f"--output-file={catalogue}"], folder / f"{language}.po", header + entries)


def write_for_icu(folder, language, texts):
    # From the last key to the first: genrb sorts by insertion, and takes minutes for the opposite order.
    entries = "".join(f"    {quoted(url)} {{ {quoted(texts[url])} }}\n" for url in sorted(texts, reverse=True))
    compile_texts(["genrb", "--quiet", "--encoding", "UTF-8", "--destdir", folder], folder / f"{language}.txt",
                  f"{language} {{\n{entries}}}\n")


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("folder", metavar="FOLDER", type=pathlib.Path)
    parser.add_argument("--texts", type=int, default=5000, help="texts of each language (default: %(default)s)")
    parser.add_argument("--languages", type=int, default=3, help="number of languages (default: %(default)s)")
    parser.add_argument("--copy-posix", action="store_true", help="the files of POSIX are copies of those of en_US")
    parser.add_argument("--peers", action="store_true", help="the texts for the peers too")
    parser.add_argument("--translations", action="store_true", help="the languages that say what en_US says, too")
    arguments = parser.parse_args()
    most = len(MODULES)**3 * len(TERMS)
    if not 1 <= arguments.texts <= most or arguments.languages < 1:
        parser.error(f"it takes at least one language, and 1 to {most} texts of each.")

    folder, peers = arguments.folder, arguments.folder / "peers"
    urls = make_urls(arguments.texts)
    for language in language_keys(arguments.languages):
        source = "en_US" if arguments.copy_posix and language == "POSIX" else language
        texts = make_texts(urls, source)
        firsts = {url: text for url, text in texts.items() if is_first_of_group(url)}
        write_language(folder / "languages", language, source, texts)
        write_language(folder / "languages" / "short", language, source, firsts)
        write_language(folder / "incomplete", language, source, firsts if language == "de_DE" else texts)
        if arguments.translations:
            translated = {url: translate(text, language) for url, text in make_texts(urls, "en_US").items()}
            write_language(folder / "translations", language, language, translated)
        if arguments.peers:
            peers.mkdir(exist_ok=True)
            for write in (write_for_translator, write_for_gettext, write_for_icu):
                write(peers, language, texts)
    lists = {"urls.txt": urls, "shown_in_full.txt": [url for url in urls if not is_first_of_group(url)]}
    for name, listed in lists.items():
        (folder / name).write_text("".join(url + "\n" for url in listed), encoding="utf-8")
    return 0


if __name__ == "__main__":
    sys.exit(main())
