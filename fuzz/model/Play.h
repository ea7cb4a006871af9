#ifndef ORBEL_FUZZ_MODEL_PLAY_H
#define ORBEL_FUZZ_MODEL_PLAY_H

#include "Model.h"
#include "Steps.h"

#include <orbel/orbel.h>

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace model {

/// A step with what it means in the tree as it is. Null where there is nothing to do it with.
struct Deed {
    const Step* step = nullptr;
    Field* field = nullptr;
    Field* other = nullptr;
    int handler = 0;
    bool isPossible = false;
    /// What the model has answered, and the field that has come of it.
    std::string result;
    Field* found = nullptr;
};

/// The same steps done to the model and to the library, and compared after each.
class Play {
public:
    /// Makes no more fields when there are so many.
    explicit Play(int enough);
    Play(const Play&) = delete;
    Play& operator=(const Play&) = delete;
    ~Play();

    /// Empty when both sides agree.
    std::string difference(const Step& step);

    /// The last step with all that was done in it, as a command each.
    const std::string& told() const { return m_told; }
    long long heard() const { return m_heardCount; }
    /// How many fields belong to nobody and were never seen. Contract: an array with fields outlives the object that
    /// it was made for.
    int lost() const;

private:
    class Listener;

    Deed resolve(const Step& step);
    Field* chosenField(const Step& step);
    Field* known(int turn, bool (*admits)(const Model&, const Field&));
    int livingFields() const;
    void act(const Step& step);
    void doInModel(Deed& deed);
    void doNextInLibrary();
    std::string doInLibrary(const Deed& deed);
    void heardInModel(int handler, Field& field, const std::string& what);
    void heardInLibrary(int handler, DataField& field, const std::string& what);
    void describe(const Deed& deed);
    void differ(const std::string& what, const std::string& expected, const std::string& got);

    void bind(Field& field, DataField* real);
    DataField* realOf(const Field* field) const;
    void compareAll();
    void compare(Field& field, DataField& real);
    void compareChildren(Field& field, DataField& real);
    void compareHandlers();
    void sweep();
    void readTypes(int version);

    struct Heard {
        std::string event;
        Field* field;
    };

    Model m_model;
    Orbel m_root;
    std::vector<DataField*> m_real;
    std::vector<std::unique_ptr<Listener>> m_listeners;

    const Step* m_step = nullptr;
    std::size_t m_nextReaction = 0;
    int m_depth = 0;
    /// Who reacts in the model, and on which field.
    Field* m_hearing = nullptr;
    int m_hearer = 0;
    int m_enough;
    std::vector<Deed> m_deeds;
    std::size_t m_nextDeed = 0;
    std::vector<Heard> m_expected;
    std::size_t m_nextHeard = 0;
    std::string m_told;
    std::string m_difference;
    long long m_heardCount = 0;
};

} // namespace model

#endif
