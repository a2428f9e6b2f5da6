#!/usr/bin/env bash
# Builds the HTML API reference from the public headers with Doxygen into build-docs/html and fails when
# Doxygen warns about them.
set -euo pipefail
cd "$(dirname "$0")/.."
root=$(pwd)
out=$root/build-docs
mkdir -p "$out"
version=$(sed -n 's/^project(TavoXMLUtils VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt)
sed -e "s|@ROOT@|$root|g" -e "s|@OUTPUT@|$out|g" -e "s|@VERSION@|$version|g" docs/Doxyfile.in >"$out/Doxyfile"
doxygen "$out/Doxyfile"
if [ -s "$out/warnings.txt" ]; then
    cat "$out/warnings.txt" >&2
    echo "doxygen reported $(wc -l <"$out/warnings.txt") warnings" >&2
    exit 1
fi
echo "API reference: $out/html/index.html"
