#!/usr/bin/env bash
# Installs the Debian packages the build, the tests, the benchmarks and the fuzz targets need.
# Idempotent: it asks apt only for what is missing, and refreshes the package lists at most once.
set -euo pipefail

packages=(build-essential cmake ninja-build pkg-config libxerces-c-dev libgtest-dev libgmock-dev
          libbenchmark-dev clang-format libcli11-dev doxygen)
# clang is needed only for the fuzz targets.
if [ "${WITH_CLANG:-0}" = 1 ]; then packages+=(clang libclang-rt-dev); fi

missing=()
for p in "${packages[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'install ok installed'; then
        missing+=("$p")
    fi
done
[ ${#missing[@]} -eq 0 ] && exit 0

if [ "$(id -u)" -ne 0 ]; then
    echo "missing packages: ${missing[*]} (run as root to install them)" >&2
    exit 1
fi
export DEBIAN_FRONTEND=noninteractive
apt-get update
apt-get install -y --no-install-recommends "${missing[@]}"
