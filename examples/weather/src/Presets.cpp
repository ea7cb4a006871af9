#include "Presets.h"

#include "InputError.h"

#include <orbel/orbel.h>

#include <charconv>

namespace {

std::string namesOf(PluginPreSets& presets) {
    std::string names;
    for (int row = 0; row < presets.getNumRows(); ++row)
        names += (row == 0 ? "" : ", ") + presets.getRow(row)->at(static_cast<std::size_t>(presets.getNameColumn()));
    return names.empty() ? "none" : names;
}

} // namespace

Preset::Preset(const std::string& plugin, const std::string& name)
    : m_title(plugin + ' ' + name), m_presets(IDataHandlerImpl::getPreSets(plugin.c_str())) {
    if (!m_presets)
        throw InputError("QX_PreSets.csv: missing, or without presets of " + plugin);
    m_row = m_presets->findRow(name.c_str());
    if (!m_row)
        throw InputError("QX_PreSets.csv: " + plugin + " has no preset " + name + ", but " + namesOf(*m_presets));
}

const std::string& Preset::text(const char* variable) const {
    const int column = m_presets->getColumn(variable);
    if (column < 0 || static_cast<std::size_t>(column) >= m_row->size())
        fail(std::string("has no ") + variable);
    return (*m_row)[static_cast<std::size_t>(column)];
}

double Preset::number(const char* variable) const {
    const std::string& digits = text(variable);
    double value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (error != std::errc() || end != digits.data() + digits.size() || !(value > -1e6 && value < 1e6))
        fail(std::string("needs a number as ") + variable);
    return value;
}

void Preset::fail(const std::string& what) const {
    throw InputError("QX_PreSets.csv: " + m_title + ' ' + what);
}
