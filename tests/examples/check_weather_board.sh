#!/bin/sh
# check_weather_board.sh CHECK CSV SCRIPTS FOLDER PROGRAM...
set -eu
# It would stand for the operator's folder.
unset QX_OBJECTS_DIR

check=$1 csv=$2 scripts=$3 folder=$4
operator=$(dirname "$csv")
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

# What the last run printed behind the library's start-up, which ends with the second line of stars and an empty line.
behind_start() {
    awk 'stars >= 2 && empty++; /^\*+$/ && length($0) == 80 { stars++ }' out
}

# What the library prints when it reads the operator's folder.
expect_start() {
    stars=$(printf '%080d' 0 | tr 0 '*')
    {
        printf '\n\n%s\n\t Orbel Version: 2.13.6.1473 \n' "$stars"
        printf '\nReading Orbel Conversion Tables file ./QX_ConvTables_weather.csv\n'
        printf '    File format version : 1.0\n    Adding table : WeatherLabels\n    Adding table : WeatherPictures\n'
        printf '\nReading Orbel PreSets file ./QX_PreSets.csv\n    File format version : 1.0\n'
        printf '    Adding plugin : WeatherReading\n    Adding plugin : WeatherChart\n'
        printf '    Adding plugin : WeatherDrawing\n%s\n\n' "$stars"
    } >expected
    head -n "$(wc -l <expected)" out | tr '\\' / >actual
    cmp -s expected actual || fail "not the library's start-up: $(diff expected actual)"
}

# refuses PATTERN PROGRAM...: one line on standard error that matches, nothing on standard output, status 2.
refuses() {
    refuses_started "$@"
    [ ! -s out ] || fail "printed to standard output"
}

# The same, noticed only when the library has read the folder.
refuses_started() {
    pattern=$1
    shift
    run 2 "$@"
    [ -z "$(behind_start)" ] || fail "printed a board"
    [ "$(wc -l <err)" -eq 1 ] || fail "not exactly one line on standard error"
    grep -q "^weather_board: .*$pattern" err || fail "standard error does not match: $pattern"
}

# operator_without FILE: makes the folder op, the operator's without one file.
operator_without() {
    rm -rf op
    mkdir op
    cp -r "$operator"/Orbel.ini "$operator"/*.txt "$operator"/*.qx "$operator"/*.csv "$operator"/pictures op/
    rm "op/$1"
}

# operator_with FILE SCRIPT: makes the folder op, the operator's with one file edited by sed.
operator_with() {
    operator_without "$1"
    sed "$2" "$operator/$1" >"op/$1"
}

# compare_svg CAPITALS PROGRAM...: the drawing is well-formed and shows what the observations say.
compare_svg() {
    capitals=$1
    shift
    run 0 "$@" --folder "$operator" "$csv"
    awk -v capitals="$capitals" -f "$scripts/expected_svg.awk" \
        "$operator/QX_ConvTables_weather.csv" "$operator/QX_PreSets.csv" "$csv" >expected
    awk -f "$scripts/svg_listing.awk" weather.svg >actual || fail "weather.svg is not well-formed: $(tail -n 1 actual)"
    cmp -s expected actual || fail "the drawing is not as observed: $(diff expected actual | head -n 20)"
}

compare_totals() {
    run 0 "$@" --folder "$operator" "$csv"
    awk -f "$scripts/expected_totals.awk" "$csv" >expected
    tail -n 1 out >actual
    cmp -s expected actual || fail "expected: $(cat expected)"
}

# section TITLE: what the last run printed under this heading.
section() {
    awk -v title="== $1" '/^== |^Totals: / { inside = $0 == title; next } inside' out
}

compare_dump() {
    run 0 "$@" --dump --folder "$operator" "$csv"
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
        grep -qx 'Totals: 11 days, 124 values; callbacks 30 today, 139 week, 6 headline' actual ||
            fail "not the totals counted by hand"
        ;;
    plain)
        run 0 "$@" --folder "$operator" --plain --seconds 9 "$csv"
        expect_start
        if LC_ALL=C grep -q "$(printf '\033')" out; then fail "escape codes"; fi
        [ "$(behind_start | wc -l)" -eq 17 ] ||
            fail "not five snapshots of three lines, the picture and the totals"
        week='17.8 15.6 17.2 8.9 9.4 10.6 11.1'
        grep -qx "2015-12-31  day 1461 of 1461  NEW YORK: Rain, high 11.1; highs $week" out ||
            fail "no snapshot of the last day"
        readings='high  11.1 °C  low   6.1 °C  rain   1.5 mm  wind   5.5 m/s'
        grep -qx "  New York  $readings  Rain; highs \[0-6\] $week" out || fail "the last day is not as observed"
        grep -qx 'Wrote weather.svg' out || fail "does not name the picture"
        [ ! -s err ] || fail "printed to standard error"
        ;;
    headline)
        run 0 "$@" --folder "$operator" "$csv"
        awk -v table=WeatherLabels -f "$scripts/expected_headlines.awk" \
            "$operator/QX_ConvTables_weather.csv" "$csv" >expected
        grep '^2' out >actual
        cmp -s expected actual || fail "the headlines are not as observed: $(diff expected actual)"
        for day in 1 365; do grep -q " day $day of 1461  SEATTLE: " actual || fail "not Seattle at first"; done
        for day in 730 1095; do grep -q " day $day of 1461  NEW YORK: " actual || fail "not New York later"; done
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
        run 0 "$@" --folder "$operator" --verbose "$csv"
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
        operator_without weather.qx
        refuses_started 'no type file .* declares the type Day$' "$@" --folder op
        operator_with weather.qx '/Day week/d'
        refuses_started ' declare no field cities\[Seattle\]/week\[0\]/date$' "$@" --folder op
        operator_with weather.qx 's/Day today/string today/'
        refuses_started ' declare no fields below cities\[Seattle\]/today$' "$@" --folder op
        operator_with weather.qx '/^Headline/d'
        refuses_started 'no type file .* declares the type Headline$' "$@" --folder op
        ;;
    tables)
        operator_without QX_ConvTables_weather.csv
        refuses_started 'QX_ConvTables\*.csv: .* WeatherLabels with __DEFAULT__$' "$@" --folder op
        operator_with QX_ConvTables_weather.csv '$d'
        refuses_started 'QX_ConvTables\*.csv: .* WeatherPictures with __DEFAULT__$' "$@" --folder op
        operator_with QX_ConvTables_weather.csv 's/^rain,Rain/rain,<Wet \&amp;>/; s/,fog.svg/,rain.svg/; /^drizzle,Light/d'
        operator=$folder/op
        compare_svg '' "$@"
        [ "$(grep -c '^text <Wet &amp;>$' actual)" -gt 3 ] || fail "not the edited label"
        if grep -q 'picture fog.svg' actual; then fail "not the edited picture"; fi
        grep -q '^  Seattle .*  Not known; highs' out || fail "not the default of the table"
        ;;
    presets)
        operator_without QX_PreSets.csv
        refuses_started 'QX_PreSets.csv: missing, or without presets of WeatherDrawing$' "$@" --folder op
        refuses_started 'QX_PreSets.csv: WeatherDrawing has no preset dusk, but day, night$' \
            "$@" --folder "$operator" --style dusk
        operator_with QX_PreSets.csv '/^temp_min/d'
        refuses_started ' WeatherReading has no preset temp_min, but temp_max, precipitation, wind$' "$@" --folder op
        operator_with QX_PreSets.csv 's/^bars.*/bars,5,5/'
        refuses_started ' needs a Full above Empty$' "$@" --folder op
        operator_with QX_PreSets.csv 's/,m.s,1$/,m\/s/'
        refuses_started ' WeatherReading wind has no Decimals$' "$@" --folder op
        operator_with QX_PreSets.csv 's/^temp_max.*/temp_max,"top" <b>,\&deg;C,2/; s/^bars.*/bars,0,20/'
        operator=$folder/op
        compare_svg '' "$@"
        grep -qx 'text "top" <b>' actual || fail "not the edited label"
        grep -qx 'text 11.10' actual || fail "not two decimals"
        grep -qx 'bar year 56' actual || fail "no full bar"
        ;;
    folder)
        operator_without Orbel.ini
        refuses 'op.Orbel.ini: cannot be opened$' "$@" --folder op
        operator_without CapitalUnicodeData.txt
        refuses 'op.CapitalUnicodeData.txt: cannot be opened$' "$@" --folder op
        operator_without weather.csv
        refuses 'op.weather.csv: cannot be opened$' "$@" --folder op
        operator_without pictures/fog.svg
        refuses_started 'pictures/fog.svg: cannot be opened$' "$@" --folder op
        operator_with pictures/fog.svg 's/viewBox/box/'
        refuses_started 'pictures/fog.svg: no svg element with a viewBox$' "$@" --folder op
        operator_with QX_ConvTables_weather.csv 's/fog.svg/..\/fog.svg/'
        refuses_started 'pictures/../fog.svg: not a name that pictures can have$' "$@" --folder op
        operator_with Orbel.ini 's/^CheckImageIfExists.*/CheckImageIfExists = 0/'
        rm op/pictures/fog.svg
        run 0 "$@" --folder op
        awk -f "$scripts/svg_listing.awk" weather.svg >actual || fail "not well-formed"
        if grep -q 'picture fog.svg' actual; then fail "a picture that is missing"; fi
        grep -q 'text Fog' actual || fail "no label of the missing picture"
        # The folder is the working directory unless another one is named.
        (cd "$operator" && run 0 "$@" --svg "$folder/here.svg" && mv out out.raw err err.raw "$folder")
        cmp -s here.svg weather.svg && fail "the same without the picture"
        awk -f "$scripts/svg_listing.awk" here.svg | grep -q 'picture fog.svg' || fail "not the operator's folder"
        ;;
    svg)
        compare_svg '' "$@"
        [ "$(grep -c '^bar year' actual)" -eq 106 ] || fail "not 53 weeks of two cities"
        run 0 "$@" --folder "$operator" --style night --svg night.svg "$csv"
        awk -f "$scripts/svg_listing.awk" night.svg | cmp -s - expected || fail "the style changes more than colours"
        grep -q '<rect [^>]*width="1200"[^>]* fill="#0f151c"' night.svg || fail "not the colour of the night"
        grep -q '<rect [^>]*width="1200"[^>]* fill="#eef2f6"' weather.svg || fail "not the colour of the day"
        write_small_csv
        compare_svg '' "$@"
        refuses 'nowhere/board.svg: cannot be written$' "$@" --folder "$operator" --svg nowhere/board.svg
        ;;
    letters)
        csv=$folder/letters.csv
        printf "${head_line}Αθήνα & ñandú <ḃ𐐨>,2020-01-01,0.0,1.0,-2.0,3.0,sun\n" >"$csv"
        compare_svg 'ΑΘΉΝΑ & ÑANDÚ <Ḃ𐐨>' "$@"
        grep -q 'day 1 of 1  ΑΘΉΝΑ & ÑANDÚ <Ḃ𐐨>: Sunny, high 1.0; highs 1.0$' out || fail "not in capitals"
        caption='caption=ΑΘΉΝΑ & ÑANDÚ <Ḃ𐐨>;'
        run 0 "$@" --folder "$operator" --dump "$csv"
        section Dump | grep -q "$caption" || fail "the capitals are not in the tree"
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
        malformed ':2: .* not printable' "${head_line}Os\\303lo,2020-01-01,0.0,1.0,-2.0,3.0,snow\n" "$@"
        malformed ':2: .* not printable' "${head_line}Os\\302\\233lo,2020-01-01,0.0,1.0,-2.0,3.0,snow\n" "$@"
        malformed ':2: .* not printable' "${head_line}Os\\033lo,2020-01-01,0.0,1.0,-2.0,3.0,snow\n" "$@"
        malformed ':3: a second observation of Oslo on 2020-01-01$' "$head_line$good_line$good_line" "$@"
        malformed ': holds no observations$' "$head_line" "$@"
        malformed ': .* is empty$' '' "$@"
        ;;
    usage)
        refuses 'weather.csv: cannot be opened$' "$@"
        refuses 'unknown option --fast' "$@" --fast "$csv"
        refuses '--seconds needs' "$@" "$csv" --seconds
        refuses '--seconds needs' "$@" "$csv" --seconds -1
        refuses '--seconds needs' "$@" "$csv" --seconds soon
        for option in --folder --svg --style; do refuses "$option needs a text" "$@" "$csv" $option; done
        refuses 'more than one' "$@" "$csv" "$csv"
        ;;
    *) fail "unknown check $check" ;;
esac
