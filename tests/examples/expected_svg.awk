# Works out from the conversion tables and the observations alone what the weather scene shows after so many days, as
# svg_listing.awk lists it.
#
#     awk [-v days=N] [-v turn=N] [-v capitals=TEXT] -f expected_svg.awk QX_ConvTables_weather.csv weather.csv
#
# The observations are in order of dates.

BEGIN {
    FS = ","
    split("Jan Feb Mar Apr May Jun Jul Aug Sep Oct Nov Dec", months, " ")
    split("0 31 59 90 120 151 181 212 243 273 304 334", days_before, " ")
    split("high low rain wind", readings, " ")
    split("4 5 3 6", columns, " ")
    split("°C °C mm m/s", units, " ")
}

{ sub(/\r$/, "") }

FNR == 1 { file++ }

file == 1 && $1 == "__TABLE__" { table = $2; next }
file == 1 && !/^,/ { conversions[table, $1] = $2; next }
file == 1 || FNR == 1 { next }

!($2 in dates) { dates[$2] = ++numDates; dateAt[numDates] = $2 }
!($1 in seen) { names[cities++] = $1; seen[$1] = 0 }
{ all[++count] = $0 }

function convert(table, text) {
    return ((table, text) in conversions) ? conversions[table, text] : conversions[table, "__DEFAULT__"]
}

function show(text) {
    print "text " text
}

function bar(radius, celsius, least, most, filled) {
    filled = (celsius + 6) / 44
    if (filled < 0) filled = 0
    if (filled > 1) filled = 1
    printf "bar %d %.6g\n", radius, least + filled * (most - least)
}

function day_of(date) {
    return substr(date, 9, 2) + 0 " " months[substr(date, 6, 2) + 0]
}

function date_of(date) {
    return day_of(date) " " substr(date, 1, 4)
}

function show_day(row, part) {
    split(row, part, ",")
    show(day_of(part[2]))
    print "picture " convert("WeatherPictures", part[7])
    show(convert("WeatherLabels", part[7]))
    bar(4, part[4], 1, 41)
    show(part[4])
}

function show_year(city, part, at, week, year, highest) {
    split(rows[city, seen[city]], part, ",")
    year = substr(part[2], 1, 4)
    for (at = 1; at <= seen[city]; at++) {
        split(rows[city, at], part, ",")
        if (substr(part[2], 1, 4) != year) continue
        week = int((days_before[substr(part[2], 6, 2) + 0] + substr(part[2], 9, 2) - 1) / 7)
        if (!(week in highest) || part[4] + 0 > highest[week]) highest[week] = part[4] + 0
    }
    for (week = 0; week < 53; week++) if (week in highest) bar(2, highest[week], 1, 41)
    show("Weeks of " year)
}

function show_city(city, part, at) {
    split(rows[city, seen[city]], part, ",")
    print "bar 12 388"
    show(city)
    show(date_of(part[2]))
    print "picture " convert("WeatherPictures", part[7])
    show(convert("WeatherLabels", part[7]))
    for (at = 1; at <= 4; at++) {
        show(readings[at])
        show(part[columns[at]])
        show(units[at])
    }
    for (at = seen[city] - 6; at <= seen[city]; at++) if (at > 0) show_day(rows[city, at])
    show_year(city)
    for (at = 1; at <= 12; at++) show(months[at])
}

END {
    if (days == "" || days > numDates) days = numDates
    if (turn == "") turn = int(days / 2) + 1
    for (at = 1; at <= count; at++) {
        split(all[at], part, ",")
        if (dates[part[2]] <= days) rows[part[1], ++seen[part[1]]] = all[at]
    }
    show("Weather board")
    city = names[cities > 1 && turn <= days ? 1 : 0]
    split(rows[city, seen[city]], part, ",")
    print "picture " convert("WeatherPictures", part[7])
    # Capitals beyond ASCII are given, because toupper does not know them.
    show(capitals != "" ? capitals : toupper(city))
    show(convert("WeatherLabels", part[7]))
    show("high " part[4] " °C")
    show(date_of(part[2]))
    show("day " days " of " days)
    for (at = 0; at < cities; at++) show_city(names[at])
    show("Bars: highest temperature of the day and of the week, empty at -6 and full at 38 °C")
}
