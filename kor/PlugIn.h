#ifndef KOR_PLUGIN_H
#define KOR_PLUGIN_H

#include <orbel/host/korDataStructureHandler.h>

#include "SendCommand.h"

#include <exception>
#include <iostream>
#include <map>
#include <string>
#include <utility>

/// The settings of a plug-in, as the scene file has them. "FieldName" is the field it registers, "TypeStr" the object
/// type of a structure plug-in.
using KorSettings = std::map<std::string, std::string>;

/// What a plug-in module of Kor exports: makes the plug-in for the container that the host says is the local one. The
/// host owns it, and tells what an exception says.
extern "C" korDataHandler* korCreatePlugin(const KorSettings& settings);

/// What the plug-ins of Kor have in common: their settings, their place, and that nothing they throw leaves them.
/// `Base` is korDataHandler or korDataStructureHandler.
template <class Base>
class KorPlugIn : public Base {
public:
    KorPlugIn(std::string kind, const KorSettings& settings) : m_kind(std::move(kind)), m_settings(settings) {
        this->setLocalContainer();
        this->setLocalScene();
        this->init(this->getLocalScene().id);
        this->setFieldName(setting("FieldName").c_str());
        if (std::string table = setting("ConversionTable"); !table.empty()) {
            this->setConvTableNmae(table.data());
            this->setUseConvTable(1);
        }
    }

    char* getPluginName() override { return m_kind.data(); }
    int getPluginType() override { return 0; }
    char* getPluginFolder() override { return m_folder; }

protected:
    /// Empty when the scene file has no such setting.
    std::string setting(const std::string& name) const {
        const auto found = m_settings.find(name);
        return found == m_settings.end() ? std::string() : found->second;
    }

    /// Sets a property of the container that the plug-in serves, such as "ACTIVE" or "GEOM*TEXT".
    void setProperty(const std::string& property, const std::string& value) {
        sendCommand('#' + std::to_string(this->getCurrentContainer().id) + '*' + property + " SET " + value);
    }

    /// Reports what an action throws, by the plug-in's name. The rest of the scene goes on.
    template <class Action>
    void guarded(Action action) {
        try {
            action();
        } catch (const std::exception& error) {
            report(error.what());
        } catch (...) {
            report("threw something that is no exception");
        }
    }

private:
    void report(const std::string& what) {
        std::cerr << "Kor: plug-in " << m_kind << " on \"" << this->getContainerFullPath() << "\": " << what << '\n';
    }

    std::string m_kind;
    char m_folder[4] = "Kor";
    KorSettings m_settings;
};

#endif
