#include "WeatherCsv.h"

#include "Dates.h"
#include "InputError.h"
#include "Utf8.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <fstream>
#include <map>
#include <string_view>

namespace {

constexpr std::string_view header = "location,date,precipitation,temp_max,temp_min,wind,weather";
constexpr std::size_t longestText = 40;

std::vector<std::string_view> splitAtCommas(std::string_view line) {
    std::vector<std::string_view> fields;
    for (std::size_t comma; (comma = line.find(',')) != std::string_view::npos; line.remove_prefix(comma + 1))
        fields.push_back(line.substr(0, comma));
    fields.push_back(line);
    return fields;
}

bool isNumber(std::string_view text) {
    double value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    return error == std::errc() && end == text.data() + text.size() && std::isfinite(value);
}

/// Paths and commands give these characters a meaning, and drop blanks at either end.
bool isPlain(std::string_view text) {
    return text.find_first_of("/:[]*=;{}\"") == std::string_view::npos && text.find("..") == std::string_view::npos &&
           text.front() != ' ' && text.back() != ' ';
}

/// Whatever the file holds is shown in a terminal, which must not take it for an order.
bool isPrintable(std::string_view text) {
    const auto codePoints = utf8::decode(text);
    return codePoints && std::none_of(codePoints->begin(), codePoints->end(),
                                      [](char32_t c) { return c < 0x20 || (c >= 0x7f && c < 0xa0); });
}

class Reader {
public:
    explicit Reader(std::string path) : m_path(std::move(path)) {}

    Weather read() {
        std::ifstream file(m_path);
        if (!file)
            throw InputError(m_path + ": cannot be opened");
        std::string line;
        while (nextLine(file, line)) {
            if (m_lineNumber > 1)
                readObservation(line);
            else if (line != header)
                fail("expected the header \"" + std::string(header) + '"');
        }
        if (file.bad() || m_lineNumber == 0)
            throw InputError(m_path + ": cannot be read, or is empty");
        if (m_days.empty())
            throw InputError(m_path + ": holds no observations");

        for (auto& [date, observations] : m_days)
            m_weather.days.push_back(std::move(observations));
        for (auto& day : m_weather.days)
            std::sort(day.begin(), day.end(),
                      [](const Observation& a, const Observation& b) { return a.city < b.city; });
        return std::move(m_weather);
    }

private:
    bool nextLine(std::ifstream& file, std::string& line) {
        if (!std::getline(file, line))
            return false;
        ++m_lineNumber;
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        return true;
    }

    void readObservation(std::string_view line) {
        if (!isPrintable(line))
            fail("holds bytes that are not printable UTF-8");
        const auto fields = splitAtCommas(line);
        if (fields.size() != columnNames.size() + 1)
            fail("expected " + std::to_string(columnNames.size() + 1) + " fields, found " +
                 std::to_string(fields.size()));
        for (const std::string_view field : fields)
            if (field.empty() || field.size() > longestText)
                fail("a field is empty or longer than " + std::to_string(longestText) + " bytes");
        if (!isPlain(fields.front()) || !isPlain(fields.back()))
            fail("the city or the weather holds a character that commands use");

        Observation observation;
        observation.city = cityIndex(fields[0]);
        std::copy(fields.begin() + 1, fields.end(), observation.texts.begin());
        if (!dates::isDate(observation.text(Column::Date)))
            fail("\"" + observation.text(Column::Date) + "\" is not a date");
        for (const Column column : {Column::Precipitation, Column::High, Column::Low, Column::Wind})
            if (!isNumber(observation.text(column)))
                fail("\"" + observation.text(column) + "\" is not a number");

        auto& day = m_days[observation.text(Column::Date)];
        if (std::any_of(day.begin(), day.end(),
                        [&](const Observation& other) { return other.city == observation.city; }))
            fail("a second observation of " + std::string(fields[0]) + " on " + observation.text(Column::Date));
        day.push_back(std::move(observation));
    }

    std::size_t cityIndex(std::string_view name) {
        auto& cities = m_weather.cities;
        const auto found = std::find(cities.begin(), cities.end(), name);
        if (found != cities.end())
            return static_cast<std::size_t>(found - cities.begin());
        cities.emplace_back(name);
        return cities.size() - 1;
    }

    [[noreturn]] void fail(const std::string& what) const {
        throw InputError(m_path + ':' + std::to_string(m_lineNumber) + ": " + what);
    }

    std::string m_path;
    std::size_t m_lineNumber = 0;
    Weather m_weather;
    std::map<std::string, std::vector<Observation>> m_days;
};

} // namespace

Weather readWeatherCsv(const std::string& path) {
    return Reader(path).read();
}
