#!/usr/bin/python3
"""Checks that the SPDX document has what SPDX 2.3 requires, and names what the built files truly link.

Usage: spdx_document.py DOCUMENT FILE...
"""

import json
import pathlib
import re
import subprocess
import sys

# What a file links by its soname, and what is compiled into it.
LINKED = {
    r"libQt[56](\w+)\.so.*": r"Qt-\1",
    r"libdbus-1\.so.*": "D-Bus",
    r"libicu\w+\.so.*": "ICU",
    r"libutf8proc\.so.*": "utf8proc",
    r"libstdc\+\+\.so.*": "libstdc-",
    r"libgcc_s\.so.*": "libgcc",
    r"(libc|libm|ld-linux.*)\.so.*": "C-library",
    r"(libTextManager\w+)\.so.*": r"\1",
}
COMPILED_IN = {
    "-libTextManagerLibrary6?$": ["xxHash"],
    "-textmanager$": ["RapidJSON", "xxHash"],
    "-device-simulator$": ["RapidJSON"],
}

document = json.loads(pathlib.Path(sys.argv[1]).read_text(encoding="utf-8"))
assert document["spdxVersion"] == "SPDX-2.3" and document["dataLicense"] == "CC0-1.0"
assert document["SPDXID"] == "SPDXRef-DOCUMENT" and document["name"]
assert re.fullmatch(r"[a-z]+:[^#\s]+", document["documentNamespace"])
assert re.fullmatch(r"\d{4}(-\d\d){2}T(\d\d:){2}\d\dZ", document["creationInfo"]["created"])
assert all(re.match("(Tool|Person|Organization): ", creator) for creator in document["creationInfo"]["creators"])

packages = {package["SPDXID"]: package for package in document["packages"]}
assert len(packages) == len(document["packages"]), "an id is given twice"
for name, package in packages.items():
    assert re.fullmatch(r"SPDXRef-[A-Za-z0-9.-]+", name), name
    for field in ("name", "versionInfo", "downloadLocation", "licenseConcluded", "licenseDeclared", "copyrightText"):
        assert package[field], f"{name} has no {field}"
    assert package["filesAnalyzed"] is False
    assert not re.search("^(Qt|xxHash|RapidJSON|ICU|D-Bus)", package["name"]) or re.match(r"\d", package["versionInfo"])


def own_id(path):
    return "SPDXRef-" + re.sub(r"\.so.*", "", pathlib.Path(path).name)


related = set()
for relationship in document["relationships"]:
    ends = relationship["spdxElementId"], relationship["relatedSpdxElement"]
    assert set(ends) <= packages.keys() | {"SPDXRef-DOCUMENT"}, f"{ends}: no such package"
    related.add((ends[0], relationship["relationshipType"], ends[1]))
for file in sys.argv[2:]:
    own = own_id(file)
    assert ("SPDXRef-DOCUMENT", "DESCRIBES", own) in related, own
    dynamic = subprocess.run(["readelf", "-dW", file], capture_output=True, text=True, check=True).stdout
    for soname in re.findall(r"NEEDED.*\[(.*)\]", dynamic):
        matched = [re.sub(pattern, name, soname) for pattern, name in LINKED.items() if re.match(pattern, soname)]
        linked = (matched or [soname])[0]
        assert (own, "DEPENDS_ON", "SPDXRef-" + linked) in related, f"{own} links {soname}"
    for program, parts in COMPILED_IN.items():
        for part in parts if re.search(program, own) else []:
            assert (own, "CONTAINS", "SPDXRef-" + part) in related, f"{part} is compiled into {own}"
