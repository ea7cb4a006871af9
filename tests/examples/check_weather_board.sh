#!/bin/sh
# check_weather_board.sh CHECK CSV SCRIPTS FOLDER PROGRAM...
set -eu

check=$1 csv=$2 scripts=$3 folder=$4
types=$(dirname "$csv")/types
shift 4
mkdir -p "$folder"
cd "$folder"

fail() {
    echo "$1"
    head -n 20 out err 2>/dev/null || true
    exit 1
}

# run STATUS PROGRAM... leaves what the program wrote in the files out and err, with plain line ends.
run() {
    wanted=$1 status=0
    shift
    "$@" >out.raw 2>err.raw || status=$?
    tr -d '\r' <out.raw >out
    tr -d '\r' <err.raw >err
    [ "$status" -eq "$wanted" ] || fail "exit status $status instead of $wanted"
}

# refuses PATTERN PROGRAM...: one line on standard error that matches, nothing on standard output, status 2.
refuses() {
    pattern=$1
    shift
    run 2 "$@"
    [ ! -s out ] || fail "printed to standard output"
    [ "$(wc -l <err)" -eq 1 ] || fail "not exactly one line on standard error"
    grep -q "^weather_board: .*$pattern" err || fail "standard error does not match: $pattern"
}

compare_totals() {
    run 0 "$@" --types "$types" "$csv"
    awk -f "$scripts/expected_totals.awk" "$csv" >expected
    tail -n 1 out >actual
    cmp -s expected actual || fail "expected: $(cat expected)"
}

# section TITLE: what the last run printed under this heading.
section() {
    awk -v title="== $1" '/^== |^Totals: / { inside = $0 == title; next } inside' out
}

compare_dump() {
    run 0 "$@" --dump --types "$types" "$csv"
    awk -f "$scripts/expected_dump.awk" "$csv" >expected
    section Dump >actual
    cmp -s expected actual || fail "the dump is not as observed: $(diff expected actual | head -n 20)"
}

# malformed PATTERN CONTENT PROGRAM...
malformed() {
    pattern=$1
    printf "$2" >bad.csv
    shift 2
    refuses "bad.csv$pattern" "$@" bad.csv
}

# Repeats, gaps, line ends of the other kind, texts that are equal only as numbers, and a city that starts late.
write_small_csv() {
    csv=$folder/small.csv
    printf "$head_line" >"$csv"
    for day in 1 2 3 4 5 6 7 8 9; do
        printf 'Oslo,2020-01-0%s,0.0,5.0,-1.0,3.0,snow\r\n' "$day"
    done >>"$csv"
    printf 'Oslo,2020-01-10,0,5,-1,3,snow\n' >>"$csv"
    printf 'New Ulm,2020-01-08,0.0,5.0,-1.0,3.0,sun\nNew Ulm,2020-01-11,0.0,5.0,-1.0,3.0,sun\n' >>"$csv"
}

head_line='location,date,precipitation,temp_max,temp_min,wind,weather\n'
good_line='Oslo,2020-01-01,0.0,1.0,-2.0,3.0,snow\n'

case $check in
    totals)
        compare_totals "$@"
        write_small_csv
        compare_totals "$@"
        grep -qx 'Totals: 11 days, 124 values, 168 callbacks, 45 changed, 123 unchanged' actual ||
            fail "not the totals counted by hand"
        ;;
    plain)
        run 0 "$@" --plain --seconds 9 "$csv"
        if LC_ALL=C grep -q "$(printf '\033')" out; then fail "escape codes"; fi
        [ "$(wc -l <out)" -eq 16 ] || fail "not five snapshots of three lines and the totals"
        grep -q '^2015-12-31  day 1461 of 1461  New York: rain, high 11.1; highs 17.8 15.6 17.2 8.9 9.4 10.6 11.1$' out || fail "no snapshot of the last day"
        grep -q '^  New York  high 11.1 C .* rain; highs \[0-6\] 17.8 15.6 17.2 8.9 9.4 10.6 11.1$' out ||
            fail "the last day is not as observed"
        [ ! -s err ] || fail "printed to standard error"
        ;;
    headline)
        run 0 "$@" "$csv"
        awk -f "$scripts/expected_headlines.awk" "$csv" >expected
        grep '^2' out >actual
        cmp -s expected actual || fail "the headlines are not as observed: $(diff expected actual)"
        for day in 1 365; do grep -q " day $day of 1461  Seattle: " actual || fail "not Seattle at first"; done
        for day in 730 1095; do grep -q " day $day of 1461  New York: " actual || fail "not New York later"; done
        ;;
    dump)
        compare_dump "$@"
        [ "$(grep -c '^== ' out)" -eq 6 ] || fail "not six renderings"
        grep -q "^Totals: 1461 days" out || fail "no totals"
        section XML | sed '1d;$d' >xml
        sed '1d;$d' actual | cmp -s - xml || fail "the XML holds other lines than the dump"
        section 'Children with their types' | grep -qx 'Headline:headline ={' || fail "the headline has no type"
        section 'Schema of the tree' | grep -qx 'Table<City> cities\[Seattle,New York\] {' || fail "no table of cities"
        section 'All types' | grep -q 'Array<Day> week\[7\]{' || fail "the type City has no week"
        section 'cities[New York]/week[5-6]; headline' >paths
        [ "$(grep -c 'date=2015-12-3[01];' paths)" -eq 2 ] || fail "not the last two days"
        grep -q 'city=New York;' paths || fail "no headline"
        write_small_csv
        compare_dump "$@"
        ;;
    verbose)
        run 0 "$@" --verbose "$csv"
        grep -q 'Reading configuration file: .*weather.qx$' err || fail "not the type file"
        [ "$(grep -c 'Creating type: ' err)" -eq 3 ] || fail "not three types"
        ;;
    help)
        run 0 "$@" --help
        grep -q '^usage: weather_board' out || fail "no usage"
        ;;
    missing_file)
        refuses 'no_such_file.csv: cannot be opened' "$@" no_such_file.csv
        ;;
    types)
        refuses 'nowhere: no type file .* declares the type Day$' "$@" --types nowhere "$csv"
        mkdir -p few
        sed '/Day week/d' "$types/weather.qx" >few/weather.qx
        refuses 'few: the types declare no field cities\[Seattle\]/week\[0\]/weather$' "$@" --types few "$csv"
        sed '/^Headline/d' "$types/weather.qx" >few/weather.qx
        refuses 'few: no type file .* declares the type Headline$' "$@" --types few "$csv"
        ;;
    malformed)
        malformed ':3: expected 7 fields, found 2$' "$head_line${good_line}Oslo,2020-01-02\n" "$@"
        malformed ':2: expected 7 fields, found 1$' "$head_line\n" "$@"
        malformed ':1: expected the header' "$good_line" "$@"
        malformed ':2: "2020-13-01" is not a date$' "${head_line}Oslo,2020-13-01,0.0,1.0,-2.0,3.0,snow\n" "$@"
        malformed ':2: "1.0x" is not a number$' "${head_line}Oslo,2020-01-01,0.0,1.0x,-2.0,3.0,snow\n" "$@"
        malformed ':2: "nan" is not a number$' "${head_line}Oslo,2020-01-01,0.0,nan,-2.0,3.0,snow\n" "$@"
        malformed ':2: .* empty ' "${head_line}Oslo,2020-01-01,0.0,1.0,-2.0,3.0,\n" "$@"
        malformed ':2: .* commands use$' "${head_line}a/b,2020-01-01,0.0,1.0,-2.0,3.0,snow\n" "$@"
        malformed ':2: .* commands use$' "${head_line}Oslo,2020-01-01,0.0,1.0,-2.0,3.0,snow; sun\n" "$@"
        malformed ':2: .* commands use$' "${head_line}Oslo ,2020-01-01,0.0,1.0,-2.0,3.0,snow\n" "$@"
        malformed ':2: .* not printable' "${head_line}Os\\033lo,2020-01-01,0.0,1.0,-2.0,3.0,snow\n" "$@"
        malformed ':3: a second observation of Oslo on 2020-01-01$' "$head_line$good_line$good_line" "$@"
        malformed ': holds no observations$' "$head_line" "$@"
        malformed ': .* is empty$' '' "$@"
        ;;
    usage)
        refuses 'no CSV file' "$@"
        refuses 'unknown option --fast' "$@" --fast "$csv"
        refuses '--seconds needs' "$@" "$csv" --seconds
        refuses '--seconds needs' "$@" "$csv" --seconds -1
        refuses '--seconds needs' "$@" "$csv" --seconds soon
        refuses '--types needs' "$@" "$csv" --types
        refuses 'more than one' "$@" "$csv" "$csv"
        ;;
    *) fail "unknown check $check" ;;
esac
