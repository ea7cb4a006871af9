#ifndef ORBEL_HOST_LIFEMARK_H
#define ORBEL_HOST_LIFEMARK_H

#include <memory>
#include <utility>

/// A pointer that turns to null when the mark of the object it points to ends.
template <class Object>
class LifeRef {
public:
    LifeRef() = default;
    LifeRef(Object* object, std::weak_ptr<const char> life) : m_object(object), m_life(std::move(life)) {}

    Object* get() const { return m_life.expired() ? nullptr : m_object; }

private:
    Object* m_object = nullptr;
    std::weak_ptr<const char> m_life;
};

/// A member by which others learn whether the object that has it still lives.
class LifeMark {
public:
    LifeMark() = default;
    LifeMark(const LifeMark&) = delete;
    LifeMark& operator=(const LifeMark&) = delete;

    template <class Object>
    LifeRef<Object> refTo(Object& object) const {
        return {&object, m_mark};
    }

    void end() { m_mark.reset(); }

private:
    std::shared_ptr<const char> m_mark = std::make_shared<const char>();
};

#endif
