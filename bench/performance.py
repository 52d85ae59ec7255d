#!/usr/bin/python3
"""Writes the page about speed and its plot.

usage: performance.py ROWS TABLES RUNS PAGE PLOT

ROWS has a line for each figure with a target: name, figure, target, unit and "most" or "least", separated by tabs. TABLES is
text for the end of the page, in Markdown; RUNS is how many runs the figures are medians of. PLOT, an SVG picture, shows
how many times a figure reaches its target.
"""

import html
import math
import os
import pathlib
import platform
import sys
from dataclasses import dataclass

BAR, GAP, LEFT, WIDTH, TOP = 18, 8, 350, 420, 40
NARROWEST, WIDEST = 0.25, 16


@dataclass
class Row:
    name: str
    figure: float
    target: float
    unit: str
    bound: str

    @property
    def reached(self):
        """How many times the figure is as good as its target: 1 or more reaches it."""
        if self.bound == "most":
            return self.target / max(self.figure, 1e-9)
        return self.figure / self.target

    def text(self, number):
        digits = 3 if abs(number) < 0.1 else 2 if abs(number) < 10 else 1 if abs(number) < 100 else 0
        return f"{number:,.{digits}f} {self.unit}".rstrip()


def read_rows(path):
    rows = []
    for line in pathlib.Path(path).read_text(encoding="utf-8").splitlines():
        name, figure, target, unit, bound = line.split("\t")
        rows.append(Row(name, float(figure), float(target), unit, bound))
    return rows


def processor():
    for line in pathlib.Path("/proc/cpuinfo").read_text(encoding="utf-8").splitlines():
        if line.startswith("model name"):
            return line.split(":", 1)[1].strip()
    return platform.machine()


def table(rows):
    lines = ["| What | Measured | Target | |", "|---|---:|---:|---|"]
    for row in rows:
        verdict = "reached" if row.reached >= 1 else "**missed**"
        lines.append(f"| {row.name} | {row.text(row.figure)} | at {row.bound} {row.text(row.target)} | {verdict} |")
    return "\n".join(lines)


def place(times):
    """Returns the horizontal place of a multiple of the target; the scale is logarithmic."""
    within = min(max(times, NARROWEST), WIDEST)
    return LEFT + WIDTH * math.log(within / NARROWEST) / math.log(WIDEST / NARROWEST)


def plot(rows):
    height = TOP + len(rows) * (BAR + GAP) + 10
    parts = [
        f'<svg xmlns="http://www.w3.org/2000/svg" width="{LEFT + WIDTH + 70}" height="{height}" '
        'font-family="sans-serif" font-size="12">',
        '<rect width="100%" height="100%" fill="#ffffff"/>',
        f'<text x="{LEFT}" y="14" fill="#333333">How many times each figure reaches its target</text>',
    ]
    times = NARROWEST
    while times <= WIDEST:
        x = place(times)
        colour = "#333333" if times == 1 else "#dddddd"
        parts.append(f'<line x1="{x:.0f}" x2="{x:.0f}" y1="{TOP - 6}" y2="{height - 8}" stroke="{colour}"/>')
        parts.append(f'<text x="{x:.0f}" y="{TOP - 10}" text-anchor="middle" fill="#555555">{times:g}</text>')
        times *= 2
    for number, row in enumerate(rows):
        y = TOP + number * (BAR + GAP)
        begin, end = sorted((place(1), place(row.reached)))
        colour = "#2a7f3f" if row.reached >= 1 else "#b3402a"
        baseline = y + BAR - 5
        parts.append(f'<text x="{LEFT - 10}" y="{baseline}" text-anchor="end" fill="#222222">{html.escape(row.name)}</text>')
        parts.append(
            f'<rect x="{begin:.1f}" y="{y}" width="{max(end - begin, 1):.1f}" height="{BAR}" fill="{colour}"/>'
        )
        right = max(place(row.reached), place(1)) + 6
        parts.append(f'<text x="{right:.0f}" y="{baseline}" fill="#222222">{row.reached:.2g}</text>')
    return "\n".join([*parts, "</svg>", ""])


def main():
    rows_path, tables_path, runs, page_path, plot_path = sys.argv[1:]
    rows = read_rows(rows_path)
    tables = pathlib.Path(tables_path).read_text(encoding="utf-8").strip()
    plot_name = pathlib.Path(plot_path).name
    page = f"""# How fast it is

Written by `script/bench`, all figures from one run of it: medians of {runs}, programs that are compared taking turns.
Measured on {processor()} with {os.cpu_count()} processors, under Linux. CPU time is user plus system time. Ratios travel better to other
machines than seconds do.

![Each figure as a multiple of its target]({plot_name})

{table(rows)}

{tables}
"""
    pathlib.Path(page_path).write_text(page, encoding="utf-8")
    pathlib.Path(plot_path).write_text(plot(rows), encoding="utf-8")


if __name__ == "__main__":
    main()
