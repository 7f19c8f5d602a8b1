#!/usr/bin/python3
"""Checks names of countries and languages in languages of many scripts, in which nothing is wrong but what is listed.

Usage: no_false_findings.py TEXTMANAGER
"""

import collections
import json
import pathlib
import subprocess
import sys
import tempfile

SCRIPT = pathlib.Path(__file__).with_name("iso_codes_folder.py")
# Names that lack the years of a period or end with a full stop for no reason, and names of languages that are those of
# countries in English.
KNOWN = {"data-differs", "end-punctuation", "inconsistent-text"}


def main(textmanager):
    with tempfile.TemporaryDirectory() as folder:
        subprocess.run([SCRIPT, folder, "--small"], check=True)
        command = [textmanager, "check", folder, "--ignore", "missing-text", "--format", "json"]
        report = json.loads(subprocess.run(command, capture_output=True, check=True).stdout)
    assert len(report["languages"]) > 30, report["languages"]
    found = collections.Counter((finding["id"], finding["language"]) for finding in report["findings"])
    print(found)
    assert {kind for kind, _ in found} <= KNOWN, found
    assert sum(found.values()) <= 12, found


if __name__ == "__main__":
    main(*sys.argv[1:])
