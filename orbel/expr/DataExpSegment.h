#ifndef ORBEL_EXPR_DATAEXPSEGMENT_H
#define ORBEL_EXPR_DATAEXPSEGMENT_H

#include <orbel/foundation/Export.h>
#include <orbel/tree/FieldRef.h>

#include <string>
#include <string_view>

class DataExpression;
class DataNode;
class ExpressionWatch;

/// One piece of a parsed expression. Only its DataExpression fills and evaluates it.
///
/// A field that it has found is held with a reference of this segment, so deleteChildren spares the field. Whoever
/// deletes it nevertheless does no harm: the segment then looks its name up again.
class ORBEL_API DataExpSegment {
public:
    DataExpSegment();
    DataExpSegment(const DataExpSegment&) = delete;
    DataExpSegment& operator=(const DataExpSegment&) = delete;
    /// Releases the reference on the field.
    ~DataExpSegment();

private:
    friend class DataExpression;

    enum Kind : int { FieldReference = 0, Literal = 1, Index = 2, Refresh = 3, ParentPath = 4 };

    void fill(Kind kind, std::string_view text);
    /// Fills from a text that starts with "$("; `kind` is FieldReference or Refresh.
    void fillReference(Kind kind, std::string_view written, const FieldRef& context, const ExpressionWatch& watch);

    /// Null when there is none. Belongs to the field, the segment, or a process-wide buffer. May run callbacks that
    /// destroy this segment, which the watch then tells. `context` is where names are looked up.
    const char* evaluate(int index, const FieldRef& context, ExpressionWatch& watch);
    const char* fieldValue(int index, const FieldRef& context, const ExpressionWatch& watch);
    void refresh(const FieldRef& context, ExpressionWatch& watch);

    void hold(DataField* field);
    void release();

    Kind m_kind = FieldReference;
    std::string m_text;
    FieldRef m_field;
    int m_firstIndex = -1;
};

#endif
