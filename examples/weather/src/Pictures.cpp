#include "Pictures.h"

#include "InputError.h"
#include "Tables.h"

#include <orbel/orbel.h>

#include <fstream>
#include <iterator>
#include <optional>
#include <string_view>

namespace {

/// Names become identifiers of the drawing.
bool isFileName(std::string_view name) {
    constexpr std::string_view allowed = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789._-";
    return !name.empty() && name.find_first_not_of(allowed) == std::string_view::npos;
}

std::optional<std::string> readAll(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file)
        return std::nullopt;
    return std::string(std::istreambuf_iterator<char>(file), {});
}

/// What stands between two texts; nothing when they are not there in this order.
std::optional<std::string> between(std::string_view text, std::string_view before, std::string_view behind) {
    const std::size_t start = text.find(before);
    if (start == std::string_view::npos)
        return std::nullopt;
    text.remove_prefix(start + before.size());
    const std::size_t end = text.rfind(behind);
    if (end == std::string_view::npos)
        return std::nullopt;
    return std::string(text.substr(0, end));
}

std::optional<Picture> parse(const std::string& text) {
    const auto element = between(text, "<svg", "</svg>");
    const std::size_t open = element ? element->find('>') : std::string::npos;
    if (open == std::string::npos)
        return std::nullopt;
    const std::string tag = element->substr(0, open);
    const std::size_t box = tag.find("viewBox=\"");
    const std::size_t start = box == std::string::npos ? box : box + std::string_view("viewBox=\"").size();
    const std::size_t end = start == std::string::npos ? start : tag.find('"', start);
    if (end == std::string::npos)
        return std::nullopt;
    return Picture{tag.substr(start, end - start), element->substr(open + 1)};
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
    if (!isFileName(name))
        throw InputError(path + ": not a name that pictures can have");
    const auto text = readAll(path);
    if (!text && IDataHandlerImpl::CheckImageIfExists())
        throw InputError(path + ": cannot be opened");
    if (!text)
        return;
    auto picture = parse(*text);
    if (!picture)
        throw InputError(path + ": no svg element with a viewBox");
    m_pictures.emplace(name, std::move(*picture));
}
