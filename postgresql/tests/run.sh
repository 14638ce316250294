#!/usr/bin/env bash
# The SQL tests: a throwaway server with the extension (server.sh), the CLI's answers to the
# cases of cli_cases.txt for the comparison test, then pg_regress over sql/ against expected/.
#   postgresql/tests/run.sh BUILD_DIR       (CTest: postgresql_regress; exit 77 is a skip)
set -euo pipefail
build=$(cd "$1" && pwd)
here=$(cd "$(dirname "$0")" && pwd)
# shellcheck source-path=SCRIPTDIR source=server.sh
source "$here/server.sh"
vxpg_start "$build"

# One row per input: kind, SPEC, locale, input, the CLI's output ("." for a missing value). A
# format line lists its values separated by blanks; a read line holds one text. The zone is the
# one the extension pins (UTC).
cli=$build/bin/vxlocfmt
export VXPG_CLI_DATA=$vxpg_dir/cli.tsv
escape() { sed 's/\\/\\\\/g'; }
while IFS=$'\t' read -r kind spec locale input; do
  case "$kind" in
    format)
      read -r -a values <<<"$input"
      paste <(printf '%s\n' "${values[@]}") <(TZ=UTC "$cli" format "$spec" -l "$locale" --encoding UTF-8 "${values[@]}" | escape) |
        sed "s/^/format\t$spec\t$locale\t/" ;;
    read)
      printf 'read\t%s\t%s\t%s\t%s\n' "$spec" "$locale" "$input" "$(TZ=UTC "$cli" read "$spec" -l "$locale" --encoding UTF-8 "$input" 2>/dev/null | escape || true)" ;;
    *) continue ;;
  esac
done < <(grep -v '^#' "$here/cli_cases.txt") >"$VXPG_CLI_DATA"
chmod 644 "$VXPG_CLI_DATA"

regress=$("$(command -v pg_config)" --pkglibdir)/pgxs/src/test/regress/pg_regress
[ -x "$regress" ] || vxpg_skip "no pg_regress (postgresql-server-dev-15)"
mkdir -p "$vxpg_dir/regress"
if ! "$regress" --bindir="$vxpg_bin" --inputdir="$here" --outputdir="$vxpg_dir/regress" \
    --host="$PGHOST" --port="$PGPORT" --user=postgres --dbname=vxlocfmt_regress \
    setup formats reading errors encoding cli_peer round_trip parallel; then
  cat "$vxpg_dir/regress/regression.diffs" 2>/dev/null || true
  tail -n 20 "$vxpg_dir/server.log"
  # Kept for a look (results/*.out are what expected/ would become).
  rm -rf "$build/postgresql/regress"
  cp -r "$vxpg_dir/regress" "$build/postgresql/regress"
  cp "$VXPG_CLI_DATA" "$build/postgresql/regress/"
  exit 1
fi
