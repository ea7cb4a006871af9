#include "Tables.h"

#include "BoardPlugin.h"

namespace {

class Converter : public BoardPlugin {
public:
    explicit Converter(const std::string& table) : BoardPlugin("WeatherConverter") { convertBy(table); }

    using BoardPlugin::onDataChange;
    void onDataChange(char* /*fieldName*/, char* value) override { m_converted = value; }

    const std::string& converted() const { return m_converted; }

private:
    std::string m_converted;
};

} // namespace

std::string convert(const std::string& table, const std::string& text) {
    char name[] = "text";
    DataValue field(name);
    field.setData(text.c_str());
    Converter converter(table);
    // Whoever joins a field that has a value is told it.
    converter.registerHandler(&field);
    return converter.converted();
}
