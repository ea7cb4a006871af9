#include <orbel/foundation/AutoLock.h>
#include <orbel/foundation/Lock.h>

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <thread>
#include <type_traits>
#include <vector>

namespace {

void pause() {
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
}

/// A thread that enters a lock and leaves it at once.
class Visitor {
public:
    explicit Visitor(QX::Lock& lock)
        : m_thread([this, &lock] {
              const QX::AutoLock hold(lock);
              m_wasIn = true;
          }) {}
    Visitor(const Visitor&) = delete;
    Visitor& operator=(const Visitor&) = delete;
    ~Visitor() { join(); }

    bool isWaiting() {
        pause();
        return !m_wasIn;
    }

    bool getsIn() {
        join();
        return m_wasIn;
    }

private:
    void join() {
        if (m_thread.joinable())
            m_thread.join();
    }

    std::atomic<bool> m_wasIn{false};
    std::thread m_thread;
};

} // namespace

TEST(Lock, KeepsOtherThreadsOutUntilItIsLeft) {
    QX::Lock lock;
    lock.Enter();
    Visitor visitor(lock);
    EXPECT_TRUE(visitor.isWaiting());
    lock.Leave();
    EXPECT_TRUE(visitor.getsIn());
}

TEST(Lock, IsLeftAsOftenAsItWasEntered) {
    QX::Lock lock;
    lock.Enter();
    lock.Enter();
    Visitor visitor(lock);
    lock.Leave();
    EXPECT_TRUE(visitor.isWaiting());
    lock.Leave();
    EXPECT_TRUE(visitor.getsIn());
}

TEST(Lock, CountsOfTwoThreadsAddUp) {
    constexpr int rounds = 20'000;
    QX::Lock lock;
    int count = 0;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 2; ++thread)
        threads.emplace_back([&] {
            for (int round = 0; round < rounds; ++round) {
                lock.Enter();
                ++count;
                lock.Leave();
            }
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_EQ(count, 2 * rounds);
}

TEST(Lock, DoesNotKeepThreadsOutOfAnotherLock) {
    QX::Lock held, other;
    const QX::AutoLock hold(held);
    EXPECT_TRUE(Visitor(other).getsIn());
}

TEST(Lock, CanBeDestroyedThroughItsBase) {
    struct Derived : QX::Lock {
        explicit Derived(bool& isGone) : m_isGone(isGone) {}
        ~Derived() override { m_isGone = true; }
        bool& m_isGone;
    };
    bool isGone = false;
    std::unique_ptr<QX::Lock> lock = std::make_unique<Derived>(isGone);
    lock.reset();
    EXPECT_TRUE(isGone);
}

TEST(AutoLock, HoldsItsLockForItsLifetime) {
    QX::Lock lock;
    auto hold = std::make_unique<QX::AutoLock>(lock);
    Visitor visitor(lock);
    EXPECT_TRUE(visitor.isWaiting());
    hold.reset();
    EXPECT_TRUE(visitor.getsIn());
}

TEST(AutoLock, NestsInOneThread) {
    QX::Lock lock;
    auto outer = std::make_unique<QX::AutoLock>(lock);
    auto inner = std::make_unique<QX::AutoLock>(lock);
    Visitor visitor(lock);
    inner.reset();
    EXPECT_TRUE(visitor.isWaiting());
    outer.reset();
    EXPECT_TRUE(visitor.getsIn());
}

TEST(AutoLock, LeavesItsLockWhenAnExceptionPasses) {
    QX::Lock lock;
    try {
        const QX::AutoLock hold(lock);
        throw 1;
    } catch (int) {
    }
    EXPECT_TRUE(Visitor(lock).getsIn());
}

static_assert(std::has_virtual_destructor_v<QX::Lock> && std::has_virtual_destructor_v<QX::AutoLock>);
static_assert(!std::is_copy_constructible_v<QX::Lock> && !std::is_copy_assignable_v<QX::Lock>);
static_assert(!std::is_copy_constructible_v<QX::AutoLock> && !std::is_copy_assignable_v<QX::AutoLock>);
static_assert(!std::is_convertible_v<QX::Lock&, QX::AutoLock>, "a lock is not taken by accident");
