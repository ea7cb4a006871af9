#include "Modules.h"

#include "SharedLibrary.h"

#include <filesystem>
#include <stdexcept>
#include <utility>

class Modules::Module {
public:
    explicit Module(const std::string& path) : m_library(path) {
        m_create = reinterpret_cast<Create>(m_library.find("korCreatePlugin"));
        if (!m_create)
            throw std::runtime_error(path + " exports no korCreatePlugin");
    }

    Create create() const { return m_create; }

private:
    SharedLibrary m_library;
    Create m_create = nullptr;
};

Modules::Modules(std::string folder) : m_folder(std::move(folder)) {}

Modules::~Modules() = default;

Modules::Create Modules::find(const std::string& kind) {
    auto found = m_modules.find(kind);
    if (found == m_modules.end()) {
        if (kind.find_first_of("/\\:") != std::string::npos)
            throw std::runtime_error("no kind of plug-in has such a name");
        // Systems look for a bare file name in folders of their own.
        const auto path = std::filesystem::absolute(std::filesystem::path(m_folder) / (kind + SharedLibrary::suffix));
        if (!std::filesystem::exists(path))
            throw std::runtime_error("there is no module " + path.string());
        found = m_modules.emplace(kind, std::make_unique<Module>(path.string())).first;
    }
    return found->second->create();
}
