#!/usr/bin/python3
"""Holds what textmanager check --format sarif prints against the schema of SARIF 2.1.0.

Usage: findings_sarif.py TEXTMANAGER LANGUAGE_FOLDER
"""

import json
import pathlib
import subprocess
import sys

import jsonschema

SCHEMA = pathlib.Path(__file__).parent / "data/sarif-2.1.0.schema.json"


def run(textmanager, folder, form):
    command = [textmanager, "check", folder, "--short-folder", "short", "--format", form]
    return json.loads(subprocess.run(command, capture_output=True, check=False).stdout)


def main(textmanager, folder):
    log = run(textmanager, folder, "sarif")
    findings = run(textmanager, folder, "json")["findings"]
    schema = json.loads(SCHEMA.read_text(encoding="utf-8"))
    jsonschema.validate(log, schema, format_checker=jsonschema.FormatChecker())
    rules = log["runs"][0]["tool"]["driver"]["rules"]
    results = log["runs"][0]["results"]
    assert len(results) == len(findings) > 0
    for result, finding in zip(results, findings):
        assert rules[result["ruleIndex"]]["id"] == result["ruleId"] == finding["id"]
        location = result["locations"][0]["physicalLocation"]
        assert location["artifactLocation"]["uri"] == finding["file"]
        assert location.get("region", {}).get("startLine", 0) == finding["line"]
    for rule in rules:
        assert rule["shortDescription"]["text"] and rule["help"]["text"], rule


if __name__ == "__main__":
    main(*sys.argv[1:])
