#ifndef ORBEL_TESTS_MEMORY_WORLD_H
#define ORBEL_TESTS_MEMORY_WORLD_H

#include <orbel/orbel.h>
#include <support/TreeCleanup.h>

#include <array>
#include <string>

namespace memory {

/// Counts what it hears; takes no memory for it.
class Listener : public DataHandler {
public:
    explicit Listener(char* name) : DataHandler(name) {}

    void onChange(DataField& /*field*/, bool /*changed*/) override { ++calls; }
    void onChange(DataField& /*field*/, bool /*changed*/, int /*from*/, int /*to*/) override { ++calls; }
    void onTypeChange(DataField& /*field*/, char* /*typeName*/) override { ++calls; }

    int calls = 0;
};

/// A show with everything that operations can meet. Its texts are longer than any string object holds within itself,
/// and its lists are full, so that whatever is added takes memory.
///
///     title      observed by first and second
///     subtitle   follows title
///     list       three values, observed by third
///     loose      on its own, observed by alone
///     source     followed by as many as are looked through one by one
///     six/       as many children as are looked through one by one
///     label      an object: string text, Point pos, Point corners[2]
///     points     an array of two Points
///     cities     a hash table of Points: Oslo, Rome
///     others     a structure and an array to copy from
class World {
public:
    World();
    World(const World&) = delete;
    World& operator=(const World&) = delete;
    ~World();

    DataField* at(const char* path);
    DataValue* value(const char* path) { return static_cast<DataValue*>(at(path)); }
    DataArray* points() { return static_cast<DataArray*>(at("points")); }
    DataHashTable* cities() { return static_cast<DataHashTable*>(at("cities")); }
    DataObject* label() { return static_cast<DataObject*>(at("label")); }

    /// A field that leaves the tree goes with the world.
    void keep(const char* path);

    /// So does a field that was made outside of it.
    void own(DataField* field);

    /// Everything that a client can see of the tree, after a check that all parts agree about each other.
    std::string state();

    /// Stores in every value: whoever is on it hears of it, and those that follow have it too.
    void probe();

    Listener first, second, third, alone, idle;
    /// Set by operations that leave a field under a name or a parent that is not its own.
    bool isOdd = false;
    Orbel root;
    const SubtreeCleanup belowRoot{root};

private:
    DataField* m_kept = nullptr;
    std::array<DataField*, 2> m_owned{};
};

/// What the types of the process have to be for a World.
constexpr char worldTypes[] = "Point = {string x=a coordinate in many digits; string y;};"
                              "Label = {string text=a text that needs memory; Point pos; Point corners[2];};"
                              "Other = {string content=something that needs memory as well; Point at;};";

} // namespace memory

#endif
