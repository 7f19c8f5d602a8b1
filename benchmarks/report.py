#!/usr/bin/python3
"""Prints what scripts/benchmark measured as tables in Markdown: the ratios that have a goal, and what else there is.

Every figure is the median of its repetitions; what one thread does is measured in processor time. A ratio counts as it
is shown, with two decimals: the next one is noise.
"""

import argparse
import json
import pathlib
import statistics
import sys

PEERS = {"QTranslator": "`QTranslator`", "dgettext": "`dgettext`", "ICU": "ICU"}
SECONDS = {"ns": 1e-9, "us": 1e-6, "ms": 1e-3, "s": 1.0}


def read_medians(path):
    """Seconds by name of the benchmark: of one look-up where look-ups are counted, else of one iteration."""
    def seconds(run):
        if "items_per_second" in run:
            return 1 / run["items_per_second"]
        return run["real_time" if run["run_name"].endswith(("manual_time", "real_time")) else "cpu_time"] * SECONDS[run["time_unit"]]

    return {run["run_name"]: seconds(run)
            for run in json.loads(path.read_text())["benchmarks"] if run.get("aggregate_name") == "median"}


def read_memory(path):
    """The median of each figure, in bytes, over some runs, one a line."""
    runs = [json.loads(line) for line in path.read_text().splitlines()]
    return {name: statistics.median(run[name] for run in runs) for name in runs[0]}


def read_counter(path, name):
    """The median of what the only benchmark of a file counted."""
    return next(run[name] for run in json.loads(path.read_text())["benchmarks"]
                if run.get("aggregate_name") == "median")


def read_circumstances(path):
    """On what and with what the figures were measured, and how much else the machine had to do."""
    context = json.loads(path.read_text())["context"]
    models = [line.split(":", 1)[1].strip() for line in pathlib.Path("/proc/cpuinfo").read_text().splitlines()
              if line.startswith("model name")]
    return (f"{models[0] if models else 'unknown processor'}, {context['num_cpus']} cores; {context['compiler']}, "
            f"Release; Qt {context['Qt']}; load average {context['load_avg'][0]:.1f} at the start.")


def show_time(seconds):
    unit = next((unit for unit in SECONDS if seconds < 1000 * SECONDS[unit]), "s")
    return f"{seconds / SECONDS[unit]:.3g} {unit}"


def show_rate(rate):
    return f"{rate / 1e6:.1f} million"


def show_size(size):
    return f"{size / 1e6:.1f} MB" if size >= 1e6 else f"{size / 1e3:.0f} KB"


# Bytes of the stripped library and reference platform before they were made smaller, by gcc 12 for x86-64.
SIZE_BEFORE = 298_720


def goals(results, sizes, checks):
    """What is measured, against what, and how much of that it may be at most."""
    look_ups, loading, device, editing, translation, messages, memory, different, copied = (
        results[name] for name in ("look_ups", "loading", "device", "editing", "translation", "messages", "memory",
                                   "six_different", "six_copied"))
    direct = look_ups["getText"]
    return [
        ("`getText` against `QTranslator::translate`", show_time, direct, look_ups["QTranslator"], 0.6),
        ("`getText` against `dgettext`", show_time, direct, look_ups["dgettext"], 0.4),
        ("`getText` against `ures_getStringByKey` of ICU", show_time, direct, look_ups["ICU"], 0.5),
        ("`getText` against a `QMap` of languages, each a `QHash`, behind a recursive `QMutex`", show_time,
         direct, look_ups["QHash"], 1.0),
        ("A text of a fallback language, against a direct one", show_time, look_ups["getText/fallback"], direct, 1.6),
        ("`getShortText` that falls to the full text, against a direct text", show_time,
         look_ups["getShortText/full"], direct, 2.0),
        ("A text that no language has, against the plain walk through three documents", show_time,
         look_ups["getText/missing"], look_ups["walk/missing"], 1.0),
        ("Loading a folder, against `QJsonDocument::fromJson` of the same bytes", show_time,
         loading["load"], loading["fromJson"], 1.05),
        ("`reloadLanguage()` of 60 unchanged files, against the first load", show_time,
         device["reload"], device["load"], 0.01),
        ("A look-up beside such reloads, slower than 99 of 100, against `stat` of all the files", show_time,
         device["lookUpBesideReloads/iterations:5/manual_time"], device["stat"], 3.0),
        ("Start with six languages, POSIX a copy of en_US, against six different ones", show_time,
         copied["seconds"], different["seconds"], 0.87),
        ("Private memory of these, against six different ones", show_size,
         copied["private"], different["private"], 0.87),
        ("Writing one text among 10,000 siblings, against one among 100", show_time,
         editing["writesOneText/10000"], editing["writesOneText/100"], 3.0),
        ("Translating an object of a document of 100,000, against its bare look-ups and inserts", show_time,
         translation["translatesDocument"], translation["bareLookUpsAndInserts"], 1.5),
        ("Memory after every text of a language was looked up, against after loading", show_size,
         memory["lookedUp"], memory["loaded"], 1.3),
        ("A remembered message with one number, a plural, against `icu::MessageFormat::format` alone", show_time,
         messages["getMessage/plural"], messages["icuAlone/plural"], 2.0),
        ("Checking 150 languages of 1,000 texts, against loading them", show_time,
         results["checks"]["check/real_time"], results["checks"]["load/real_time"], 3.0),
        ("Peak memory of that, against the size of the files", show_size, checks["peak"], checks["files"], 4.0),
        ("Library and reference platform, stripped, against what they were", show_size, sizes, SIZE_BEFORE, 0.87),
    ]


def beside(look_ups):
    """What is done in several threads, by the library and by the peer behind as plain a lock."""
    rows = [(f"Translating, {threads} thread{'s' if threads > 1 else ''} at once: time for a text of any of them",
             f"translating/{threads}/manual_time") for threads in (1, 2, 4)]
    rows += [("A screen of 200 texts, beside a thread that looks up all the time",
              "screen/iterations:100/manual_time"),
             ("A reload that finds nothing changed, beside two such threads", "reload/iterations:100/manual_time")]
    return [(figure, show_time, look_ups["getText/" + name], look_ups["QHash/" + name], 1.1) for figure, name in rows]


def others(results):
    """Figures that have no goal."""
    def ratio(one, other, show=show_time):
        return f"{show(one)}, {one / other:.2f} of {show(other)}"

    look_ups, listing, start, device, messages, memory = (
        results[name] for name in ("look_ups", "listing", "start", "device", "messages", "memory"))
    peers = [(f"Opening one language of 5,000 texts for {name}, until the first text",
              f"{show_time(results[peer]['seconds'])}, {show_size(results[peer]['private'])} of private memory")
             for peer, name in PEERS.items()]
    return [
        ("The first look-up of a text, against the plain walk to it", ratio(look_ups["getText/first"], look_ups["walk"])),
        ("A text that no language has, when there are too many of them to remember, against the plain walk",
         ratio(look_ups["getText/many_missing"], look_ups["walk/many_missing"])),
        ("`getText` in three languages in turn, against such a `QMap`",
         ratio(look_ups["getText/languages"], look_ups["QHash/languages"])),
        ("`getAvailableUrls` on 50,000 texts", show_time(listing["getAvailableUrls"])),
        ("The start of a text manager over 150 languages of 1,000 texts", show_time(start["load"])),
        ("Its reload when no file has changed", show_time(start["reload"])),
        ("A remembered message with one number and no plural, against `icu::MessageFormat::format` alone",
         ratio(messages["getMessage/plain"], messages["icuAlone/plain"])),
        ("A message that is not remembered: what ICU takes to compile it and to format it once",
         show_time(messages["icuCompiles"])),
        ("Peak memory of loading, against the size of the files",
         f"{(memory['peak'] - memory['before']) / memory['files']:.2f} of {show_size(memory['files'])}"),
        ("The start of a text manager over 30 languages of 5,000 texts", show_time(device["load"])),
        *peers,
    ]


def replace_figures(document, report):
    before, heading, after = document.read_text(encoding="utf-8").partition("## Figures\n")
    next_heading = after.index("\n## ")
    document.write_text(f"{before}{heading}\n{report}{after[next_heading:]}", encoding="utf-8")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("folder", metavar="FOLDER", type=pathlib.Path, help="the results")
    parser.add_argument("--document", type=pathlib.Path, help="a page whose chapter 'Figures' is replaced")
    parser.add_argument("--check", action="store_true", help="exit status 1 when a goal is missed")
    arguments = parser.parse_args()
    results = {path.stem: read_medians(path) for path in arguments.folder.glob("*.json")}
    results |= {path.stem: read_memory(path) for path in arguments.folder.glob("*.jsonl")}
    size = int((arguments.folder / "stripped_size.txt").read_text())

    checks = {name: read_counter(arguments.folder / "checks_alone.json", name) for name in ("peak", "files")}
    lines = [read_circumstances(arguments.folder / "look_ups.json")]
    missed = 0
    for heading, rows in (("Figure", goals(results, size, checks)), ("Beside other threads", beside(results["look_ups"]))):
        lines += ["", f"| {heading} | Measured | Against | Ratio | At most | Goal |", "|---|---|---|---|---|---|"]
        for figure, show, measured, against, most in rows:
            ratio = round(measured / against, 3 if most < 0.1 else 2)
            is_missed = ratio > most
            missed += is_missed
            lines.append(f"| {figure} | {show(measured)} | {show(against)} | {ratio} | {most} "
                         f"| {'**missed**' if is_missed else 'met'} |")
    lines += ["", "| Other figures | Measured |", "|---|---|"]
    lines += [f"| {figure} | {measured} |" for figure, measured in others(results)]
    report = "\n".join(lines) + "\n"
    print(report, end="")
    if arguments.document:
        replace_figures(arguments.document, report)
    return 1 if missed and arguments.check else 0


if __name__ == "__main__":
    sys.exit(main())
