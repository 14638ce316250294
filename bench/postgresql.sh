#!/usr/bin/env bash
# The extension inside PostgreSQL beside the server's own functions doing the same job, one
# backend, no parallel workers, no JIT, best of three runs:
#   vx_format(d, 'NLDATE20.', 'de_DE')  beside  to_char(d, 'DD. TMMonth YYYY') with lc_time de_DE
#   vx_read(t, 'ANYDATE')               beside  t::timestamp, on ISO texts (and the template
#                                               name of the form, E8601DT)
# Each query is `SELECT count(f(x)) FROM table`; a `count(x)` over the same table is the scan's
# own cost, taken off to give the function's cost per row ("net").
#   bench/postgresql.sh BUILD_DIR            one million rows (scripts/bench.sh)
#   bench/postgresql.sh BUILD_DIR --short    20000 rows, one run, no goal judged
# Exits 77 when no server can be started here (see postgresql/tests/server.sh).
set -euo pipefail
build=$(cd "$1" && pwd)
short=0
[ "${2:-}" = "--short" ] && short=1
rows=1000000 runs=3
((short)) && rows=20000 runs=1
# shellcheck source-path=SCRIPTDIR source=../postgresql/tests/server.sh
source "$(dirname "$0")/../postgresql/tests/server.sh"

# lc_time needs the system's de_DE.UTF-8; without it, one compiled for the server alone.
if ! locale -a 2>/dev/null | grep -qix 'de_DE.utf-\?8'; then
  export LOCPATH=$build/postgresql/locales
  if [ ! -f "$LOCPATH/de_DE.UTF-8/LC_TIME" ]; then
    mkdir -p "$LOCPATH"
    localedef -i de_DE -f UTF-8 "$LOCPATH/de_DE.UTF-8" >/dev/null 2>&1 || true
  fi
  [ -f "$LOCPATH/de_DE.UTF-8/LC_TIME" ] || vxpg_skip "no de_DE.UTF-8 for lc_time (install the 'locales' package)"
fi
vxpg_start "$build"

sql() { "$vxpg_bin/psql" -X -q -A -t -v ON_ERROR_STOP=1 -d postgres "$@"; }
sql -c "CREATE EXTENSION vxlocfmt" \
    -c "CREATE TABLE days AS SELECT date '1960-01-01' + (i * 7) % 40000 AS d,
               to_char(timestamp '1960-01-01' + i * interval '9973 seconds', 'YYYY-MM-DD\"T\"HH24:MI:SS') AS t
        FROM generate_series(1, $rows) AS i" \
    -c "VACUUM ANALYZE days"

# The same job: both sides write and read the same values (FM: to_char pads the day, NLDATE not).
check=$(sql -c "SET lc_time = 'de_DE.UTF-8'" -c "SELECT count(*) FILTER (WHERE vx_format(d, 'NLDATE20.', 'de_DE') <> to_char(d, 'FMDD. TMMonth YYYY'))
        || ' ' || count(*) FILTER (WHERE vx_read_timestamp(t, 'ANYDATE') IS DISTINCT FROM t::timestamp) FROM days")

# best_ms EXPRESSION: the best of $runs runs of count(EXPRESSION) over the table, in ms.
best_ms() {
  {
    echo "SET max_parallel_workers_per_gather = 0;"
    echo "SET jit = off;"
    echo "SET lc_time = 'de_DE.UTF-8';"
    echo "SELECT count($1) FROM days;"  # warm: the library loaded, the table in shared buffers
    printf '%s\n' '\timing on'
    for ((k = 0; k < runs; ++k)); do echo "SELECT count($1) FROM days;"; done
  } | sql | sed -n 's/^Time: \([0-9.]*\) ms.*/\1/p' | sort -g | head -n 1
}

scan=$(best_ms "d")
scan_text=$(best_ms "t")
line() {  # NAME MS SCAN_MS
  awk -v name="$1" -v ms="$2" -v scan="$3" -v n="$rows" 'BEGIN {
    printf "  %-40s %10.1f %10.0f %10.0f\n", name, ms, ms * 1e6 / n, (ms - scan) * 1e6 / n }'
}
ratio() {  # PEER_MS OURS_MS SCAN_MS: peer net / ours net
  awk -v peer="$1" -v ours="$2" -v scan="$3" 'BEGIN { a = peer - scan; b = ours - scan; printf "%.2f", (b > 0 ? a / b : 0) }'
}

echo "PostgreSQL $("$vxpg_bin/postgres" --version | awk '{print $3}'), $rows rows, one backend, best of $runs"
printf '  %-40s %10s %10s %10s\n' "count(...) over the table" "ms" "ns/row" "net ns/row"
vx=$(best_ms "vx_format(d, 'NLDATE20.', 'de_DE')")
tc=$(best_ms "to_char(d, 'DD. TMMonth YYYY')")
line "d (the scan alone)" "$scan" "$scan"
line "vx_format(d, 'NLDATE20.', 'de_DE')" "$vx" "$scan"
line "to_char(d, 'DD. TMMonth YYYY')" "$tc" "$scan"
format_ratio=$(ratio "$tc" "$vx" "$scan")
echo "  to_char / vx_format (net): $format_ratio"
rd=$(best_ms "vx_read(t, 'ANYDATE')")
named=$(best_ms "vx_read(t, 'E8601DT')")
cast=$(best_ms "t::timestamp")
line "t (the scan alone)" "$scan_text" "$scan_text"
line "vx_read(t, 'ANYDATE')" "$rd" "$scan_text"
line "vx_read(t, 'E8601DT')" "$named" "$scan_text"
line "t::timestamp" "$cast" "$scan_text"
echo "  t::timestamp / vx_read ANYDATE (net): $(ratio "$cast" "$rd" "$scan_text"); / vx_read E8601DT: $(ratio "$cast" "$named" "$scan_text")"
read -r format_differs read_differs <<<"$check"
echo "  texts differing from to_char(d, 'FMDD. TMMonth YYYY'): $format_differs; values differing from t::timestamp: $read_differs"
if [ "$format_differs" != 0 ] || [ "$read_differs" != 0 ]; then
  echo "the two sides did not do the same job"
  exit 1
fi
if ((short)); then
  echo "  (short run: no goal judged)"
else
  awk -v r="$format_ratio" 'BEGIN { printf "  goal: vx_format no slower than to_char per row: %s\n", (r >= 1 ? "met" : "MISSED") }'
fi
