#ifndef ORBEL_TYPES_TYPEPARSELISTENER_H
#define ORBEL_TYPES_TYPEPARSELISTENER_H

#include <string_view>

class DataObjectField;
class DataObjectType;

/// Hears what the parser of type definitions makes of a text. All views point into the text that is parsed, so their
/// position in it is known. A listener must not change types.
class TypeParseListener {
public:
    virtual ~TypeParseListener() = default;

    /// A "#" comment, without the line end that ends it.
    virtual void onCommentSkipped(std::string_view /*comment*/) {}
    virtual void onTypeCreated(std::string_view name) = 0;
    virtual void onTypeExtended(std::string_view name) = 0;
    /// All fields of a type statement are read, whether the type was created or extended.
    virtual void onTypeRead(std::string_view /*statement*/, DataObjectType& /*type*/) {}
    /// The field belongs to the type from now on.
    virtual void onFieldAdded(std::string_view /*statement*/, DataObjectField& /*field*/) {}
    /// A statement without "=", which has no effect.
    virtual void onStatementIgnored(std::string_view /*statement*/) {}
    /// A field statement without a known type; never an empty one.
    virtual void onFieldIgnored(std::string_view statement) = 0;
    /// What stands in a body before its "{" or behind its "}" and has no effect; never an empty text.
    virtual void onBodyTextIgnored(std::string_view /*text*/) {}
};

#endif
