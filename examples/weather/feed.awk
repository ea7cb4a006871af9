# Writes the observations as command texts for Kor, one day after the other:
#
#     awk -f feed.awk [-v days=N] [-v turn=N] weather.csv | Kor --commands - scene.json
#
# A line with "~" ends a day. The headline follows the first city, from day `turn` on the second; without `turn` that
# is half way.

BEGIN {
    FS = ","
    split("Jan Feb Mar Apr May Jun Jul Aug Sep Oct Nov Dec", months, " ")
    split("0 31 59 90 120 151 181 212 243 273 304 334", days_before, " ")
}

{ sub(/\r$/, "") }

FNR == 1 { next }

!($1 in number) { number[$1] = cities++; names[number[$1]] = $1 }
!($2 in day_of) { day_of[$2] = ++last; dates[last] = $2 }
{ rows[day_of[$2], number[$1]] = $0 }

function day_and_month(date) {
    return substr(date, 9, 2) + 0 " " months[substr(date, 6, 2) + 0]
}

# From 0; the last one has a day or two.
function week_of_year(date) {
    return int((days_before[substr(date, 6, 2) + 0] + substr(date, 9, 2) - 1) / 7)
}

function write_year(city, part,    week, path) {
    path = "cities[" city "]/city/year"
    if (substr(part[2], 1, 4) != year[city]) {
        year[city] = substr(part[2], 1, 4)
        for (week = 0; week < 53; week++) print path "[" week "]/high = "
        print "cities[" city "]/city/weeks = Weeks of " year[city]
    }
    week = week_of_year(part[2])
    if (!((city, year[city], week) in high) || part[4] + 0 > high[city, year[city], week] + 0) {
        high[city, year[city], week] = part[4]
        print path "[" week "]/high = " part[4]
    }
}

function write_city(city, row,    part, path) {
    split(row, part, ",")
    path = "cities[" city "]/city"
    print path "/today = {date = " day_and_month(part[2]) " " substr(part[2], 1, 4) "; day = " day_and_month(part[2]) \
        "; precipitation = " part[3] "; temp_max = " part[4] "; temp_min = " part[5] "; wind = " part[6] \
        "; weather = " part[7] "; city = " part[1] "}"
    # The elements are copied in rising order, so each still holds what the one before it is to get.
    print "C " path "/week[0-5] = " path "/week[1-6]; " path "/week[6]/day = " path "/today"
    write_year(city, part)
}

END {
    if (days == "" || days > last) days = last
    if (turn == "") turn = int(days / 2) + 1
    for (city = 0; city < cities; city++) print "cities[" city "]/city/name = " names[city]
    for (day = 1; day <= days; day++) {
        if (day == 1) print "L headline/today = cities[0]/city/today"
        if (day == turn && cities > 1) print "L headline/today = cities[1]/city/today"
        for (city = 0; city < cities; city++)
            if ((day, city) in rows) write_city(city, rows[day, city])
        print "status/day = " day " of " days
        print "~"
    }
}
