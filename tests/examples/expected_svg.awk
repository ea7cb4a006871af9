# Works out from the operator's files alone what weather.svg shows, as svg_listing.awk lists it.
#
#     awk -f expected_svg.awk QX_ConvTables_weather.csv QX_PreSets.csv weather.csv
#
# The observations are in order of dates.

BEGIN {
    FS = ","
    split("January February March April May June July August September October November December", months, " ")
    split("0 31 59 90 120 151 181 212 243 273 304 334", days_before, " ")
    split("4 5 3 6", columns, " ")
    split("temp_max temp_min precipitation wind", readings, " ")
}

{ sub(/\r$/, "") }

FNR == 1 { file++ }

# A remark.
/^,/ { next }

file == 1 && $1 == "__TABLE__" { table = $2; next }
file == 1 { conversions[table, $1] = $2; next }

file == 2 && $1 == "__PLUGIN__" { plugin = $2; next }
file == 2 { first[plugin, $1] = $2; second[plugin, $1] = $3; third[plugin, $1] = $4; next }

FNR == 1 { empty = first["WeatherChart", "bars"]; full = second["WeatherChart", "bars"]; next }

{
    if (!($1 in seen)) names[cities++] = $1
    rows[$1, ++seen[$1]] = $0
    if (!($2 in dates)) { dates[$2] = 1; days++ }
    newest = $2
}

function convert(table, text) {
    return ((table, text) in conversions) ? conversions[table, text] : conversions[table, "__DEFAULT__"]
}

function show(text) {
    print "text " text
}

function bar(kind, celsius, height, filled) {
    filled = (celsius - empty) / (full - empty)
    if (filled < 0) filled = 0
    if (filled > 1) filled = 1
    filled *= height
    printf "bar %s %.6g\n", kind, filled < 1 ? 1 : filled
}

function long_date(date) {
    return substr(date, 9, 2) + 0 " " months[substr(date, 6, 2) + 0] " " substr(date, 1, 4)
}

function show_today(row, part, at) {
    split(row, part, ",")
    print "picture " convert("WeatherPictures", part[7])
    show(convert("WeatherLabels", part[7]))
    for (at = 1; at <= 4; at++) {
        show(first["WeatherReading", readings[at]])
        show(sprintf("%." third["WeatherReading", readings[at]] "f", part[columns[at]]))
        show(second["WeatherReading", readings[at]])
    }
    show("Weeks of " substr(part[2], 1, 4))
}

function show_day(row, part) {
    # What was never observed is a blank to the tables.
    if (row == "") {
        print "picture " convert("WeatherPictures", "")
        show(convert("WeatherLabels", ""))
        return
    }
    split(row, part, ",")
    print "picture " convert("WeatherPictures", part[7])
    show(substr(part[2], 9, 2) + 0 " " substr(months[substr(part[2], 6, 2) + 0], 1, 3))
    show(convert("WeatherLabels", part[7]))
    bar("week", part[4], 64)
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
    for (week = 0; week < 53; week++)
        if (week in highest) bar("year", highest[week], 56)
    for (at = 1; at <= 12; at++) show(substr(months[at], 1, 3))
}

function show_city(city, part, at) {
    show(city)
    split(rows[city, seen[city]], part, ",")
    show(long_date(part[2]))
    show_today(rows[city, seen[city]])
    for (at = seen[city] - 6; at <= seen[city]; at++) show_day(at > 0 ? rows[city, at] : "")
    show_year(city)
}

END {
    show("Weather board")
    city = names[cities > 1 ? 1 : 0]
    split(rows[city, seen[city]], part, ",")
    # Capitals beyond ASCII are given, because toupper does not know them.
    show((capitals != "" ? capitals : toupper(city)) ": " convert("WeatherLabels", part[7]) ", high " part[4])
    show(long_date(newest))
    show("day " days " of " days)
    for (at = 0; at < cities; at++) show_city(names[at])
    show("Bars: highest temperature of the day and of the week, empty at " empty " and full at " full " " \
        second["WeatherReading", "temp_max"])
}
