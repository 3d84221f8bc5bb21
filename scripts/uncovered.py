#!/usr/bin/env python3
"""uncovered.py EXPORT EXCEPTIONS

Lists the lines and branches of src/ that never run, except those in EXCEPTIONS. EXPORT is a file
that `llvm-cov export` wrote. An exception is a file and a part of a line, "file: part". It
covers the branches of that line, or that line and the uncovered lines directly after it.
An exception that is never used is reported, unless
"~" stands before it. The same branch in several instances of a template counts once.
"""
import collections
import json
import os
import sys


def read_exceptions(path):
    exceptions = {}
    with open(path, encoding="utf-8") as lines:
        for line in lines:
            if line.strip() and not line.startswith("#"):
                exceptions[tuple(line.strip().lstrip("~").split(": ", 1))] = line.startswith("~")
    return exceptions


def line_counts(file):
    """Returns {line: count} for the lines with code. A segment is a position where the count changes."""
    counts = collections.defaultdict(int)
    for start, following in zip(file["segments"], file["segments"][1:]):
        line, _, count, has_count, is_entry = start[:5]
        if has_count and is_entry:
            counts[line] = max(counts[line], count)
        if has_count:
            for inner in range(line + 1, following[0] + (following[1] > 1)):
                counts[inner] = max(counts[inner], count)
    return counts


def branch_counts(file):
    branches = collections.defaultdict(lambda: [0, 0])
    for line, column, end, end_column, true, false, *_ in file["branches"]:
        counts = branches[line, column, end, end_column]
        counts[0] += true
        counts[1] += false
    return branches


def main():
    with open(sys.argv[1], encoding="utf-8") as text:
        files = json.load(text)["data"][0]["files"]
    exceptions = read_exceptions(sys.argv[2])
    totals = collections.Counter()
    missing = []
    for file in files:
        name = os.path.relpath(file["filename"])
        if not name.startswith("src/"):
            continue
        with open(name, encoding="utf-8") as text:
            source = text.read().split("\n")

        def is_named(line):
            for exception in exceptions:
                if exception[0] == name and exception[1] in source[line - 1]:
                    exceptions[exception] = True
                    return True
            return False

        lines = line_counts(file)
        named = 0  # the last uncovered line that an exception covers
        for line in sorted(lines):
            totals["lines"] += 1
            if lines[line] > 0:
                continue
            if line == named + 1 or is_named(line):
                named = line
            else:
                missing.append(f"{name}:{line}: never runs: {source[line - 1].strip()}")
        for (line, *_), (true, false) in sorted(branch_counts(file).items()):
            totals["branches"] += 2
            # A branch of `if constexpr` has no counts.
            decided = true + false > 0 and lines[line] > 0
            if decided and (true == 0 or false == 0) and not is_named(line):
                missing.append(f"{name}:{line}: never {'true' if true == 0 else 'false'}: {source[line - 1].strip()}")
    missing += [f"unused exception: {': '.join(each)}" for each, used in exceptions.items() if not used]
    print("\n".join(missing + [f"{totals['lines']} lines and {totals['branches']} branches, "
                               f"{len(missing)} never run, {len(exceptions)} exceptions"]))
    return 1 if missing or not files else 0


if __name__ == "__main__":
    sys.exit(main())
