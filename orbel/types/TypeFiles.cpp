#include "TypeFiles.h"

#include <cstddef>
#include <cstdio>
#include <optional>
#include <utility>

namespace {

/// In blocks, because the size that a file system tells may be out of date or mean nothing at all. Nothing when
/// reading fails.
std::optional<std::string> readText(std::FILE* file) {
    std::string text;
    char block[65'536];
    while (const std::size_t size = std::fread(block, 1, sizeof block, file)) {
        const std::string_view bytes(block, size);
        const std::size_t end = bytes.find('\0');
        text += bytes.substr(0, end);
        if (end != std::string_view::npos)
            return text;
    }
    if (std::ferror(file) != 0)
        return std::nullopt;
    return text;
}

} // namespace

TypeFile readTypeFile(const char* path) {
    return readTypeFile(files::openForReading(path));
}

TypeFile readTypeFile(const files::File& file) {
    if (!file)
        return {TypeFileResult::cannotOpen, {}};
    std::optional<std::string> text = readText(file.get());
    if (!text)
        return {TypeFileResult::readError, {}};
    return {TypeFileResult::text, *std::move(text)};
}

std::string withoutComments(std::string_view text, std::vector<DroppedComment>* dropped) {
    std::string kept;
    kept.reserve(text.size());
    while (!text.empty()) {
        const std::size_t start = text.find("//");
        kept += text.substr(0, start);
        if (start == std::string_view::npos)
            break;
        text.remove_prefix(start);
        const std::size_t lineEnd = text.find('\n');
        const std::size_t size = lineEnd == std::string_view::npos ? text.size() : lineEnd;
        if (dropped)
            dropped->push_back({kept.size(), size});
        text.remove_prefix(size);
    }
    return kept;
}
