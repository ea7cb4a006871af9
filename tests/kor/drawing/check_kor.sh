#!/bin/sh
# check_kor.sh CHECK FOLDER PROGRAM...
set -eu

check=$1 folder=$2
shift 2
rm -rf "$folder"
mkdir -p "$folder"
cd "$folder"

fail() {
    echo "$1"
    head -n 40 out err 2>/dev/null || true
    exit 1
}

# run STATUS PROGRAM... leaves what the program wrote in the files out and err, with plain line ends.
run() {
    wanted=$1 status=0
    shift
    "$@" >out.raw 2>err.raw || status=$?
    plain_ends
    [ "$status" -eq "$wanted" ] || fail "exit status $status instead of $wanted"
}

plain_ends() {
    tr -d '\r' <out.raw >out
    tr -d '\r' <err.raw >err
}

# refuses LINE PROGRAM...: this line on standard error, nothing on standard output, status 2.
refuses() {
    line=$1
    shift
    run 2 "$@"
    [ "$(cat err)" = "$line" ] || fail "not the line: $line"
    [ ! -s out ] || fail "printed to standard output"
}

# What the last run printed behind the library's start-up, which ends with the second line of stars and an empty line.
behind_start() {
    awk 'stars >= 2 && empty++; /^\*+$/ && length($0) == 80 { stars++ }' out
}

# What the last run printed as its frame: its lines that are not blank, each without the blanks around it.
shown() {
    behind_start | sed 's/^ *//; s/ *$//' | grep -v '^$' | tr '\n' '|'
}

expect_shown() {
    [ "$(shown)" = "$1" ] || fail "shows $(shown) instead of $1"
    [ ! -s err ] || fail "wrote to standard error"
}

# scene TEXT: a scene that shows the text.
scene() {
    cat >scene.json <<END
{
  "scene": "Check",
  "size": [800, 480],
  "containers": [
    {"name": "title", "position": [20, 40], "geometry": {"type": "TEXT", "text": "$1", "size": 20},
     "plugins": [{"kind": "DataText", "FieldName": "title"}]},
    {"name": "sky", "position": [400, 200], "geometry": {"type": "IMAGE", "picture": "sun.svg", "width": 80, "height": 40}}
  ]
}
END
}

scene before
case $check in
    help)
        run 0 "$@" --help
        head -n 1 out | grep -qx 'usage: Kor \[OPTIONS\] SCENE.json' || fail "not the usage"
        [ ! -s err ] || fail "wrote to standard error"
        ;;
    version)
        run 0 "$@" --version
        grep -Eqx 'Kor [0-9]+(\.[0-9]+)+' out || fail "not the version"
        ;;
    usage)
        refuses 'Kor: which scene?; see --help' "$@"
        refuses 'Kor: unknown option --loud; see --help' "$@" --loud scene.json
        refuses 'Kor: --frames needs a whole number from 1; see --help' "$@" scene.json --frames 0
        ;;
    missing_scene)
        refuses 'Kor: nowhere.json: cannot be read' "$@" --frames 1 nowhere.json
        ;;
    bad_json)
        printf '{\n  "containers": [\n}\n' >scene.json
        run 2 "$@" --frames 1 scene.json
        grep -q '^Kor: scene.json: line 3: is no JSON' err || fail "does not name the line"
        ;;
    unknown_key)
        echo '{"containers": [], "colour": "red"}' >scene.json
        run 2 "$@" --frames 1 scene.json
        grep -q '^Kor: scene.json: /colour: is unknown' err || fail "does not name the key"
        ;;
    missing_commands)
        refuses 'Kor: nowhere.txt: cannot be read' "$@" --commands nowhere.txt scene.json
        ;;
    frames)
        run 0 "$@" --frames 3 --fps 0 scene.json
        expect_shown 'before|sun|'
        ;;
    batches)
        # A property of the host and a field of the tree; the last of each is shown.
        printf 'title = one\n~\ntitle = two\n0 sky*ACTIVE SET 0\n~\n0 sky*ACTIVE SET 1\ntitle = three\n' >commands.txt
        run 0 "$@" --commands commands.txt --fps 0 scene.json
        expect_shown 'three|sun|'
        run 0 "$@" --commands commands.txt --frames 2 --fps 0 scene.json
        expect_shown 'two|'
        run 0 "$@" --commands - --fps 0 scene.json <commands.txt
        expect_shown 'three|sun|'
        ;;
    quiet)
        run 0 "$@" --frames 1 --quiet scene.json
        expect_shown ''
        ;;
    svg)
        mkdir pictures
        echo '<svg viewBox="0 0 64 64"><circle r="9"/></svg>' >pictures/sun.svg
        run 0 "$@" --frames 2 --fps 0 --quiet --svg frame.svg scene.json
        grep -Fqx '<text x="20" y="56" font-size="20" fill="#ffffff">before</text>' frame.svg || fail "no text"
        grep -Fqx '<symbol id="picture-sun.svg" viewBox="0 0 64 64"><circle r="9"/></symbol>' frame.svg ||
            fail "no picture"
        grep -Fqx '<use href="#picture-sun.svg" x="400" y="200" width="80" height="40"/>' frame.svg || fail "no use"
        [ "$(tail -n 1 frame.svg)" = '</svg>' ] || fail "not ended"
        [ ! -e frame.svg.part ] || fail "left half a frame"
        ;;
    unwritable_svg)
        run 2 "$@" --frames 1 --svg nowhere/frame.svg scene.json
        [ "$(cat err)" = 'Kor: nowhere/frame.svg: cannot be written' ] || fail "not the line"
        ;;
    plugins)
        mkdir none
        run 0 "$@" --plugins none --frames 2 --fps 0 scene.json
        [ "$(shown)" = 'before|sun|' ] || fail "the rest of the scene does not go on"
        [ "$(grep -c '^Kor: plug-in DataText on container "title": ' err)" -eq 1 ] || fail "not told once"
        ;;
    default_plugins)
        # Found beside the program, from wherever it is called.
        echo 'title = found' >commands.txt
        run 0 "$@" --commands commands.txt --fps 0 scene.json
        expect_shown 'found|sun|'
        ;;
    dump)
        echo 'title = kept' >commands.txt
        run 0 "$@" --commands commands.txt --quiet --dump scene.json
        behind_start | grep -q 'title' || fail "no tree"
        behind_start | grep -q 'kept' || fail "no value"
        ;;
    pace)
        # 5 frames have 4 pauses of a quarter of a second.
        start=$(date +%s%N)
        run 0 "$@" --frames 5 --fps 4 --quiet scene.json
        [ $(($(date +%s%N) - start)) -ge 1000000000 ] || fail "too fast"
        ;;
    interrupt)
        # Jobs of a script ignore the signal unless it has job control. Windows has no such signal.
        case $* in *.exe) exit 0 ;; esac
        set -m
        "$@" --listen 0 scene.json >out.raw 2>err.raw &
        # What it prints first comes behind its preparations for the signal; one that Valgrind gets before is lost.
        until grep -q Version out.raw; do sleep 0.1; done
        sleep 1
        kill -INT $!
        status=0
        wait $! || status=$?
        plain_ends
        [ "$status" -eq 130 ] || fail "exit status $status instead of 130"
        [ "$(shown)" = 'before|sun|' ] || fail "no last frame"
        ;;
    *)
        fail "no such check"
        ;;
esac
