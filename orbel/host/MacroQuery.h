#ifndef ORBEL_HOST_MACROQUERY_H
#define ORBEL_HOST_MACROQUERY_H

#include <orbel/expr/DataVariableQuery.h>
#include <orbel/host/korDataHandler.h>

/// Lets an expression of a plug-in use the macros of its handler, such as "$(SCENE_NAME)", for names that the tree does
/// not hold. `handler` must outlive it.
class MacroQuery : public DataVariableQuery {
public:
    /// Answers with the macros of `handler`.
    explicit MacroQuery(korDataHandler& handler) : m_handler(handler) {}

    const char* queryVariable(const char* name) override { return m_handler.parseMacro(name); }

private:
    korDataHandler& m_handler;
};

#endif
