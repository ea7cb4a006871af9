#!/bin/sh
# check_installed.sh CMAKE PKG_CONFIG CXX CXXFLAGS BUILD SOURCE WORK
#
# Installs the library into WORK and builds the client in SOURCE against it, once through CMake
# and once through pkg-config.
set -eu

cmake=$1 pkg_config=$2 cxx=$3 cxxflags=$4 build=$5 source=$6 work=$7
prefix=$work/prefix

rm -rf "$prefix" "$work/client"
for component in runtime dev; do
    "$cmake" --install "$build" --prefix "$prefix" --component $component >/dev/null
done

expect() {
    answer=$("$1")
    if [ "$answer" != "scene/title = Hello" ]; then
        echo "$1 printed: $answer"
        exit 1
    fi
}

"$cmake" -S "$source" -B "$work/client" -G Ninja -DCMAKE_PREFIX_PATH="$prefix" \
    -DCMAKE_CXX_COMPILER="$cxx" -DCMAKE_CXX_FLAGS="$cxxflags"
"$cmake" --build "$work/client"
expect "$work/client/consumer"

PKG_CONFIG_PATH=$(dirname "$(find "$prefix" -name orbellib.pc)")
export PKG_CONFIG_PATH
libdir=$("$pkg_config" --variable=libdir orbellib)
# The flags are words, not one text.
# shellcheck disable=SC2046,SC2086
"$cxx" -std=c++17 $cxxflags "$source/main.cpp" -o "$work/consumer-pkgconfig" \
    $("$pkg_config" --cflags --libs orbellib) -Wl,-rpath,"$libdir"
expect "$work/consumer-pkgconfig"
