#!/usr/bin/env bash
# The consumer's contract, checked against a real installation in a temporary prefix:
#   - every installed header compiles on its own;
#   - examples/consumer and the README's first program build with CMake (find_package) and with
#     pkg-config, and run.
# Usage: scripts/check-consumer.sh [build-folder]: installs from that build (default build/), which is
# configured first if it is not yet; what the build holds besides (tests) is not installed.
set -euo pipefail
cd "$(dirname "$0")/.."
root=$(pwd)
build=${1:-build}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
prefix=$work/prefix

[ -f "$build/build.ninja" ] || cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build "$build" -j "$(nproc)"
cmake --install "$build" --prefix "$prefix" >/dev/null

echo "== installed headers compile alone"
if find "$prefix/include" -path '*/internal/*' | grep -q .; then
    echo "internal headers were installed" >&2
    exit 1
fi
(cd "$prefix/include" && find . -name '*.hpp' | sed 's|^\./||' | sort) >"$work/headers"
xargs -P "$(nproc)" -I{} sh -c \
    'printf "#include \"%s\"\n" "$1" | g++ -std=c++20 -fsyntax-only -Wall -Wextra -Wpedantic -Werror \
        -I"$2" -x c++ - || { echo "header does not compile alone: $1" >&2; exit 255; }' _ {} "$prefix/include" \
    <"$work/headers"
echo "$(wc -l <"$work/headers") headers ok"

# The README's first program: the first C++ block of the README, as it stands there.
awk '/^```cpp/{n++; if (n==1) {on=1; next}} /^```/{on=0} on' README.md >"$work/first_program.cpp"

echo "== consumer with CMake"
cmake -S examples/consumer -B "$work/cmake-build" -G Ninja -DCMAKE_PREFIX_PATH="$prefix" \
    -DFIRST_PROGRAM="$work/first_program.cpp" >/dev/null
cmake --build "$work/cmake-build"
"$work/cmake-build/consumer" >/dev/null
"$work/cmake-build/first_program"
if [ ! -x "$work/cmake-build/consumer_test" ]; then
    echo "TavoXMLUtils::Testing was not installed" >&2
    exit 1
fi
"$work/cmake-build/consumer_test"
"$prefix/bin/tavoxml" --help >/dev/null

echo "== consumer with pkg-config"
export PKG_CONFIG_PATH=$(dirname "$(find "$prefix" -name tavoxmlutils.pc)")
std=$(pkg-config --variable=cxxstd tavoxmlutils)
libdir=$(pkg-config --variable=libdir tavoxmlutils)
for program in examples/consumer/consumer.cpp "$work/first_program.cpp"; do
    out=$work/pc-$(basename "$program" .cpp)
    # shellcheck disable=SC2046
    g++ -std="$std" "$program" -o "$out" $(pkg-config --cflags --libs tavoxmlutils) -Wl,-rpath,"$libdir"
    "$out" >/dev/null
done
echo "consumer checks passed"
