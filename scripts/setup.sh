#!/usr/bin/env bash
# Installs what building and testing need and is missing. Quick when nothing is. With the word `browser` also a browser.
set -euo pipefail
cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/.."

# Stops with the command to run when this user cannot become root.
need_root_for() {
  if ((EUID != 0)) && ! command -v sudo >/dev/null; then
    echo "setup: neither root nor sudo; run as root: $*" >&2
    exit 1
  fi
}

as_root() {
  need_root_for "$@"
  if ((EUID == 0)); then "$@"; else sudo "$@"; fi
}

install_packages() {
  local wanted missing=() package
  mapfile -t wanted < <(grep -hv '^#' "$@")
  if ! command -v dpkg-query >/dev/null; then
    echo "setup: not a Debian system; the packages that $* names must be installed by hand" >&2
    return
  fi
  for package in "${wanted[@]}"; do
    [[ $(dpkg-query --show --showformat='${db:Status-Status}' "$package" 2>/dev/null) == installed ]] ||
      missing+=("$package")
  done
  if ((${#missing[@]})); then
    echo "setup: installing ${missing[*]}"
    need_root_for apt-get install "${missing[@]}"
    as_root apt-get update --quiet
    as_root env DEBIAN_FRONTEND=noninteractive apt-get install --quiet --yes --no-install-recommends "${missing[@]}"
  fi
}

# A test reads and writes numbers where the decimal sign is a comma.
generate_locale() {
  if ! locale -a | grep -qix 'de_DE\.utf-\?8'; then
    as_root localedef -i de_DE -f UTF-8 de_DE.UTF-8
  fi
}

# The environment is made by the system's python3, not the first one of PATH: the bridge links the system's libpython, and
# extension modules of two builds of Python do not mix in one process.
make_venv() {
  local python=/usr/bin/python3 stamp
  [[ -x $python ]] || python=$(command -v python3)
  stamp=build/venv/installed-$(
    { readlink -f "$python"; pwd; cat scripts/requirements.txt; } | sha256sum | cut -c1-16
  )
  [[ -e $stamp ]] && return
  echo "setup: installing Python packages into build/venv"
  mkdir -p build
  "$python" -m venv --clear build/venv
  build/venv/bin/python -m pip install --quiet --disable-pip-version-check --requirement scripts/requirements.txt
  touch "$stamp"
}

lists=(scripts/packages.txt)
[[ ${1:-} == browser ]] && lists+=(scripts/packages-browser.txt)
install_packages "${lists[@]}"
generate_locale
make_venv
