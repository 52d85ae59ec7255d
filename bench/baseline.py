#!/usr/bin/python3
"""Compares measured instruction counts and page faults with those on record.

usage: baseline.py RECORD MEASURED BEFORE REASON

RECORD is a JSON object with a reason and, for each command, its instructions and page faults. MEASURED has lines
"COMMAND INSTRUCTIONS FAULTS". BEFORE is an earlier RECORD and may be missing. With a REASON, RECORD is written instead of
compared. Prints each figure; the exit status is 1 if one has grown too much or RECORD has changed without a new reason.
"""

import json
import pathlib
import sys

MOST_GROWTH = {"instructions": 0.03, "pageFaults": 0.10}


def read_measured(path):
    """Returns the figures of each command by name."""
    measured = {}
    for line in pathlib.Path(path).read_text(encoding="utf-8").splitlines():
        command, instructions, faults = line.split()
        measured[command] = {"instructions": int(instructions), "pageFaults": int(faults)}
    return measured


def compare(recorded, measured):
    """Prints every figure beside the recorded one; returns whether all are within their bounds."""
    within = True
    for command, figures in measured.items():
        for name, figure in figures.items():
            before = recorded.get(command, {}).get(name)
            if before is None:
                print(f"{command}: {name} {figure:,}, not on record")
                within = False
                continue
            growth = figure / before - 1
            grown = growth > MOST_GROWTH[name]
            within = within and not grown
            verdict = f": more than {MOST_GROWTH[name]:.0%} above the record" if grown else ""
            print(f"{command}: {name} {figure:,}, on record {before:,} ({growth:+.1%}){verdict}")
    return within


def main():
    record_path, measured_path, before_path, reason = sys.argv[1:]
    measured = read_measured(measured_path)
    if reason:
        record = {"reason": reason, "commands": measured}
        pathlib.Path(record_path).write_text(json.dumps(record, indent=2) + "\n", encoding="utf-8")
    record = json.loads(pathlib.Path(record_path).read_text(encoding="utf-8"))
    within = compare(record["commands"], measured)
    if not within:
        print(f"{record_path}: make the commands cheaper again, or run script/baseline --write REASON")
    before = pathlib.Path(before_path)
    if before.exists():
        earlier = json.loads(before.read_text(encoding="utf-8"))
        if earlier["commands"] != record["commands"] and earlier["reason"] == record["reason"]:
            print(f"{record_path}: the figures have changed, but the reason has not")
            within = False
    return 0 if within else 1


if __name__ == "__main__":
    sys.exit(main())
