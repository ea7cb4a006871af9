#include "Floors.h"

namespace {

std::size_t callCount = 0;

class CountingObserver final : public Observer {
public:
    void onChange(const std::string& /*text*/) override { ++callCount; }
};

} // namespace

std::vector<std::unique_ptr<Observer>> Observer::make(std::size_t count) {
    std::vector<std::unique_ptr<Observer>> observers(count);
    for (auto& observer : observers)
        observer = std::make_unique<CountingObserver>();
    return observers;
}

std::size_t Observer::calls() {
    return callCount;
}
