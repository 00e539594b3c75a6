#!/usr/bin/env bash
# Installs the Debian packages named on the command line that are missing: itself when run as
# root, else it prints the apt-get line to run and stops.
set -euo pipefail

missing=()
for package in "$@"; do
    status=$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null || true)
    [ "$status" = "installed" ] || missing+=("$package")
done
[ ${#missing[@]} -eq 0 ] && exit 0

if [ "$(id -u)" -eq 0 ]; then
    echo "Installing missing Debian packages: ${missing[*]}"
    export DEBIAN_FRONTEND=noninteractive
    apt-get update -qq
    apt-get install -y -qq --no-install-recommends "${missing[@]}"
else
    echo "Quillmere needs these Debian packages. Install them with:" >&2
    echo "  sudo apt-get install -y ${missing[*]}" >&2
    exit 1
fi
