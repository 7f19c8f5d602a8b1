#!/usr/bin/python3
"""Measures what 'textmanager pack' saves a device, 'textmanager get' beside a process that only loads, and 'textmanager
translate' beside jq, and prints the ratios.

FOLDER is six languages of 5,000 texts, DEVICE thirty, as generate_texts.py writes them; what is made of FOLDER is put
beside it. What is translated are data of 100,000 objects with texts of examples/languages. jq is given a map from URL to text and sets the
text of every object that has a text id, however deep it stands ("walk"), as translate does; "map" is what it takes when
it is told that the document is a list of such objects.
"""

import argparse
import json
import pathlib
import random
import resource
import shutil
import statistics
import subprocess
import sys
import tempfile

RUNS = 5
OPENINGS = 15
EXAMPLES = pathlib.Path(__file__).resolve().parent.parent / "examples" / "languages"
JQ_PROGRAMS = {
    "walk": 'walk(if type == "object" and has("labelTextId") then .labelText = $texts[0][.labelTextId] else . end)',
    "map": "map(.labelText = $texts[0][.labelTextId])",
}


def open_folders(bench_memory, folders):
    """What opening each folder costs, in turns: medians of seconds and of private bytes."""
    runs = [[json.loads(subprocess.run([bench_memory, folder, "library"], check=True, capture_output=True).stdout)
             for folder in folders] for _ in range(OPENINGS)]
    return [{name: statistics.median(run[name] for run in of_folder) for name in ("seconds", "private")}
            for of_folder in zip(*runs)]


def disk_size(folder):
    return sum(path.stat().st_size for path in folder.rglob("*.json"))


def measure_pack(textmanager, bench_memory, folder):
    packed = folder.parent / (folder.name + "-packed")
    shutil.rmtree(packed, ignore_errors=True)
    packed.mkdir()
    for name in ("urls.txt", "shown_in_full.txt"):
        shutil.copy(folder / name, packed)
    subprocess.run([textmanager, "pack", folder / "languages", "-o", packed / "languages", "--short-folder", "short",
                    "--blank-comments"], check=True, stdout=subprocess.DEVNULL)
    before, after = open_folders(bench_memory, (folder, packed))
    for name, goal in (("seconds", 0.75), ("private", 0.85)):
        yield f"packed, {name}", after[name] / before[name], goal
    yield "packed, disk", disk_size(packed / "languages") / disk_size(folder / "languages"), 0.30


def run_measured(command, work):
    """Processor seconds, and peak bytes, of one run."""
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    out = subprocess.run(["/usr/bin/time", "-f", "%M", *command], cwd=work, check=True, stdout=subprocess.DEVNULL,
                         stderr=subprocess.PIPE, text=True).stderr
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    seconds = after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime
    return seconds, int(out.split()[-1]) * 1024


def measure_get(textmanager, bench_memory, device):
    url = (device / "urls.txt").read_text().split()[0]
    commands = ([textmanager, "get", device / "languages", url, "--short-folder", "short"],
                [bench_memory, device, "library"])
    runs = [[run_measured(command, device)[0] for command in commands] for _ in range(OPENINGS)]
    get, load = (statistics.median(of_command) for of_command in zip(*runs))
    yield "get of one text, processor time against a process that loads", get / load, 1.15


def measure_translation(textmanager):
    urls = subprocess.run([textmanager, "urls", EXAMPLES], check=True, capture_output=True, text=True).stdout.split()
    chance = random.Random(1)
    with tempfile.TemporaryDirectory() as name:
        work = pathlib.Path(name)
        data = [{"labelTextId": chance.choice(urls), "value": chance.randint(0, 9999), "unit": "m3/h", "readOnly": False,
                 "name": f"Data{number}"} for number in range(100_000)]
        (work / "data").write_text(json.dumps(data))
        answers = json.loads(subprocess.run([textmanager, "get", EXAMPLES, *urls, "--format", "json"],
                                            check=True, capture_output=True).stdout)["answers"]
        (work / "texts").write_text(json.dumps({answer["url"]: answer["text"] for answer in answers}))
        commands = {"translate": [textmanager, "translate", EXAMPLES, "data", "--keys", "labelTextId:labelText"]}
        commands |= {name: ["jq", "--slurpfile", "texts", "texts", program, "data"]
                     for name, program in JQ_PROGRAMS.items()}
        runs = {name: [] for name in commands}
        for _ in range(RUNS):
            for name, command in commands.items():
                runs[name].append(run_measured(command, work))
        seconds = {name: statistics.median(run[0] for run in measured) for name, measured in runs.items()}
        peak = statistics.median(run[1] for run in runs["translate"])
        yield "translate, peak memory against the input", peak / (work / "data").stat().st_size, 8
        yield "translate, time against jq (walk)", seconds["translate"] / seconds["walk"], 0.5
        yield "translate, time against jq (map)", seconds["translate"] / seconds["map"], None


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("textmanager", metavar="TEXTMANAGER", type=pathlib.Path)
    parser.add_argument("bench_memory", metavar="BENCH_MEMORY", type=pathlib.Path)
    parser.add_argument("folder", metavar="FOLDER", type=pathlib.Path)
    parser.add_argument("device", metavar="DEVICE", type=pathlib.Path)
    arguments = parser.parse_args()
    textmanager, bench_memory = arguments.textmanager.resolve(), arguments.bench_memory.resolve()
    print("| What | Ratio | At most |\n|---|---|---|")
    rows = [*measure_pack(textmanager, bench_memory, arguments.folder.resolve()),
            *measure_get(textmanager, bench_memory, arguments.device.resolve()),
            *measure_translation(textmanager)]
    for name, ratio, goal in rows:
        print(f"| {name} | {ratio:.2f} | {'' if goal is None else goal} |")
    return 1 if any(goal is not None and round(ratio, 2) > goal for _, ratio, goal in rows) else 0


if __name__ == "__main__":
    sys.exit(main())
