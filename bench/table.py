#!/usr/bin/env python3
"""Makes the table of docs/performance.md from the lines of bench/run.py, and compares its ratios with another run's.

A ratio is the median, over the rounds, of library to bare; the noise is the same of the bare subject's second run to
its first, so a ratio within the noise of 1 says that nothing was measured.
"""
import argparse
import collections
import json
import re
import statistics
import sys

# What a row may cost at the most, as a ratio to the bare subject.
BOUNDS = [
    (r"command", r"p50_us|cpu_us", 1.02),
    (r"hlxctl get", r"ms", 1),
    (r"signal, .*", r"cpu_us", 1.02),
    (r"getter, .*", r"ns", 1.1),
    (r"fan-out, .*", r"ns", 1.1),
    (r"start(, with power client)?", r".*", 1.03),
]


def read(stream):
    """row -> metric -> subject -> values in the order of the rounds"""
    values = collections.defaultdict(lambda: collections.defaultdict(lambda: collections.defaultdict(list)))
    for line in stream:
        row, subject, metric, value = line.rstrip("\n").split("\t")
        values[row][metric][subject].append(float(value))
    return values


def bound(row, metric):
    return next((limit for rows, metrics, limit in BOUNDS if re.fullmatch(rows, row) and re.fullmatch(metrics, metric)),
                None)


def ratio(over, under):
    return statistics.median(a / b for a, b in zip(over, under)) if over and under else None


def number(value):
    return f"{value:.0f}" if value == round(value) or value >= 1000 else f"{value:.4g}"


def rows_of(values):
    for row, metrics in values.items():
        for metric, subjects in metrics.items():
            bare, again = subjects.get("bare", []), subjects.get("bare again", [])
            for subject, measured in subjects.items():
                if subject.startswith("bare"):
                    continue
                yield {"row": row, "subject": subject, "metric": metric, "value": statistics.median(measured),
                       "bare": statistics.median(bare) if bare else None, "ratio": ratio(measured, bare),
                       "noise": ratio(again, bare), "bound": bound(row, metric) if bare else None}


def markdown(rows):
    print("| row | of | bare | measured | ratio | noise | at most |")
    print("|---|---|---:|---:|---:|---:|---:|")
    for row in rows:
        name = row["row"] if row["subject"] == "library" else f"{row['row']}: `{row['subject']}`"
        cells = [f"{row[key]:.3f}" if row[key] else "" for key in ("ratio", "noise", "bound")]
        bare = number(row["bare"]) if row["bare"] else ""
        print(f"| {name} | {row['metric']} | {bare} | {number(row['value'])} | {' | '.join(cells)} |")


def check(rows, committed):
    """Says which ratios are beyond the committed ones and the noise of both runs."""
    known = {(row["row"], row["subject"], row["metric"]): row for row in committed}
    worse = []
    for row in rows:
        before = known.get((row["row"], row["subject"], row["metric"]))
        if row["ratio"] is None or before is None:
            continue
        noise = max(abs(1 - side["noise"]) for side in (row, before))
        if row["ratio"] > max(before["ratio"], row["bound"] or 0) * (1 + noise) + 0.01:
            worse.append(f"{row['row']}, {row['metric']}: {before['ratio']:.3f} before, {row['ratio']:.3f} now, "
                         f"noise {noise:.3f}")
    return worse


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("lines", type=argparse.FileType(), help="what bench/run.py printed; - for standard input")
    parser.add_argument("--json", action="store_true", help="print rows as JSON, as --check reads them")
    parser.add_argument("--check", type=argparse.FileType(), metavar="FILE", help="the rows to compare with")
    options = parser.parse_args()
    rows = list(rows_of(read(options.lines)))
    if options.check:
        worse = check(rows, json.load(options.check))
        print("\n".join(worse) or "no ratio is worse than the committed one, beyond the noise")
        sys.exit(1 if worse else 0)
    if options.json:
        print("[\n" + ",\n".join(json.dumps(row) for row in rows) + "\n]")
    else:
        markdown(rows)


if __name__ == "__main__":
    main()
