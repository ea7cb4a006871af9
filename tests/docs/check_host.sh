#!/bin/sh
# check_host.sh CHECK DOCUMENT SCENE_FOLDER FOLDER OWN_PLUGINS OTHER_PLUGINS KOR...
set -eu

check=$1 document=$2 scene=$3 folder=$4 own=$5 others=$6
shift 6
rm -rf "$folder"
mkdir -p "$folder"
cp "$scene"/scene.json "$scene"/feed.txt "$folder"
cp "$(dirname "$document")"/../examples/weather/CapitalUnicodeData.txt "$folder"
cd "$folder"
sed -n 's/.*With the type `\(.*;\)` in a file.*/\1/p' "$document" >match.qx

fail() {
    echo "$1"
    head -n 40 out err frame.svg 2>/dev/null || true
    exit 1
}

case $check in
    scene)
        "$@" --quiet --commands feed.txt --fps 0 --svg frame.svg scene.json >out 2>err || fail "does not run"
        [ ! -s err ] || fail "printed to standard error"
        grep -q '>HARRIERS<' frame.svg || fail "not the text"
        grep -q 'width="30" height="40" fill="#f2bd52"' frame.svg || fail "not the bar"
        ;;
    plugin)
        mkdir plugins
        cp "$own"/DataLong.* "$others"/Data*.* plugins
        sed -i 's/"kind": "DataText"/"kind": "DataLong"/; s/"type": "TEXT"/"type": "TEXT", "text": "shown"/' scene.json
        "$@" --quiet --plugins plugins --commands feed.txt --fps 0 --svg frame.svg scene.json >out 2>err ||
            fail "does not run"
        [ ! -s err ] || fail "printed to standard error"
        if grep -q '>shown<' frame.svg; then fail "a short value does not hide"; fi
        sed -i 's/Harriers/Harriers of the town/' feed.txt
        "$@" --quiet --plugins plugins --commands feed.txt --fps 0 --svg frame.svg scene.json >out 2>err
        grep -q '>shown<' frame.svg || fail "a long value does not show"
        ;;
    error)
        sed -i 's/"width": 30/"width": "wide"/' scene.json
        status=0
        "$@" --quiet --frames 1 scene.json >out 2>err || status=$?
        [ "$status" -eq 2 ] || fail "exit status $status"
        message=$(grep '^Kor: scene.json: ' "$document")
        [ "$(tr -d '\r' <err)" = "$message" ] || fail "not the message of the document: $message"
        ;;
    *) fail "unknown check $check" ;;
esac
