#!/usr/bin/env bash
# Builds the benchmarks (build-bench/) and runs them all: every other bench/ program as it
# stands, then bench_formats (our formats beside ICU udat_format, strftime_l and a hand-written
# floor, one table with the ratios peer/us), then the Python module beside Babel and pandas
# (bench/bench_python.py), then the CLI's bulk mode on one million lines beside GNU date -f and a
# Python one-liner doing the same job, then the PostgreSQL extension beside the server's to_char
# and timestamp cast (bench/postgresql.sh).
#
#   scripts/bench.sh           the whole run (about three minutes on two cores)
#   scripts/bench.sh --short   seconds: proves that every benchmark builds and runs; no time is
#                              judged (the exit status only says whether something failed to run
#                              or a floor stopped writing our text)
set -euo pipefail
cd "$(dirname "$0")/.."

short=0
case "${1:-}" in
  --short) short=1 ;;
  "") ;;
  *) echo "usage: scripts/bench.sh [--short]" >&2; exit 2 ;;
esac

scripts/install-deps.sh
# localedef needs the locale sources of the 'locales' package for the strftime_l peer; without
# them that peer is skipped with a message.
if [ ! -f /usr/share/i18n/locales/de_DE ] && ! locale -a 2>/dev/null | grep -qix 'de_DE.utf-\?8'; then
  sudo_cmd=""
  [ "$(id -u)" -ne 0 ] && sudo_cmd="sudo"
  { $sudo_cmd apt-get install -y -qq locales >/dev/null 2>&1 && echo "installed: locales"; } ||
    echo "note: the 'locales' package could not be installed; strftime_l and date -f may be skipped"
fi

# RelWithDebInfo: the build type the project ships by default, with symbols for perf.
dir=build-bench
cmake -S . -B "$dir" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DVXLOCFMT_WERROR=ON -DVXLOCFMT_TESTS=OFF -DVXLOCFMT_BENCH=ON >/dev/null
cmake --build "$dir" -j2 >/dev/null
bin=$dir/bin

# ---- The other benchmark programs, as their authors wrote them ---------------------------------
for program in "$bin"/bench_*; do
  name=$(basename "$program")
  [ "$name" = bench_formats ] && continue
  [ -x "$program" ] || continue
  echo "== $name"
  if ((short)); then "$program" --benchmark_min_time=0.001 >/dev/null
  else "$program"
  fi
done

# ---- Our formats and their peers ---------------------------------------------------------------
echo "== bench_formats"
if ((short)); then
  "$bin"/bench_formats --short
else
  "$bin"/bench_formats --benchmark_out="$dir/bench_formats.json" --benchmark_out_format=json
fi

# ---- The Python module beside Babel and pandas ---------------------------------------------------
if [ -d "$dir/python/vxlocfmt" ]; then
  echo "== bench_python.py"
  short_flag=()
  ((short)) && short_flag=(--short)
  PYTHONPATH="$dir/python" /usr/bin/python3 bench/bench_python.py "${short_flag[@]}"
else
  echo "== bench_python.py: skipped (the Python module was not built: pybind11-dev or python3-dev missing)"
fi

# ---- The CLI's bulk mode -----------------------------------------------------------------------
lines=1000000
((short)) && lines=20000
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT
"$bin"/bench_formats --dump-days "$lines" >"$tmp/days.txt"
"$bin"/bench_formats --dump-iso "$lines" >"$tmp/iso.txt"

# date and Python need de_DE.UTF-8: the system's, else the one bench_formats compiled.
locale_env=(LC_ALL=de_DE.UTF-8)
if ! locale -a 2>/dev/null | grep -qix 'de_DE.utf-\?8'; then
  locale_env+=(LOCPATH="$PWD/$bin/bench-locales")
fi

# run NAME INPUT COMMAND...: one line of the table; the first run's output is the reference.
reference=""
run() {
  local name=$1 input=$2
  shift 2
  local times
  if ! times=$( { TIMEFORMAT='%R %U %S'; time env "${locale_env[@]}" "$@" <"$input" >"$tmp/out.txt" 2>/dev/null; } 2>&1 ); then
    printf '  %-44s %s\n' "$name" "did not run"
    return
  fi
  local same="-"
  if [ -z "$reference" ]; then reference=$tmp/reference.txt; cp "$tmp/out.txt" "$reference"
  elif cmp -s "$tmp/out.txt" "$reference"; then same="yes"
  else same="no"
  fi
  # shellcheck disable=SC2086
  set -- $times
  awk -v n="$lines" -v name="$name" -v real="$1" -v user="$2" -v sys="$3" -v same="$same" 'BEGIN {
    cpu = user + sys
    printf "  %-44s %12.0f %12.0f %8.3f  %s\n", name, n / (real > 0 ? real : 1e-9), n / (cpu > 0 ? cpu : 1e-9), real, same
  }'
  rate=$(awk -v n="$lines" -v user="$2" -v sys="$3" 'BEGIN { c = user + sys; printf "%.0f", n / (c > 0 ? c : 1e-9) }')
}

echo
echo "CLI bulk mode: $lines day numbers from stdin, de_DE, '22. Juli 2023' per line"
printf '  %-44s %12s %12s %8s  %s\n' "program" "values/s" "values/CPU s" "wall s" "same text"
run "vxlocfmt format NLDATE20. -l de_DE" "$tmp/days.txt" "$bin/vxlocfmt" format NLDATE20. -l de_DE
ours=$rate
if date --version 2>/dev/null | grep -q GNU; then
  run "date -u -f (ISO dates) +'%-d. %B %Y'" "$tmp/iso.txt" date -u -f - "+%-d. %B %Y"
else
  printf '  %-44s %s\n' "date -f" "skipped: not GNU date"
fi
if command -v python3 >/dev/null; then
  run "python3 (date.fromordinal, strftime)" "$tmp/days.txt" python3 -c 'import sys,locale,datetime as t; locale.setlocale(locale.LC_ALL,""); b=t.date(1960,1,1).toordinal(); f=t.date.fromordinal; sys.stdout.writelines(f(b+int(l)).strftime("%-d. %B %Y\n") for l in sys.stdin)'
else
  printf '  %-44s %s\n' "python3" "skipped: not installed"
fi
if ((short)); then
  echo "  (short run: no goal judged)"
else
  awk -v r="$ours" 'BEGIN { printf "  goal: NLDATE bulk >= 3000000 values per CPU second on one core: %s (%.0f)\n", (r >= 3000000 ? "met" : "MISSED"), r }'
fi

# ---- Inside PostgreSQL: the extension beside to_char and the timestamp cast --------------------
echo
echo "== PostgreSQL (bench/postgresql.sh)"
pg_status=0
if ((short)); then bench/postgresql.sh "$dir" --short || pg_status=$?
else bench/postgresql.sh "$dir" || pg_status=$?
fi
# 77: no server could be started here (not root, no PostgreSQL 15); said above.
[ "$pg_status" -eq 0 ] || [ "$pg_status" -eq 77 ] || exit "$pg_status"
