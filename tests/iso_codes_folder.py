#!/usr/bin/python3
"""Writes a language folder of what iso-codes calls countries and languages in 159 languages.

Usage: iso_codes_folder.py FOLDER [--small]
--small takes every tenth country and language of a few languages of all scripts.
"""

import gettext
import json
import pathlib
import sys

DATA = pathlib.Path("/usr/share/iso-codes/json")
LOCALES = pathlib.Path("/usr/share/locale")
FEW = "am ar be bg bn de el eo fa fr he hi hy id ja ka km kn ko mr my ne pa ru ta te th tr uk ur vi zh_CN".split()


def read_names():
    """The English name of each text by the URL of the text, and where its translation is found."""
    for domain, key, member in (("iso_3166-1", "3166-1", "alpha_2"), ("iso_639-2", "639-2", "alpha_3")):
        for entry in json.loads((DATA / f"iso_{key}.json").read_text(encoding="utf-8"))[key]:
            for field in ("name", "official_name", "common_name"):
                if field in entry:
                    yield domain, f"{domain[4:]}/{entry[member]}/{field}", entry[field]


def make_document(texts):
    content = {}
    for url, text in texts.items():
        group, entry, field = url.split("/")
        nodes = content.setdefault(group, {"childs": {}})["childs"].setdefault(entry, {"childs": {}})["childs"]
        nodes[field] = {"text": text, "comment": "A name, as iso-codes has it."}
    return {"Header": {"language": "", "subLanguage": ""}, "Content": content}


def translate(names, locale):
    """The names that are translated; those of gettext that stay the same may be missing."""
    catalogs = {}
    for domain in ("iso_3166-1", "iso_639-2"):
        catalogs[domain] = gettext.translation(domain, LOCALES, [locale], fallback=True)
    for domain, url, name in names:
        text = catalogs[domain].gettext(name)
        if text != name:
            yield url, text


def main(folder, is_small):
    folder = pathlib.Path(folder)
    folder.mkdir(parents=True, exist_ok=True)
    names = list(read_names())[:: 10 if is_small else 1]
    documents = {"en_US": {url: name for _, url, name in names}}
    locales = sorted(path.parts[-3] for path in LOCALES.glob("*/LC_MESSAGES/iso_3166-1.mo"))
    for locale in [locale for locale in locales if not is_small or locale in FEW]:
        documents[locale] = dict(translate(names, locale))
    for language, texts in documents.items():
        stored = json.dumps(make_document(texts), ensure_ascii=False, indent=4)
        (folder / f"{language}.json").write_text(stored, encoding="utf-8")
    print(f"{len(documents)} languages, {len(names)} texts")


if __name__ == "__main__":
    main(sys.argv[1], "--small" in sys.argv[2:])
