#!/usr/bin/python3
"""Draws what scripts/benchmark --document measured: the cost of a look-up and of loading against the number of texts."""

import argparse
import pathlib
import sys

import matplotlib
from matplotlib import pyplot, ticker

from report import read_medians

# The library stands out; what it is measured against is told apart by colour and by mark.
LIBRARY = {"color": "#0b6e4f", "marker": "o", "linewidth": 2.5, "zorder": 3}
LOOK_UPS = {
    "dgettext": ("dgettext, to a QString", {"color": "#8c6d31", "marker": "s"}),
    "ICU": ("ures_getStringByKey of ICU, to a QString", {"color": "#7b4173", "marker": "^"}),
    "QTranslator": ("QTranslator::translate", {"color": "#3b6fb6", "marker": "D"}),
    "getText": ("getText", LIBRARY),
    "QHash": ("a QHash behind a recursive QMutex, the practical limit", {"color": "#777777", "marker": "x", "linestyle": "--"}),
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


def draw(axes, results, lines, unit, title):
    for name, (label, style) in lines.items():
        axes.plot(list(results), [medians[name] / unit for medians in results.values()], label=label,
                  **{"linewidth": 1.5, "markersize": 5, **style})
    axes.set_title(title, loc="left", fontsize=11)
    axes.set_xscale("log")
    axes.set_xlabel("texts of a language")
    axes.xaxis.set_major_formatter(ticker.FuncFormatter(lambda count, _: f"{count:,.0f}"))
    axes.grid(axis="y", color="#dddddd")
    axes.spines[["top", "right"]].set_visible(False)
    axes.legend(frameon=False, fontsize=9, loc="upper left")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("folder", metavar="FOLDER", type=pathlib.Path, help="the results")
    parser.add_argument("picture", metavar="PICTURE", help="the SVG file to write")
    arguments = parser.parse_args()

    # The same figures give the same file; its text stays text.
    matplotlib.rcParams.update({"svg.hashsalt": "performance", "svg.fonttype": "none", "axes.axisbelow": True,
                                "font.sans-serif": ["DejaVu Sans", "Verdana", "sans-serif"]})
    figure, (look_ups, loading) = pyplot.subplots(1, 2, figsize=(11, 4.4), layout="constrained")
    draw(look_ups, read_all(arguments.folder, "look_ups"), LOOK_UPS, 1e-9, "A look-up, in nanoseconds")
    look_ups.set_ylim(bottom=0)
    draw(loading, read_all(arguments.folder, "loading"), LOADING, 1e-3, "Loading, in milliseconds")
    loading.set_yscale("log")
    loading.yaxis.set_major_formatter(ticker.FuncFormatter(lambda value, _: f"{value:g}"))
    figure.savefig(arguments.picture, metadata={"Date": None}, facecolor="white")
    return 0


if __name__ == "__main__":
    sys.exit(main())
