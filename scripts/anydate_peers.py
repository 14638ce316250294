#!/usr/bin/python3
"""The ANYDATE driver beside dateutil and pandas.

1. Agreement: the date strings of pandas' own parsing tests (Debian's python3-pandas ships
   pandas/tests/tools/test_to_datetime.py and pandas/tests/tslibs/test_parsing.py; their string
   literals are read with ast, their code is not used) go through `vxlocfmt read ANYDATE --explain`
   and dateutil.parser.parse. Printed: how many each reads, and for those both read, how many give
   the same calendar date; the disagreements by the row that read the text.
2. Speed: the eight shapes of the peers' baseline, per value, all by CPU time: the driver alone
   (bench_anydate's BM_AnyDate_mix, run from beside the CLI when it was built), the CLI's bulk
   mode (process start, UTF-8 and number printing included, amortised over the lines),
   dateutil.parser.parse and pandas.to_datetime; each ratio is dateutil's time over ours.

    scripts/anydate_peers.py [build/bin/vxlocfmt]   (needs python3-dateutil and python3-pandas)
"""
import ast
import collections
import datetime
import json
import os
import resource
import subprocess
import sys
import time

cli = sys.argv[1] if len(sys.argv) > 1 else os.path.join(os.path.dirname(__file__), "..", "build", "bin", "vxlocfmt")
try:
    import dateutil.parser
    import pandas
except ImportError as error:
    sys.exit(f"needs python3-dateutil and python3-pandas: {error}")

TIME_ROWS = {6, 7, 11, 22, 23, 24, 25, 26, 32, 33, 48}  # ANYDATE rows of kind TME


def day_number(y, m, d):
    """Our day number of a civil date: Gregorian, but a year divisible by 4000 is no leap year."""
    leap = lambda y: (y % 4 == 0 and y % 100 != 0) or (y % 400 == 0 and y % 4000 != 0)
    days = [31, 29 if leap(y) else 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31]
    p = y - 1
    count = 365 * y + p // 4 - p // 100 + p // 400 - p // 4000 + sum(days[:m - 1]) + d
    return count - 715875
sources = [os.path.join(os.path.dirname(pandas.__file__), "tests", p)
           for p in ("tools/test_to_datetime.py", "tslibs/test_parsing.py")]


def test_strings():
    """String literals with a digit, 4 to 40 characters, one line: the tests' date texts."""
    seen = []
    for path in sources:
        for node in ast.walk(ast.parse(open(path, encoding="utf-8").read())):
            if isinstance(node, ast.Constant) and isinstance(node.value, str):
                s = node.value
                if 4 <= len(s) <= 40 and any(c.isdigit() for c in s) and "\n" not in s and "\t" not in s \
                        and "%" not in s and s not in seen:
                    seen.append(s)
    return seen


def ours(texts):
    out = subprocess.run([cli, "read", "ANYDATE", "--explain"], input="\n".join(texts) + "\n",
                         capture_output=True, text=True).stdout.splitlines()
    answers = []
    for line in out:
        parts = line.split("\t")
        if parts[0] == ".":
            answers.append((None, None))
        else:  # the day number of the datetime, floored
            answers.append((int(float(parts[0]) // 86400), int(parts[1]), parts[2]))
    return answers


def theirs(text):
    """dateutil's day number, in UTC when the text has a zone (ours are brought to UTC too)."""
    try:
        value = dateutil.parser.parse(text)
    except (ValueError, OverflowError, TypeError):
        return None
    if value.tzinfo is not None:
        try:
            value = value.astimezone(datetime.timezone.utc)
        except (ValueError, OverflowError):
            return None
    return day_number(value.year, value.month, value.day)


def agreement():
    texts = test_strings()
    mine = ours(texts)
    both = same = only_ours = only_theirs = times = 0
    differ = collections.defaultdict(list)
    theirs_alone, ours_alone = [], []
    for text, answer in zip(texts, mine):
        value, row = answer[0], answer[1:] if answer[0] is not None else None
        other = theirs(text)
        if row and row[0] in TIME_ROWS:  # a time of day: dateutil puts it on today's date
            times += 1
            continue
        if value is None and other is None:
            continue
        if value is None:
            only_theirs += 1
            theirs_alone.append(text)
            continue
        if other is None:
            only_ours += 1
            ours_alone.append(f"{text} (row {row[0]})")
            continue
        both += 1
        if value == other:
            same += 1
        else:
            differ[f"{row[0]} {row[1]}"].append(f"{text!r}: day {value} vs {other}")
    read = sum(1 for a in mine if a[0] is not None)
    print(f"pandas test strings: {len(texts)}; ANYDATE reads {read} ({times} of them as times of day)")
    print(f"dates both read: {both}; same calendar date {same}; only ANYDATE {only_ours}; only dateutil {only_theirs}")
    for row, cases in sorted(differ.items(), key=lambda kv: -len(kv[1])):
        print(f"  row {row}: {len(cases)} differ, e.g. " + "; ".join(cases[:3]))
    print("  only ANYDATE, e.g.: " + " | ".join(ours_alone[:12]))
    print("  only dateutil, e.g.: " + " | ".join(theirs_alone[:16]))


SHAPES = ["2020-03-04", "2020-03-04T10:30:00", "01JAN2020", "Mar 4, 2020", "4 March 2020", "03/04/2020",
          "20200304", "10:30 PM"]


def per_value(fn, texts):
    start = time.process_time()
    for t in texts:
        fn(t)
    return (time.process_time() - start) / len(texts) * 1e9


def children_cpu():
    usage = resource.getrusage(resource.RUSAGE_CHILDREN)
    return usage.ru_utime + usage.ru_stime


def driver_ns():
    """BM_AnyDate_mix's ns per value (the thread's CPU clock), or None without bench_anydate."""
    bench = os.path.join(os.path.dirname(os.path.abspath(cli)), "bench_anydate")
    if not os.access(bench, os.X_OK):
        return None
    out = subprocess.run([bench, "--benchmark_filter=BM_AnyDate_mix", "--benchmark_format=json"],
                         capture_output=True, text=True).stdout
    return json.loads(out)["benchmarks"][0]["ns_per_value"]


def speed():
    lines = SHAPES * 250000
    data = "\n".join(lines) + "\n"
    start = children_cpu()
    out = subprocess.run([cli, "read", "ANYDATE"], input=data, capture_output=True, text=True)
    cli_ns = (children_cpu() - start) / len(lines) * 1e9
    assert out.stdout.count("\n") == len(lines) and "\n.\n" not in out.stdout
    sample = SHAPES * 1000
    dateutil_ns = per_value(dateutil.parser.parse, sample)
    pandas_ns = per_value(pandas.to_datetime, SHAPES * 200)
    alone = driver_ns()
    print(f"eight shapes, ns per value (CPU time): dateutil.parser.parse {dateutil_ns:.0f}; "
          f"pandas.to_datetime {pandas_ns:.0f}")
    if alone:
        print(f"  the driver (bench_anydate BM_AnyDate_mix) {alone:.0f}: dateutil / driver {dateutil_ns / alone:.0f}x, "
              f"pandas / driver {pandas_ns / alone:.0f}x")
    print(f"  vxlocfmt read ANYDATE (bulk, {len(lines)} lines, process included) {cli_ns:.0f}: "
          f"dateutil / CLI {dateutil_ns / cli_ns:.0f}x, pandas / CLI {pandas_ns / cli_ns:.0f}x")


if __name__ == "__main__":
    agreement()
    speed()
