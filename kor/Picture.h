#ifndef KOR_PICTURE_H
#define KOR_PICTURE_H

#include <optional>
#include <string>
#include <string_view>

/// A drawing that another one can hold.
struct Picture {
    std::string viewBox;
    /// What stands between the svg tags.
    std::string content;

    bool operator==(const Picture&) const = default;
};

/// Whether a picture may have this file name: letters, digits, ".", "-" and "_", which identifiers of a drawing hold.
bool isPictureName(std::string_view name);

/// Nothing when the text has no svg element with a viewBox.
std::optional<Picture> parsePicture(const std::string& text);

#endif
