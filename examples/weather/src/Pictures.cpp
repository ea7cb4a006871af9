#include "Pictures.h"

#include "InputError.h"
#include "Tables.h"

#include <orbel/orbel.h>

#include <fstream>
#include <iterator>
#include <optional>

namespace {

std::optional<std::string> readAll(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return std::nullopt;
    return std::string(std::istreambuf_iterator<char>(file), {});
}

} // namespace

Pictures::Pictures(const std::set<std::string>& skies) {
    // What has not been observed yet is a blank.
    load(convert(pictureTable, " "));
    for (const std::string& sky : skies)
        load(convert(pictureTable, sky));
}

void Pictures::load(const std::string& name) {
    const std::string path = "pictures/" + name;
    if (m_pictures.count(name) != 0)
        return;
    if (!isPictureName(name))
        throw InputError(path + ": not a name that pictures can have");
    const auto text = readAll(path);
    if (!text && IDataHandlerImpl::CheckImageIfExists())
        throw InputError(path + ": cannot be opened");
    if (!text)
        return;
    auto picture = parsePicture(*text);
    if (!picture)
        throw InputError(path + ": no svg element with a viewBox");
    m_pictures.emplace(name, std::move(*picture));
}
