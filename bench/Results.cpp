#include "Results.h"

#include <algorithm>

namespace {

void append(std::vector<std::string>& names, const std::string& name) {
    if (std::find(names.begin(), names.end(), name) == names.end())
        names.push_back(name);
}

} // namespace

double medianOf(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

void Results::expect(const std::string& operation, const std::string& subject) {
    append(m_operations, operation);
    append(m_subjects[operation], subject);
}

Samples& Results::at(const std::string& operation, const std::string& subject, std::size_t items) {
    return m_rows[{operation, items}][subject];
}

const Samples* Results::find(const std::string& operation, const std::string& subject, std::size_t items) const {
    const auto row = m_rows.find({operation, items});
    if (row == m_rows.end())
        return nullptr;
    const auto samples = row->second.find(subject);
    return samples == row->second.end() ? nullptr : &samples->second;
}

std::vector<std::string> Results::subjects(const std::string& operation) const {
    const auto found = m_subjects.find(operation);
    return found == m_subjects.end() ? std::vector<std::string>() : found->second;
}

bool Results::has(const std::string& operation, const std::string& subject) const {
    const std::vector<std::string> names = subjects(operation);
    return std::find(names.begin(), names.end(), subject) != names.end();
}

std::vector<std::size_t> Results::sizes(const std::string& operation) const {
    std::vector<std::size_t> all;
    for (const auto& [row, subjects] : m_rows)
        if (row.first == operation)
            all.push_back(row.second);
    return all;
}

std::optional<double> Results::nanoseconds(const std::string& operation, const std::string& subject,
                                           std::size_t items) const {
    const Samples* samples = find(operation, subject, items);
    if (!samples || samples->nanoseconds.empty())
        return std::nullopt;
    return medianOf(samples->nanoseconds);
}

std::optional<double> Results::ratio(const Measured& above, const Measured& below) const {
    const Samples* one = find(above.operation, above.subject, above.items);
    const Samples* other = find(below.operation, below.subject, below.items);
    if (!one || !other || one->nanoseconds.empty() || other->nanoseconds.empty())
        return std::nullopt;
    if (one->nanoseconds.size() != other->nanoseconds.size())
        return medianOf(one->nanoseconds) / medianOf(other->nanoseconds);
    std::vector<double> rounds;
    for (std::size_t round = 0; round < one->nanoseconds.size(); ++round)
        rounds.push_back(one->nanoseconds[round] / other->nanoseconds[round]);
    return medianOf(std::move(rounds));
}

std::optional<double> Results::ratio(const std::string& operation, const std::string& subject, const std::string& floor,
                                     std::size_t items) const {
    return ratio({operation, subject, items}, {operation, floor, items});
}
