#ifndef FUZZ_SHOW_H
#define FUZZ_SHOW_H

#include <orbel/orbel.h>
#include <support/Text.h>
#include <support/TreeCleanup.h>

#include <cstddef>
#include <string>
#include <string_view>

/// Hears of every change and looks at what it is told.
class Listener : public DataHandler {
public:
    using DataHandler::DataHandler;

    void onChange(DataField& field, bool changed) override;
    void onChange(DataField& field, bool changed, int from, int to) override;
    void onTypeChange(DataField& field, char* typeName) override;

private:
    std::size_t m_heard = 0;
};

/// A small tree with an item of each kind, values in it, links and listeners: what commands and paths are tried on.
///
///     a b              values
///     list             a value of three texts
///     scene            a node with title and a node text, which has size
///     caption          an object of the type Label
///     points           an array of three Points with x and y
///     cities           a hash table with the entries Oslo and Rome, Points too
///     follower         a value that follows a
///     twin             a node that follows scene
class Show {
public:
    Show();
    Show(const Show&) = delete;
    Show& operator=(const Show&) = delete;
    /// Checks that nothing is left.
    ~Show();

    DataField* at(const std::string& path, int flag = 1) { return root().getField(Text(path), 0, flag); }
    /// Empty where an input has left no value: one may make a Point of the Label, say.
    std::string textAt(const std::string& path);
    Orbel& root() { return *m_root; }

    /// Checks whatever must hold for any tree.
    void checkSound();
    /// All of it, as text.
    std::string dumped();

private:
    Tree<Orbel> m_root;
    Listener m_onValue;
    Listener m_onNode;
    Listener m_onArray;
};

/// Whether a text asks for more than an input is worth: an array of a hundred objects and more made by a path, or
/// commands that "*" multiplies. Both are limited by the library, but only far beyond what a fuzzer has the time for.
/// Tests of the limits have such texts.
///
/// Also whether a text makes an array and may change the type of an object. Contract: the fields of the type before are
/// deleted then, but not those that have children still, as arrays in it do; nobody owns them, and the show cannot know
/// of them. For the same reason the types of a show have no arrays of objects; those of the target type-files have.
bool asksForMuch(std::string_view text);

#endif
