#ifndef ORBEL_TYPES_TYPEFILES_H
#define ORBEL_TYPES_TYPEFILES_H

#include "../foundation/platform/Files.h"

#include <string>
#include <string_view>

enum class TypeFileResult { text, cannotOpen, readError };

struct TypeFile {
    TypeFileResult result;
    /// Ready to be parsed; empty unless the file was read.
    std::string text;
};

/// Reads one type file: its bytes up to the first NUL, without comments.
TypeFile readTypeFile(const char* path);
/// Null is one that cannot be opened.
TypeFile readTypeFile(const files::File& file);

/// Drops every "//" up to, not including, the next line feed or the end of the text.
/// Contract: quotes and braces do not protect; a web address in a default text is cut.
std::string withoutComments(std::string_view text);

#endif
