"""vxlocfmt from Python beside what Python users run otherwise, on the same values in one process.

    PYTHONPATH=build-bench/python /usr/bin/python3 bench/bench_python.py [--short]

Format: day numbers (1900 to 2100) with NLDATE20. in de_DE from a NumPy array, beside Babel's
format_date (format "long", the same text) and pandas' Series.dt.strftime with a locale-free
pattern. Read: ANYDATE texts of three shapes beside pandas.to_datetime (which infers one format
and falls back to dateutil for the others). Rates are per CPU second of this process and per
second of wall time; with threads=2 the CPU rate is the cost and the wall rate the gain (when
a second core is free). Every timing is the best of its runs. The peers that take minutes on a
million values run on a slice, and their rate is per value. The goals compare single-thread CPU
rates; the wall-clock ratio with threads=2 is printed beside them.
"""
import argparse
import time

import numpy as np
import pandas as pd

import vxlocfmt

try:
    from babel.dates import format_date
except ImportError:
    format_date = None

GOAL_RATE = 5_000_000
GOAL_OVER_BABEL = 100


def timed(work, repeat=1):
    """The best (CPU seconds, wall seconds) of `repeat` runs of work(), and its last result."""
    best_cpu, best_wall, result = float("inf"), float("inf"), None
    for _ in range(repeat):
        cpu, wall = time.process_time(), time.perf_counter()
        result = work()
        best_cpu, best_wall = min(best_cpu, time.process_time() - cpu), min(best_wall, time.perf_counter() - wall)
    return (max(best_cpu, 1e-9), max(best_wall, 1e-9)), result


def row(name, count, seconds, same="-"):
    """Prints the row; gives (values per CPU second, values per wall second)."""
    cpu, wall = seconds
    print(f"  {name:58s} {count / cpu:14,.0f} {count / wall:14,.0f} {cpu / count * 1e9:10.1f}  {same}")
    return count / cpu, count / wall


HEADER = f"  {'who':58s} {'values/CPU s':>14s} {'values/s':>14s} {'CPU ns/value':>10s}"


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--short", action="store_true", help="seconds: proves that it runs; no goal judged")
    args = parser.parse_args()
    count = 20_000 if args.short else 1_000_000
    slow_count = 2_000 if args.short else 50_000

    rng = np.random.default_rng(19)
    days = rng.integers(-21915, 51134, count).astype(np.float64)  # 1900-01-01 to 2100-12-31
    dates = (days - 3653).astype("datetime64[D]")
    vxlocfmt.format(days[:10], "NLDATE20.", locale="de_DE")  # loads the library, warms this thread

    print(f"format: {count:,} day numbers, NLDATE20. de_DE ('22. Juli 2023')")
    print(HEADER + "  same text")
    ours_time, ours = timed(lambda: vxlocfmt.format(days, "NLDATE20.", locale="de_DE"), repeat=5)
    ours_rate, _ = row("vxlocfmt.format(ndarray) -> ndarray of str", count, ours_time)
    threads_time, threaded = timed(lambda: vxlocfmt.format(days, "NLDATE20.", locale="de_DE", threads=2), repeat=5)
    threads_cpu_rate, threads_wall_rate = row("vxlocfmt.format(ndarray, threads=2)", count, threads_time,
                                              "yes" if (threaded == ours).all() else "no")
    series = pd.Series(dates.astype("datetime64[ns]"))
    accessor_time, _ = timed(lambda: series.vx.format("NLDATE20.", locale="de_DE"))
    row("Series.vx.format (datetime64 Series -> Series of str)", count, accessor_time)
    babel_rate = None
    if format_date is not None:
        python_dates = [d.item() for d in dates[:slow_count]]
        babel_time, babel = timed(lambda: [format_date(d, format="long", locale="de_DE") for d in python_dates],
                                  repeat=3)
        same = "yes" if babel == [str(t).strip() for t in ours[:slow_count]] else "no"
        babel_rate, babel_wall_rate = row(f"babel.dates.format_date(format='long') ({slow_count:,})", slow_count,
                                          babel_time, same)
    else:
        print("  babel: skipped (python3-babel is not installed)")
    strftime_time, _ = timed(lambda: series.dt.strftime("%d.%m.%Y"))
    row("pandas Series.dt.strftime('%d.%m.%Y') (no locale)", count, strftime_time)

    shapes = [lambda d: str(d), lambda d: pd.Timestamp(d).strftime("%b %-d, %Y"),
              lambda d: pd.Timestamp(d).strftime("%m/%d/%Y")]
    texts = [shapes[i % 3](d) for i, d in enumerate(dates[:slow_count])]
    texts = (texts * (count // slow_count + 1))[:count]
    expected = np.tile(dates[:slow_count], count // slow_count + 1)[:count]
    print(f"read: {count:,} texts, ANYDATE, three shapes ('2023-07-22', 'Jul 22, 2023', '07/22/2023')")
    print(HEADER + "  same dates")
    read_time, read = timed(lambda: vxlocfmt.read(texts, "ANYDATE", as_datetime=True), repeat=2)
    row("vxlocfmt.read(list, as_datetime=True) -> datetime64", count, read_time,
        "yes" if (read.astype("datetime64[D]") == expected).all() else "no")
    threads_time, _ = timed(lambda: vxlocfmt.read(texts, "ANYDATE", as_datetime=True, threads=2), repeat=2)
    row("vxlocfmt.read(list, as_datetime=True, threads=2)", count, threads_time)
    pandas_time, parsed = timed(lambda: pd.to_datetime(pd.Series(texts[:slow_count])))
    row(f"pandas.to_datetime (dateutil on mixed shapes) ({slow_count:,})", slow_count, pandas_time,
        "yes" if (parsed.to_numpy().astype("datetime64[D]") == expected[:slow_count]).all() else "no")

    if args.short:
        print("  (short run: no goal judged)")
        return
    print(f"  goal: NLDATE from Python >= {GOAL_RATE:,} values per CPU second: "
          f"{'met' if ours_rate >= GOAL_RATE else 'MISSED'} ({ours_rate:,.0f})")
    if babel_rate:
        ratio = ours_rate / babel_rate
        print(f"  goal: >= {GOAL_OVER_BABEL}x Babel per CPU second, one thread: "
              f"{'met' if ratio >= GOAL_OVER_BABEL else 'MISSED'} ({ratio:,.0f}x)")
        print(f"  not a goal: threads=2 beside Babel, {threads_cpu_rate / babel_rate:,.0f}x per CPU second, "
              f"{threads_wall_rate / babel_wall_rate:,.0f}x per wall second (two cores when both are free)")


if __name__ == "__main__":
    main()
