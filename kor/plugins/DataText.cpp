#include <kor/Leaf.h>
#include <kor/Utf8.h>

namespace {

/// Shows the value as a text. With "Text" it shows that expression, in which $(VALUE) is the converted value; with
/// "UpperCase" everything is in capitals.
class TextPlugIn : public KorLeaf, private DataVariableQuery {
public:
    explicit TextPlugIn(const KorSettings& settings) : KorLeaf("DataText", settings) {
        m_expression.registerVariableQuery(this);
    }

private:
    void show(const std::string& value) override {
        m_value = value;
        const std::string text = setting("Text").empty() ? value : evaluated();
        setProperty("GEOM*TEXT", setting("UpperCase") == "1" ? utf8::toUpper(text) : text);
    }

    std::string evaluated() {
        if (m_field != getField()) {
            m_field = getField();
            m_expression.setHostField(static_cast<Orbel*>(getOrbel()), m_field);
            m_expression.parse(setting("Text").data());
        }
        return m_expression.evaluate(getCurrentItem());
    }

    const char* queryVariable(const char* name) override {
        return std::string(name) == "VALUE" ? m_value.c_str() : parseMacro(name);
    }

    std::string m_value;
    DataExpression m_expression;
    DataField* m_field = nullptr;
};

} // namespace

korDataHandler* korCreatePlugin(const KorSettings& settings) {
    return new TextPlugIn(settings);
}
