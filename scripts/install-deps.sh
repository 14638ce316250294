#!/usr/bin/env bash
# Installs the Debian packages the build and tests need, only those missing.
set -euo pipefail
packages=(cmake ninja-build g++ pkg-config libicu-dev libgtest-dev libgmock-dev libbenchmark-dev)
# The PostgreSQL extension and its SQL tests against a server of their own (postgresql/).
packages+=(postgresql-15 postgresql-server-dev-15)
# The Python module (python/), its tests and its benchmark peers.
packages+=(python3 python3-dev pybind11-dev python3-numpy python3-pandas python3-dask python3-distributed python3-pytest python3-babel)
# The any-date reader's peer comparison (scripts/anydate_peers.py) only: VXLOCFMT_PEERS=1.
[ "${VXLOCFMT_PEERS:-0}" = 1 ] && packages+=(python3-dateutil python3-pandas)
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if ((${#missing[@]})); then
  echo "installing: ${missing[*]}"
  sudo_cmd=""
  [ "$(id -u)" -ne 0 ] && sudo_cmd="sudo"
  $sudo_cmd apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $sudo_cmd apt-get install -y -qq "${missing[@]}"
fi
