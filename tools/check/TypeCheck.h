#ifndef ORBEL_TOOLS_CHECK_TYPECHECK_H
#define ORBEL_TOOLS_CHECK_TYPECHECK_H

#include <orbel/types/DataObjectTypesTable.h>
#include <orbel/types/TypeParseListener.h>
#include <tools/SourceText.h>
#include <tools/check/Finding.h>

#include <deque>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

/// Reads type files as the library does, one after the other, and reports what has no effect in them.
class TypeCheck : private TypeParseListener {
public:
    explicit TypeCheck(Findings& findings);

    /// Throws Trouble when the file cannot be read.
    void read(const std::string& path);
    /// Reports what only all files together tell. To be called once, behind the last file.
    void finish();

private:
    struct File {
        File(std::string filePath, std::string text) : path(std::move(filePath)), source(std::move(text)) {}

        std::string path;
        SourceText source;
    };

    struct Place {
        const File* file = nullptr;
        TextPosition position;
    };

    /// A field statement whose type was not known.
    struct UnknownType {
        const File* file;
        std::string_view statement;
        std::string_view word;
        bool isInsideItself;
    };

    struct KnownType {
        Place place;
        std::map<std::string, Place, std::less<>> fields;
        std::set<std::string, std::less<>> fieldTypes;
    };

    /// A field statement that was added, taken apart as the parser does. All views are into the statement.
    struct FieldParts {
        std::string_view statement;
        std::string_view name;
        bool hasCount = false;
        bool isCountClosed = false;
        std::string_view count;
        std::string_view behindCount;
        bool hasDefault = false;
        std::string_view defaultValue;
    };

    void onCommentSkipped(std::string_view comment) override;
    void onTypeCreated(std::string_view name) override;
    void onTypeExtended(std::string_view name) override;
    void onTypeRead(std::string_view statement, DataObjectType& type) override;
    void onFieldAdded(std::string_view statement, DataObjectField& field) override;
    void onStatementIgnored(std::string_view statement) override;
    void onFieldIgnored(std::string_view statement) override;
    void onBodyTextIgnored(std::string_view text) override;

    void checkFile();
    void checkTypeName(std::string_view name);
    void checkNesting(std::string_view statement);
    void checkEmptyStatements(std::string_view statement);
    static FieldParts partsOf(std::string_view statement);
    void checkName(const FieldParts& parts);
    void checkCount(const FieldParts& parts, int size);
    void checkDefault(const FieldParts& parts);
    void checkCircle(const std::string& fieldType, std::string_view statement);
    bool contains(const std::string& outer, std::string_view inner) const;
    bool followsDefault(std::string_view statement) const;
    void reportUnknown(const UnknownType& field);

    /// The part is one of the kept text of the current file, or of `file`.
    void report(const Rule& rule, Effect effect, std::string_view part, const std::string& message);
    void report(const File& file, const Rule& rule, Effect effect, std::string_view part, const std::string& message);
    void reportInFile(const Rule& rule, Effect effect, std::size_t from, std::size_t to, const std::string& message);
    std::string nameOf(const Place& place) const;
    Place placeOf(std::string_view part) const;

    Findings& m_findings;
    DataObjectTypesTable m_table;
    std::deque<File> m_files;
    File* m_file = nullptr;
    std::map<std::string, KnownType, std::less<>> m_types;
    std::vector<UnknownType> m_unknownTypes;

    // Of the statement that is being read.
    bool m_inType = false;
    bool m_isExtended = false;
    std::size_t m_fieldsAdded = 0;
    std::string_view m_typeName;
    /// Comments and field statements of the body.
    std::vector<std::string_view> m_parts;
    std::string_view m_lastDefault;
};

#endif
