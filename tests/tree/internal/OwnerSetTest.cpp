#include <orbel/tree/OwnerSet.h>

#include <gtest/gtest.h>

#include <cstdint>

namespace {

/// Owners are only compared: any address will do.
void* owner(std::uintptr_t address) {
    return reinterpret_cast<void*>(address);
}

} // namespace

TEST(OwnerSet, HoldsEachOwnerOnce) {
    OwnerSet owners;
    EXPECT_TRUE(owners.insert(owner(16)));
    EXPECT_FALSE(owners.insert(owner(16)));
    EXPECT_TRUE(owners.insert(owner(32)));
    EXPECT_FALSE(owners.insert(owner(16)));
    EXPECT_FALSE(owners.insert(owner(32)));
    EXPECT_TRUE(owners.erase(owner(16)));
    EXPECT_FALSE(owners.erase(owner(16)));
    EXPECT_TRUE(owners.erase(owner(32)));
    EXPECT_TRUE(owners.insert(owner(16)));
}

TEST(OwnerSet, HoldsNoOwnerAtFirst) {
    OwnerSet owners;
    EXPECT_TRUE(owners.empty());
    EXPECT_FALSE(owners.erase(owner(16)));
    EXPECT_FALSE(owners.erase(nullptr));
}

TEST(OwnerSet, IsEmptyWhenTheLastHasLeft) {
    OwnerSet owners;
    for (const std::uintptr_t address : {16, 17, 0}) {
        owners.insert(owner(address));
        EXPECT_FALSE(owners.empty());
        owners.erase(owner(address));
        EXPECT_TRUE(owners.empty());
    }
}

TEST(OwnerSet, TakesNullAndOddAddresses) {
    for (const std::uintptr_t address : {0, 1, 17}) {
        OwnerSet owners;
        EXPECT_TRUE(owners.insert(owner(address)));
        EXPECT_FALSE(owners.insert(owner(address)));
        EXPECT_FALSE(owners.erase(owner(16)));
        EXPECT_TRUE(owners.insert(owner(16)));
        EXPECT_TRUE(owners.erase(owner(address)));
        EXPECT_FALSE(owners.erase(owner(address)));
        EXPECT_TRUE(owners.erase(owner(16)));
    }
}

// Null counted as known as soon as there were two others.
TEST(OwnerSet, TakesNullAlsoAfterOthers) {
    OwnerSet owners;
    owners.insert(owner(16));
    owners.insert(owner(32));
    EXPECT_TRUE(owners.insert(nullptr));
    EXPECT_FALSE(owners.insert(nullptr));
    EXPECT_TRUE(owners.erase(nullptr));
    EXPECT_FALSE(owners.erase(nullptr));
}

TEST(OwnerSet, CopiesAreIndependent) {
    OwnerSet one;
    one.insert(owner(16));
    OwnerSet many;
    many.insert(owner(16));
    many.insert(owner(32));
    OwnerSet copy(many);
    EXPECT_TRUE(copy.erase(owner(32)));
    EXPECT_FALSE(many.insert(owner(32)));
    copy = one;
    EXPECT_FALSE(copy.insert(owner(16)));
    EXPECT_TRUE(copy.insert(owner(32)));
    EXPECT_TRUE(one.insert(owner(32)));
    copy = *&copy;
    EXPECT_FALSE(copy.insert(owner(32)));
}

// More than stand side by side.
TEST(OwnerSet, HoldsEachOfManyOnceWhateverComesAndGoes) {
    constexpr std::uintptr_t last = 40;
    OwnerSet owners;
    for (std::uintptr_t address = 1; address <= last; ++address)
        EXPECT_TRUE(owners.insert(owner(address))) << address;
    for (std::uintptr_t address = 1; address <= last; address += 3)
        EXPECT_TRUE(owners.erase(owner(address))) << address;
    for (std::uintptr_t address = last; address > 0; --address)
        EXPECT_EQ(owners.insert(owner(address)), address % 3 == 1) << address;
    OwnerSet copy(owners);
    for (std::uintptr_t address = last; address > 0; --address) {
        EXPECT_FALSE(copy.empty());
        EXPECT_TRUE(copy.erase(owner(address))) << address;
        EXPECT_FALSE(copy.erase(owner(address))) << address;
    }
    EXPECT_TRUE(copy.empty());
    EXPECT_FALSE(owners.insert(owner(last)));
}
