#ifndef ORBEL_TYPES_TYPERENDERING_H
#define ORBEL_TYPES_TYPERENDERING_H

#include <iosfwd>

class DataObjectType;

/// What the renderings of types and of their fields share.
namespace rendering {

/// One level deeper for its lifetime.
class Indentation {
public:
    Indentation();
    ~Indentation();
    Indentation(const Indentation&) = delete;
    Indentation& operator=(const Indentation&) = delete;
};

/// The fields of a type are being written for its lifetime.
class Expansion {
public:
    explicit Expansion(const DataObjectType& type);
    ~Expansion();
    Expansion(const Expansion&) = delete;
    Expansion& operator=(const Expansion&) = delete;

    /// Whether the fields of this type may be written now: neither inside itself nor too deep nor too often.
    static bool isPossible(const DataObjectType& type);
};

void writeIndentation(std::ostream& os);

} // namespace rendering

#endif
