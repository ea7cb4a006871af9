#ifndef KOR_LEAF_H
#define KOR_LEAF_H

#include "Numbers.h"
#include "PlugIn.h"

#include <orbel/orbel.h>

#include <string>
#include <vector>

/// A plug-in that shows one value on its container. The setting "ConversionTable" converts the value first; "Preset"
/// names a row of the plug-in's presets, whose columns are properties of the geometry, such as "COLOUR".
class KorLeaf : public KorPlugIn<korDataHandler> {
public:
    using KorPlugIn::KorPlugIn;
    using KorPlugIn::onDataChange;

    void onInit() override {
        guarded([this] { usePreset(); });
    }

    void onDataChange(char* /*fieldName*/, char* value) final {
        guarded([this, value] { show(value); });
    }

protected:
    virtual void show(const std::string& value) = 0;

    double number(const std::string& name, double fallback) const {
        return numbers::read(setting(name)).value_or(fallback);
    }

private:
    void usePreset() {
        PluginPreSets* const presets = IDataHandlerImpl::getPreSets(getPluginName());
        const std::string wanted = setting("Preset");
        const std::vector<std::string>* const row = presets ? presets->findRow(wanted.c_str()) : nullptr;
        if (!row)
            return;
        for (const char* property : {"COLOUR", "SIZE", "BOLD", "WIDTH", "HEIGHT"}) {
            const int column = presets->getColumn(property);
            if (column >= 0 && column < static_cast<int>(row->size()))
                setProperty(std::string("GEOM*") + property, (*row)[static_cast<std::size_t>(column)]);
        }
    }
};

#endif
