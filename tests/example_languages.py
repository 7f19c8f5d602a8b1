#!/usr/bin/python3
"""Checks the example languages: each file against the schema, each text against the one in en_US.

Usage: example_languages.py SCHEMA LANGUAGE_FOLDER
"""

import json
import pathlib
import sys

import jsonschema


def texts(nodes, prefix=""):
    """The text and comment of every node by its URL."""
    for key, node in nodes.items():
        if "text" in node:
            yield prefix + key, (node["text"], node["comment"])
        yield from texts(node.get("childs", {}), prefix + key + "/")


def check(path, document, reference):
    """What is wrong with one language, given the texts of en_US and POSIX."""
    if document["Header"]["language"] != path.stem:
        yield f"header names {document['Header']['language']}"
    for url, (text, comment) in texts(document["Content"]):
        if comment != reference.get(url, ("", None))[1]:
            yield f"{url}: neither en_US nor POSIX has it with this comment"
        if text != text.strip():
            yield f"{url}: blanks around the text"


def main(schema_path, folder):
    schema = json.loads(pathlib.Path(schema_path).read_text(encoding="utf-8"))
    faults = []
    for subfolder in (pathlib.Path(folder), pathlib.Path(folder, "short")):
        documents = {}
        for path in sorted(subfolder.glob("*.json")):
            content = path.read_text(encoding="utf-8")
            documents[path] = json.loads(content)
            jsonschema.validate(documents[path], schema)
            stored = json.dumps(documents[path], indent=4, sort_keys=True, ensure_ascii=False) + "\n"
            if content != stored:
                faults.append(f"{path}: not indented by 4 with sorted keys")
        reference = {}
        for language in ("POSIX", "en_US"):
            reference.update(texts(documents[subfolder / f"{language}.json"]["Content"]))
        for path, document in documents.items():
            faults += [f"{path}: {fault}" for fault in check(path, document, reference)]
        print(f"{subfolder}: {len(documents)} languages, {len(reference)} texts")
    for fault in faults:
        print(fault)
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
