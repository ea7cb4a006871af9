#!/usr/bin/env bash
# check.sh PACKAGES SOURCE WORK [WINE]
#
# Installs each package that is in the folder PACKAGES into an empty place under WORK, and there builds the client of
# tests/consumer, runs it, and renders frames of the weather scene; takes the Debian packages off again. With WINE the
# archive for Windows as well.
set -euo pipefail

packages=$(realpath "$1") source=$(realpath "$2")
mkdir -p "$3"
work=$(realpath "$3")
wine=${4:-} windows_compiler=x86_64-w64-mingw32-g++-posix
client=$source/tests/consumer
version=$(sed -n 's/^ *VERSION \([0-9.]*\)$/\1/p' "$source/CMakeLists.txt" | head -n 1)
unset CMAKE_PREFIX_PATH PKG_CONFIG_PATH LD_LIBRARY_PATH CPATH LIBRARY_PATH CXXFLAGS LDFLAGS

fail() {
    echo "packages: $*" >&2
    exit 1
}

# same WHAT EXPECTED ACTUAL
same() {
    [[ $3 == "$2" ]] || fail "$1: expected \"$2\", got \"$3\""
}

# The program adds the number of the build.
check_version() {
    [[ $1 == "orbel $version".* ]] || fail "orbel --version printed $1"
}

# Nothing may name the folders that it was built in.
check_leaks() {
    local root=$1 found file
    found=$(grep -rlF --include='*.cmake' --include='*.pc' --include='*.py' --include='*.txt' -e "$source" "$root" || true)
    [[ -z $found ]] || fail "the path of the sources is in $found"
    while read -r file; do
        if grep -qF "$source" "$file"; then
            fail "the path of the sources is in $file"
        fi
        found=$( (readelf -d "$file" 2>/dev/null || true) | sed -n 's/.*R\(UN\)\?PATH.*\[\(.*\)\]/\2/p')
        [[ -z $found || $found == \$ORIGIN/* ]] || fail "$file looks for libraries in $found"
    done < <(find "$root" -type f \( -name '*.so*' -o -name '*.dll*' -o -name '*.exe' -o -path '*/bin/*' \))
}

# check_client PREFIX LIBDIR: once through CMake, once through pkg-config.
check_client() {
    local prefix=$1 libdir=$2 build=$work/client
    rm -rf "$build"
    cmake -S "$client" -B "$build" -G Ninja -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_FIND_USE_CMAKE_SYSTEM_PATH=OFF \
        >"$work/log" || fail "$(cat "$work/log")"
    grep -q "^OrbelLib_DIR:PATH=$libdir/cmake/OrbelLib\$" "$build/CMakeCache.txt" || fail "CMake found another OrbelLib"
    cmake --build "$build" >"$work/log" || fail "$(cat "$work/log")"
    same "the client built by CMake" "scene/title = Hello" "$("$build/consumer")"

    # A list of words, of which those with blanks are in quotes.
    eval "local flags=($(PKG_CONFIG_LIBDIR=$libdir/pkgconfig pkg-config --cflags --libs orbellib))"
    g++ -std=c++17 "$client/main.cpp" -o "$work/client/by-pkg-config" "${flags[@]}"
    same "the client built with pkg-config" "scene/title = Hello" \
        "$(LD_LIBRARY_PATH=$libdir "$work/client/by-pkg-config")"
}

# check_printers PREFIX: the client sees no more of the library than its headers.
check_printers() {
    local output
    command -v gdb >/dev/null || return 0
    g++ -std=c++17 -g "$client/main.cpp" -o "$work/client/debugged" -I"$1/include" -L"$1/lib" -lOrbelLib
    output=$(LD_LIBRARY_PATH=$1/lib gdb -q -nx -batch -ex "source $1/lib/orbellib/gdb/orbel.py" \
        -ex 'break TitleWatcher::onChange' -ex run -ex 'printf "seen: "' -ex 'output field' \
        "$work/client/debugged" 2>&1 </dev/null)
    [[ $output == *'seen: DataValue "title" = "'* ]] || fail "gdb printed $output"
}

# check_manual PREFIX: the page of Kor has the options of Kor, all of them and no other.
check_manual() {
    local page
    page=$(cat "$1/share/man/man1/Kor.1" 2>/dev/null || gzip -dc "$1/share/man/man1/Kor.1.gz")
    same "the manual page of Kor" "$("$1/bin/Kor" --help | sed -n 's/^ *\(--[a-z]*\).*/\1/p' | sort)" \
        "$(sed -n 's/^\\fB\\-\\-\([a-z]*\)\\fR.*/--\1/p' <<<"$page" | sort)"
}

# check_programs BIN EXAMPLES: they find the library and the plug-ins by themselves.
check_programs() {
    local bin=$1 examples=$2 frames=$work/frames
    check_version "$("$bin/orbel" --version)"
    rm -rf "$frames" && mkdir "$frames"
    (
        cd "$examples/weather"
        awk -v days=3 -f feed.awk weather.csv | "$bin/Kor" --commands - --fps 0 --svg "$frames/weather.svg" scene.json \
            >"$frames/text" 2>"$frames/errors" || fail "Kor: $(cat "$frames/errors")"
        "$bin/Kor" --frames 3 --fps 0 --quiet scene.json >"$frames/quiet" 2>&1 || fail "Kor --quiet: $(cat "$frames/quiet")"
    )
    [[ ! -s $frames/errors ]] || fail "Kor complained: $(cat "$frames/errors")"
    grep -q 'day 3 of 3' "$frames/text" || fail "Kor printed: $(cat "$frames/text")"
    grep -q '<svg' "$frames/weather.svg" || fail "Kor drew no picture"
}

check_debian() {
    local root="$work/root" as_root=() left
    rm -rf "$root"
    mkdir -p "$root/var/lib/dpkg/"{info,updates,triggers}
    touch "$root/var/lib/dpkg/status" "$root/var/lib/dpkg/available"
    ((EUID == 0)) || as_root=(fakeroot)
    # What these depend on is not in the root.
    "${as_root[@]}" dpkg --root "$root" --log="$work/dpkg.log" --force-depends --force-not-root \
        -i "$packages"/*"_${version}_"*.deb >"$work/log" 2>&1 || fail "$(cat "$work/log")"
    same "the soname" "libOrbelLib.so.2" \
        "$(readelf -d "$root/usr/lib/libOrbelLib.so" | sed -n 's/.*soname: \[\(.*\)\]/\1/p')"
    check_leaks "$root/usr"
    check_client "$root/usr" "$root/usr/lib"
    check_printers "$root/usr"
    check_manual "$root/usr"
    check_programs "$root/usr/bin" "$root/usr/share/doc/OrbelLib/examples"
    "${as_root[@]}" dpkg --root "$root" --log="$work/dpkg.log" --force-not-root --force-depends \
        -r orbel-tools liborbellib-dev "liborbellib${version%%.*}" >"$work/log" 2>&1 || fail "$(cat "$work/log")"
    left=$(find "$root" -mindepth 1 -not -path "$root/var*")
    [[ -z $left ]] || fail "left behind: $left"
    rm -rf "$root"
    echo "packages: the Debian packages are sound"
}

check_archive() {
    local place="$work/a folder with blanks"
    local prefix="$place/orbellib-$version-linux-x86_64"
    rm -rf "$place" && mkdir "$place"
    tar -xzf "$packages/orbellib-$version-linux-x86_64.tar.gz" -C "$place"
    check_leaks "$prefix"
    check_client "$prefix" "$prefix/lib"
    check_printers "$prefix"
    check_manual "$prefix"
    check_programs "$prefix/bin" "$prefix/share/doc/OrbelLib/examples"
    rm -rf "$place"
    echo "packages: the archive for Linux is sound"
}

# Wine is started with nothing of the compiler in reach: its DLLs come from the archive.
check_windows() {
    local place="$work/windows" prefix output
    prefix=$place/orbellib-$version-windows-x86_64
    rm -rf "$place" && mkdir "$place"
    unzip -q "$packages/orbellib-$version-windows-x86_64.zip" -d "$place"
    check_leaks "$prefix"
    grep -q 'msvcrt.dll' "$prefix/README-SDK.txt" || fail "README-SDK.txt does not name the C runtime"
    [[ $(x86_64-w64-mingw32-objdump -p "$prefix/bin/OrbelLib.dll") == *"DLL Name: msvcrt.dll"* ]] ||
        fail "OrbelLib.dll uses another C runtime than README-SDK.txt says"

    cmake -S "$client" -B "$place/client" -G Ninja -DCMAKE_SYSTEM_NAME=Windows \
        -DCMAKE_CXX_COMPILER="$windows_compiler" -DCMAKE_PREFIX_PATH="$prefix" >"$work/log" || fail "$(cat "$work/log")"
    cmake --build "$place/client" >"$work/log" || fail "$(cat "$work/log")"
    cp "$place/client/consumer.exe" "$prefix/bin"
    "$windows_compiler" -std=c++17 "$client/main.cpp" -I"$prefix/include" -L"$prefix/lib" -lOrbelLib \
        -o "$prefix/bin/by-hand.exe"
    for program in consumer by-hand; do
        output=$("$wine" "$prefix/bin/$program.exe" </dev/null | tr -d '\r')
        same "$program.exe" "scene/title = Hello" "$output"
    done
    check_version "$("$wine" "$prefix/bin/orbel.exe" --version </dev/null | tr -d '\r')"
    (
        cd "$prefix/examples/weather"
        awk -v days=3 -f feed.awk weather.csv >"$place/commands"
        "$wine" "$prefix/bin/Kor.exe" --commands "$place/commands" --fps 0 scene.json </dev/null >"$place/text" 2>"$place/errors" ||
            fail "Kor.exe: $(cat "$place/errors")"
        "$wine" "$prefix/bin/Kor.exe" --frames 3 --fps 0 --quiet scene.json </dev/null >"$place/quiet" 2>&1 ||
            fail "Kor.exe --quiet: $(cat "$place/quiet")"
    )
    [[ ! -s $place/errors ]] || fail "Kor.exe complained: $(cat "$place/errors")"
    grep -q 'day 3 of 3' "$place/text" || fail "Kor.exe printed: $(cat "$place/text")"
    rm -rf "$place"
    echo "packages: the archive for Windows is sound"
}

check_debian
check_archive
if [[ $wine ]]; then
    check_windows
fi
