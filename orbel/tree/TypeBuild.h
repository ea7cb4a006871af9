#ifndef ORBEL_TREE_TYPEBUILD_H
#define ORBEL_TREE_TYPEBUILD_H

class DataObjectType;

/// An object type whose fields are being made, or an array whose elements are; lives on the stack. Types may contain
/// each other in a circle and multiply from level to level, so what one text makes is bounded: no type inside itself,
/// not deeper than limits::maxTypeNesting, not more than limits::maxFieldsOfObject fields and elements in one object
/// nor limits::maxElements in one array.
class TypeBuild {
public:
    /// Null for an array.
    explicit TypeBuild(const DataObjectType* type);
    TypeBuild(const TypeBuild&) = delete;
    TypeBuild& operator=(const TypeBuild&) = delete;
    ~TypeBuild();

    /// Whether fields of this type may be made inside those under way.
    static bool admits(const DataObjectType& type);
    /// Count one field or element of the innermost build, which there must be; false when there have been too many. The
    /// outermost object gets all fields that its type declares: there are only as many as somebody has written down.
    static bool admitsField();
    static bool admitsElement();

private:
    const DataObjectType* m_type;
    TypeBuild* m_outer;
    int m_depth;
    int m_allowed;
    int m_made = 0;
};

#endif
