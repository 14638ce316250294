# Sourced: a throwaway PostgreSQL server with the extension installed, for the SQL tests and the
# benchmark. `vxpg_start BUILD_DIR` installs the build's postgresql component into the server's
# folders, makes a cluster in a fresh temporary folder, starts it on a Unix socket in that folder
# (no TCP) and stops it and removes the folder on exit. It exports PGHOST, PGPORT, PGUSER and
# sets vxpg_dir (the folder, writable by the server) and vxpg_bin (the server's programs).
# Exits 77 (skipped) when there is no server, or when the extension cannot be installed.
#   LOCPATH in the environment reaches the server (locales compiled by the caller).
# shellcheck shell=bash

vxpg_skip() {
  echo "skipped: $*"
  exit 77
}

# Runs a command as the server's user, from the server's folder.
vxpg_as_server() {
  if [ "$(id -u)" -eq 0 ]; then
    (cd "$vxpg_dir" && runuser -u "$vxpg_user" -- env ${LOCPATH:+LOCPATH="$LOCPATH"} "$@")
  else
    (cd "$vxpg_dir" && "$@")
  fi
}

vxpg_stop() {
  if [ -n "${vxpg_dir:-}" ] && [ -f "$vxpg_dir/data/postmaster.pid" ]; then
    vxpg_as_server "$vxpg_bin/pg_ctl" -D "$vxpg_dir/data" -m immediate -w stop >/dev/null 2>&1 || true
  fi
  [ -n "${vxpg_dir:-}" ] && rm -rf "$vxpg_dir"
  return 0
}

vxpg_start() {
  local build=$1
  local config
  config=$(command -v pg_config || echo /usr/lib/postgresql/15/bin/pg_config)
  [ -x "$config" ] || vxpg_skip "no pg_config (install postgresql-15 and postgresql-server-dev-15)"
  vxpg_bin=$("$config" --bindir)
  if [ ! -x "$vxpg_bin/initdb" ] || [ ! -x "$vxpg_bin/pg_ctl" ]; then vxpg_skip "no PostgreSQL server in $vxpg_bin"; fi
  [ -f "$build/postgresql/vxlocfmt.so" ] || vxpg_skip "the extension was not built (no server headers at configure time)"

  # The server's folders belong to root on Debian: only root (or their owner) can install.
  local extension_dir
  extension_dir="$("$config" --sharedir)/extension"
  if [ ! -w "$extension_dir" ] || [ ! -w "$("$config" --pkglibdir)" ]; then
    vxpg_skip "cannot write to $extension_dir (run as root)"
  fi
  cmake --install "$build" --component postgresql >/dev/null

  # initdb refuses root: the server runs as the Debian 'postgres' user, else one made for it.
  vxpg_user=$(id -un)
  if [ "$(id -u)" -eq 0 ]; then
    vxpg_user=postgres
    id -u "$vxpg_user" >/dev/null 2>&1 || { vxpg_user=vxpgtest; id -u "$vxpg_user" >/dev/null 2>&1 || useradd --system --no-create-home "$vxpg_user"; }
  fi

  vxpg_dir=$(mktemp -d /tmp/vxpg.XXXXXX)
  trap vxpg_stop EXIT
  chmod 755 "$vxpg_dir"
  chown "$vxpg_user" "$vxpg_dir"
  vxpg_as_server "$vxpg_bin/initdb" -D "$vxpg_dir/data" -U postgres -A trust -E UTF8 --locale=C.UTF-8 --no-sync \
    >"$vxpg_dir/initdb.log" 2>&1 || { cat "$vxpg_dir/initdb.log"; return 1; }
  export PGHOST=$vxpg_dir PGPORT=5432 PGUSER=postgres
  if ! vxpg_as_server "$vxpg_bin/pg_ctl" -D "$vxpg_dir/data" -l "$vxpg_dir/server.log" -w -t 60 \
      -o "-k $vxpg_dir -p $PGPORT -c listen_addresses= -c fsync=off" start >/dev/null; then
    cat "$vxpg_dir/server.log"
    return 1
  fi
}
