# Works out from the observations alone the first line of each snapshot: the headline is the first city's, and from half
# way on the second's, with the name in capitals and the weather in the words of the operator's table.
#
#     awk -v table=WeatherLabels -f expected_headlines.awk QX_ConvTables_weather.csv weather.csv

BEGIN { FS = "," }

{ sub(/\r$/, "") }

# A remark.
/^,/ { next }

FNR == NR {
    if ($1 == "__TABLE__") current = $2
    else if (current == table) words[$1] = $2
    next
}

FNR == 1 { next }

{
    if (!($1 in index_of)) { index_of[$1] = ++cities; names[cities] = $1 }
    if (!($2 in known)) { known[$2] = 1; dates[++days] = $2 }
    highs[$1, $2] = $4
    skies[$1, $2] = $7
}

function print_line(day, city, week, back) {
    city = names[day < int(days / 2) ? 1 : 2]
    for (back = 6; back >= 0; back--)
        if (day > back) week = week " " highs[city, dates[day - back]]
    printf "%s  day %d of %d  %s: %s, high %s; highs%s\n", \
        dates[day], day, days, toupper(city), words[skies[city, dates[day]]], highs[city, dates[day]], week
}

END {
    # Both cities have every day of the file, in order.
    print_line(1)
    for (quarter = 1; quarter <= 4; quarter++)
        print_line(int(quarter * days / 4))
}
