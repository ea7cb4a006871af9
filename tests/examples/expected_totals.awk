# Works out from the observations alone what the weather board has to count.
#
# A plug-in that wants only changes is told its first value in any case, and from then on texts that differ from the
# one before. The others are told every store. A value starts as one space.

BEGIN { FS = "," }

{ sub(/\r$/, "") }

NR == 1 { next }

# Joined with a letter, because bare fields that look like numbers are compared as numbers.
function differs(key, text, before) {
    before = (key in texts) ? texts[key] : " "
    texts[key] = text
    return ("t" before) != ("t" text)
}

# How often one plug-in is told that this text is stored.
function tell(key, text) {
    if (!differs(key, text) && (key in told)) return 0
    told[key] = 1
    return 1
}

function write_today(column, key) {
    today++ # the date
    for (column = 3; column <= 6; column++) today += tell($1 " today " column, $column)
    # The weather is wanted as it is, as a label and as a picture.
    today += 3 * tell($1 " today 7", $7)
    values += 6
}

function write_week(slot, date, sky) {
    seen[$1]++
    values += seen[$1] < 7 ? seen[$1] : 7
    week++ # the highs
    for (slot = 0; slot < 7; slot++) {
        date = slot == 6 ? $2 : last_text($1 " date " (slot + 1))
        sky = slot == 6 ? $7 : last_text($1 " sky " (slot + 1))
        week += tell($1 " date " slot, date) + 3 * tell($1 " sky " slot, sky)
    }
}

function last_text(key) {
    return (key in texts) ? texts[key] : " "
}

{
    if (!($1 in seen)) names[cities++] = $1
    if (!($2 in dates)) { dates[$2] = 1; in_order[days++] = $2 }
    skies[$1, $2] = $7
    write_today()
    write_week()
}

# The headline follows the first city and from half way on the second: its name, and its latest weather.
function follow(city, sky) {
    headline += tell("headline city", city)
    headline += tell("headline sky", sky)
}

function latest(city, day) {
    while (day >= 0 && !((city, in_order[day]) in skies)) day--
    return day >= 0 ? skies[city, in_order[day]] : " "
}

END {
    # Dates are written in order, whatever the order of the file.
    for (i = 1; i < days; i++)
        for (j = i; j > 0 && in_order[j] < in_order[j - 1]; j--) {
            swap = in_order[j]; in_order[j] = in_order[j - 1]; in_order[j - 1] = swap
        }
    follow(names[0], " ")
    for (day = 0; day < days; day++) {
        city = names[cities > 1 && day >= int(days / 2) ? 1 : 0]
        # A city that has no observation of the day stays as it is.
        if ((city, in_order[day]) in skies) headline += tell("headline sky", skies[city, in_order[day]])
        if (cities > 1 && day + 1 == int(days / 2)) follow(names[1], latest(names[1], day))
    }
    printf "Totals: %d days, %d values; callbacks %d today, %d week, %d headline\n", days, values, today, week, headline
}
