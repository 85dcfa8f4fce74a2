#!/usr/bin/env bash
# Installs the Debian packages the project needs, only those that are missing.
set -euo pipefail

packages=(
    build-essential cmake ninja-build pkg-config
    libboost-dev libfmt-dev libcli11-dev libsqlite3-dev
    libgtest-dev libgmock-dev libbenchmark-dev
    libdxflib-dev libcairo2-dev libfontconfig-dev fonts-wqy-microhei libedit-dev
    python3-ezdxf librecad
)

missing=()
for p in "${packages[@]}"; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "kelaz: installing ${missing[*]}"
sudo_cmd=()
if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || { echo "kelaz: run as root to install: ${missing[*]}" >&2; exit 1; }
    sudo_cmd=(sudo)
fi
export DEBIAN_FRONTEND=noninteractive
"${sudo_cmd[@]}" apt-get update -qq || true
"${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
