#!/usr/bin/python3
"""Draws what scripts/benchmark --document measured, against the number of texts and against that of languages."""

import argparse
import pathlib
import sys

import matplotlib
from matplotlib import pyplot, ticker

from report import PEERS, read_medians, read_memory

# The library stands out; what it is measured against is told apart by colour and by mark.
LIBRARY = {"color": "#0b6e4f", "marker": "o", "linewidth": 2.5, "zorder": 3}
LOOK_UPS = {
    "dgettext": ("dgettext, to a QString", {"color": "#8c6d31", "marker": "s"}),
    "ICU": ("ures_getStringByKey of ICU, to a QString", {"color": "#7b4173", "marker": "^"}),
    "QTranslator": ("QTranslator::translate", {"color": "#3b6fb6", "marker": "D"}),
    "getText": ("getText", LIBRARY),
    "QHash": ("a QMap of QHash behind a recursive QMutex, the practical limit",
              {"color": "#777777", "marker": "x", "linestyle": "--"}),
}
LOADING = {
    "load": ("loading a folder of three languages", LIBRARY),
    "fromJson": ("QJsonDocument::fromJson of the same bytes", {"color": "#777777", "marker": "x", "linestyle": "--"}),
    "reload": ("reloadLanguage() of unchanged files", {"color": "#3b6fb6", "marker": "D"}),
}


def read_all(folder, kind):
    """The medians of each number of texts, in ascending order."""
    results = {int(path.stem.rsplit("_", 1)[1]): read_medians(path) for path in folder.glob(f"{kind}_*[0-9].json")}
    return dict(sorted(results.items()))


def draw(axes, results, lines, unit, title, of_what):
    for name, (label, style) in lines.items():
        axes.plot(list(results), [medians[name] / unit for medians in results.values()], label=label,
                  **{"linewidth": 1.5, "markersize": 5, **style})
    axes.set_title(title, loc="left", fontsize=11)
    axes.set_xlabel(of_what)
    axes.grid(axis="y", color="#dddddd")
    axes.spines[["top", "right"]].set_visible(False)
    axes.legend(frameon=False, fontsize=9, loc="upper left")


def draw_by_texts(folder):
    """What a look-up, and loading, costs against the number of texts."""
    figure, (look_ups, loading) = pyplot.subplots(1, 2, figsize=(11, 4.4), layout="constrained")
    of_what = "texts of a language"
    draw(look_ups, read_all(folder, "look_ups"), LOOK_UPS, 1e-9, "A look-up, in nanoseconds", of_what)
    look_ups.set_ylim(bottom=0)
    draw(loading, read_all(folder, "loading"), LOADING, 1e-3, "Loading, in milliseconds", of_what)
    loading.set_yscale("log")
    loading.yaxis.set_major_formatter(ticker.FuncFormatter(lambda value, _: f"{value:g}"))
    for axes in (look_ups, loading):
        axes.set_xscale("log")
        axes.xaxis.set_major_formatter(ticker.FuncFormatter(lambda count, _: f"{count:,.0f}"))
    return figure


def draw_by_languages(folder):
    """What a start costs against the number of languages; the peers open one, whatever their number."""
    files = {int(path.stem.rsplit("_", 1)[1]): path for path in folder.glob("languages_*.jsonl")}
    results = {count: {"library": read_memory(path)} for count, path in sorted(files.items())}
    for opened in results.values():
        opened |= {peer: read_memory(folder / f"{peer}.jsonl") for peer in PEERS}
    labels = {peer: (f"{name.strip('`')}, one compiled language", LOOK_UPS[peer][1]) for peer, name in PEERS.items()}
    labels["library"] = ("a text manager, all languages of the folder", LIBRARY)
    figure, (start, memory) = pyplot.subplots(1, 2, figsize=(11, 4.4), layout="constrained")
    for axes, figure_name, unit, title in ((start, "seconds", 1e-3, "Start, in milliseconds"),
                                           (memory, "private", 1e6, "Private memory, in MB")):
        values = {count: {name: each[figure_name] for name, each in opened.items()}
                  for count, opened in results.items()}
        draw(axes, values, labels, unit, title, "languages of 5,000 texts")
        axes.set_ylim(bottom=0)
    return figure


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("folder", metavar="FOLDER", type=pathlib.Path, help="the results")
    parser.add_argument("pictures", metavar="PICTURES", type=pathlib.Path, help="the folder of the SVG files to write")
    arguments = parser.parse_args()

    # The same figures give the same file; its text stays text.
    matplotlib.rcParams.update({"svg.hashsalt": "performance", "svg.fonttype": "none", "axes.axisbelow": True,
                                "font.sans-serif": ["DejaVu Sans", "Verdana", "sans-serif"]})
    for name, draw_figure in (("performance", draw_by_texts), ("languages", draw_by_languages)):
        draw_figure(arguments.folder).savefig(arguments.pictures / f"{name}.svg", metadata={"Date": None},
                                              facecolor="white")
    return 0


if __name__ == "__main__":
    sys.exit(main())
