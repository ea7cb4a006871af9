#ifndef KOR_MODULES_H
#define KOR_MODULES_H

#include "PlugIn.h"

#include <memory>
#include <string>
#include <unordered_map>

/// The plug-in modules of a folder, loaded when a kind is needed first and kept until the end. The module of the kind
/// "DataText" is the file "DataText.so", on Windows "DataText.dll".
class Modules {
public:
    using Create = korDataHandler* (*)(const KorSettings& settings);

    explicit Modules(std::string folder);
    Modules(const Modules&) = delete;
    Modules& operator=(const Modules&) = delete;
    ~Modules();

    /// What makes plug-ins of a kind. Throws std::runtime_error with the reason when there is no such module.
    Create find(const std::string& kind);

private:
    class Module;

    std::string m_folder;
    std::unordered_map<std::string, std::unique_ptr<Module>> m_modules;
};

#endif
