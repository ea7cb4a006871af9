#ifndef ORBEL_TYPES_TYPEFILES_H
#define ORBEL_TYPES_TYPEFILES_H

#include "../foundation/platform/Files.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

enum class TypeFileResult { text, cannotOpen, readError };

struct TypeFile {
    TypeFileResult result;
    /// With its comments; empty unless the file was read.
    std::string text;
};

/// Reads one type file: its bytes up to the first NUL.
TypeFile readTypeFile(const char* path);
/// Null is one that cannot be opened.
TypeFile readTypeFile(const files::File& file);

struct DroppedComment {
    /// Where the comment would stand in the text that is kept.
    std::size_t at;
    /// The "//" counted.
    std::size_t size;
};

/// Drops every "//" up to, not including, the next line feed or the end of the text.
/// Contract: quotes and braces do not protect; a web address in a default text is cut.
/// `dropped`, unless it is null, is told of every comment, in order.
std::string withoutComments(std::string_view text, std::vector<DroppedComment>* dropped = nullptr);

#endif
