#!/bin/sh
# check_weather.sh CHECK OPERATOR SCRIPTS FOLDER KOR...
set -eu

check=$1 operator=$2 scripts=$3 folder=$4
shift 4
unset QX_OBJECTS_DIR QX_OBJECTS_FILE QX_OBJECTS_PATH
# The operator's folder is copied, to be changed and to be the working directory.
rm -rf "$folder"
mkdir -p "$folder"
cp -r "$operator"/. "$folder"
cd "$folder"

fail() {
    echo "$1"
    head -n 40 out err 2>/dev/null || true
    exit 1
}

# play STATUS DAYS KOR...: plays the first days, of all when there is no number.
play() {
    wanted=$1 days=$2 status=0
    shift 2
    awk -v days="$days" -f feed.awk weather.csv >feed.txt
    "$@" --commands feed.txt --fps 0 --svg weather.svg scene.json >out.raw 2>err.raw || status=$?
    tr -d '\r' <out.raw >out
    tr -d '\r' <err.raw >err
    [ "$status" -eq "$wanted" ] || fail "exit status $status instead of $wanted"
}

list_drawing() {
    awk -f "$scripts/svg_listing.awk" weather.svg >actual || fail "weather.svg is not well-formed: $(tail -n 1 actual)"
}

# The same lines; lengths of bars within a thousandth, for the plug-ins reckon in single precision.
same() {
    awk '
        NR == FNR { expected[FNR] = $0; lines = FNR; next }
        $0 == expected[FNR] { next }
        {
            split(expected[FNR], wanted, " ")
            difference = $3 - wanted[3]
            if ($1 == "bar" && wanted[1] == "bar" && $2 == wanted[2] && difference < 0.001 && difference > -0.001) next
            print "line " FNR ": \"" $0 "\" instead of \"" expected[FNR] "\""
            failed = 1
        }
        END { exit failed || FNR != lines }
    ' expected actual >differences || fail "the drawing is not as observed: $(cat differences | head -n 20)"
}

# compare DAYS KOR...: the drawing is well-formed and shows what the observations say.
compare() {
    play 0 "$@"
    [ ! -s err ] || fail "printed to standard error"
    awk -v days="$1" -f "$scripts/expected_svg.awk" QX_ConvTables_weather.csv weather.csv >expected
    list_drawing
    same
}

case $check in
    first_day) compare 1 "$@" ;;
    first_week) compare 7 "$@" ;;
    half_a_year) compare 182 "$@" ;;
    all_days)
        compare '' "$@"
        [ "$(grep -c '^bar 2 ' actual)" -eq 106 ] || fail "not 53 weeks of two cities"
        [ "$(grep -c '^bar 4 ' actual)" -eq 14 ] || fail "not seven days of two cities"
        ;;
    turn)
        compare 8 "$@"
        [ "$(sed '3!d' actual)" = 'text NEW YORK' ] || fail "not New York in the second half"
        awk -v turn=9 -v days=8 -f feed.awk weather.csv >feed.txt
        "$@" --commands feed.txt --fps 0 --quiet --svg weather.svg scene.json >/dev/null
        list_drawing
        [ "$(sed '3!d' actual)" = 'text SEATTLE' ] || fail "not Seattle without a turn"
        ;;
    small_file)
        # A city of letters beyond ASCII, days that are missing, temperatures beyond the bars, CR LF.
        {
            printf 'location,date,precipitation,temp_max,temp_min,wind,weather\r\n'
            printf 'Málaga & <b>,2020-01-0%s,0.0,50.5,-1.0,3.0,sun\r\n' 1 2 4
            printf 'Málaga & <b>,2020-12-31,0.0,-20,-30,3.0,hail\n'
            printf 'Nome,2020-01-04,1.0,0,-1,3,snow\nNome,2021-01-01,1.0,38,-1,3,fog\n'
        } >weather.csv
        awk -v turn=99 -f feed.awk weather.csv >feed.txt
        "$@" --commands feed.txt --fps 0 --quiet --svg weather.svg scene.json >/dev/null
        awk -v turn=99 -v capitals='MÁLAGA & <B>' -f "$scripts/expected_svg.awk" QX_ConvTables_weather.csv weather.csv \
            >expected
        list_drawing
        same
        grep -qx 'bar 4 41' actual || fail "no full bar"
        grep -qx 'bar 4 1' actual || fail "no empty bar"
        ;;
    labels)
        sed -i 's/^rain,Rain/rain,<Wet \&amp;>/; s/,fog.svg/,rain.svg/; /^drizzle,Drizzle/d' QX_ConvTables_weather.csv
        compare 120 "$@"
        [ "$(grep -c '^text <Wet &amp;>$' actual)" -gt 1 ] || fail "not the edited label"
        ;;
    missing_plugin)
        sed 's/"kind": "DataImage"/"kind": "DataMovie"/' scene.json >changed.json
        mv changed.json scene.json
        play 0 9 "$@"
        [ "$(grep -c '^Kor: plug-in DataMovie on container "sky": ' err)" -eq "$(wc -l <err)" ] ||
            fail "not one line for each plug-in"
        list_drawing
        grep -qx 'text Seattle' actual || fail "the rest of the scene does not run"
        if grep -q '^picture' actual; then fail "a picture without its plug-in"; fi
        ;;
    missing_scene)
        rm scene.json
        play 2 9 "$@"
        [ "$(cat err)" = 'Kor: scene.json: cannot be read' ] || fail "not the reason"
        ;;
    terminal)
        play 0 400 "$@"
        grep -q 'Weather board .* 3 Feb 2013$' out || fail "no title"
        grep -q 'high 0.0 °C .* day 400 of 400$' out || fail "no day"
        grep -q 'high  *8.9 °C  ' out || fail "no reading"
        grep -q 'NEW YORK' out || fail "no headline"
        if LC_ALL=C grep -q "$(printf '\033')" out; then fail "escape codes"; fi
        ;;
    *) fail "unknown check $check" ;;
esac
