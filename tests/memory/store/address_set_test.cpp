#include "kvr/memory/store/address_set.h"
#include "tests/allocation.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <new>
#include <random>
#include <set>
#include <vector>

namespace {

using kvr::address_set;

TEST(AddressSet, NewSetHoldsNothing) {
    const address_set addresses;
    EXPECT_FALSE(addresses.contains(0));
    EXPECT_FALSE(addresses.contains(4294967295));
}

TEST(AddressSet, FirstInsertionOfAnAddressIsTrueAndTheSecondFalse) {
    address_set addresses;
    EXPECT_TRUE(addresses.insert(7));
    EXPECT_FALSE(addresses.insert(7));
    EXPECT_TRUE(addresses.contains(7));
}

TEST(AddressSet, NeighborsOfAnInsertedAddressAreNotInTheSet) {
    for (const std::uint32_t address : {1U, 63U, 64U, 4095U, 4096U, 4194303U, 4194304U, 4294967294U}) {
        address_set addresses;
        addresses.insert(address);
        EXPECT_TRUE(addresses.contains(address)) << address;
        EXPECT_FALSE(addresses.contains(address - 1)) << address;
        EXPECT_FALSE(addresses.contains(address + 1)) << address;
    }
}

TEST(AddressSet, HoldsTheLowestAndTheHighestAddressAtOnce) {
    address_set addresses;
    EXPECT_TRUE(addresses.insert(4294967295));
    EXPECT_TRUE(addresses.insert(0));
    EXPECT_TRUE(addresses.contains(0));
    EXPECT_TRUE(addresses.contains(4294967295));
    EXPECT_FALSE(addresses.contains(2147483648));
}

TEST(AddressSet, ClearedSetHoldsNothingAndTakesAddressesAgain) {
    address_set addresses;
    addresses.insert(5);
    addresses.insert(4000000000);
    addresses.clear();
    EXPECT_FALSE(addresses.contains(5));
    EXPECT_FALSE(addresses.contains(4000000000));
    EXPECT_TRUE(addresses.insert(4000000000));
    EXPECT_TRUE(addresses.insert(5));
}

TEST(AddressSet, AnswersLikeASetOfIntegers) {
    address_set addresses;
    std::set<std::uint32_t> model;
    std::mt19937 random(1);
    for (int step = 0; step < 20000; ++step) {
        const auto address = static_cast<std::uint32_t>((random() % 3) * 2147483647U + random() % 9000);
        ASSERT_EQ(addresses.insert(address), model.insert(address).second) << address;
        const auto other = static_cast<std::uint32_t>((random() % 3) * 2147483647U + random() % 9000);
        ASSERT_EQ(addresses.contains(other), model.count(other) == 1) << other;
    }
}

/// Inserts the run that count_free() finds at @p address, or a part of it, in @p addresses and @p model.
void insert_free_run(address_set& addresses, std::set<std::uint32_t>& model, std::uint32_t address,
                     std::mt19937& random) {
    const std::uint32_t free = addresses.count_free(address);
    ASSERT_EQ(free == 0, model.count(address) == 1) << address;
    if (free == 0) {
        return;
    }
    for (std::uint32_t i = 0; i < free; ++i) {
        ASSERT_EQ(model.count(address + i), 0U) << address + i;
    }
    const auto taken = static_cast<std::uint32_t>(1 + random() % free);
    addresses.insert_run(address, taken);
    for (std::uint32_t i = 0; i < taken; ++i) {
        model.insert(address + i);
    }
}

TEST(AddressSet, TakesFreeRunsLikeASetOfIntegers) {
    std::mt19937 random(2);
    for (int round = 0; round < 20; ++round) {
        address_set addresses;
        std::set<std::uint32_t> model;
        const std::uint32_t base = static_cast<std::uint32_t>(random() % 3) * 2147483600U;
        for (int step = 0; step < 400; ++step) {
            const auto address = base + static_cast<std::uint32_t>(random() % 9000);
            if (random() % 3 == 0) {
                ASSERT_EQ(addresses.insert(address), model.insert(address).second) << address;
            } else {
                ASSERT_NO_FATAL_FAILURE(insert_free_run(addresses, model, address, random));
            }
        }
        for (std::uint32_t address = base; address < base + 9100; ++address) {
            ASSERT_EQ(addresses.contains(address), model.count(address) == 1) << address;
        }
    }
}

TEST(AddressSet, InsertionThatFailsLeavesTheSetAsItWas) {
    for (std::size_t number = 1;; ++number) {
        address_set addresses;
        addresses.insert(3);
        bool failed = false;
        {
            const failing_allocation failing(number);
            try {
                addresses.insert(4000000000);
            } catch (const std::bad_alloc&) {
                failed = true;
            }
        }
        EXPECT_EQ(addresses.contains(4000000000), !failed);
        EXPECT_TRUE(addresses.contains(3));
        EXPECT_EQ(addresses.insert(4000000000), failed);
        if (!failed) {
            EXPECT_EQ(number, 4U) << "the directory list, the directory and the block were to be allocated";
            break;
        }
    }
}

TEST(AddressSet, FreeNeighborsAreCountedAndInsertedTogether) {
    std::mt19937 random(3);
    address_set addresses;
    std::set<std::uint32_t> model;
    for (int i = 0; i < 20000; ++i) {
        const auto address = static_cast<std::uint32_t>(random() % 10000);
        const std::uint32_t count = addresses.count_free(address);
        EXPECT_EQ(count == 0, model.count(address) != 0) << address;
        for (std::uint32_t free = 0; free < count; ++free) {
            ASSERT_EQ(model.count(address + free), 0U) << address;
        }
        if (count != 0 && random() % 4 == 0) {
            const auto inserted = static_cast<std::uint32_t>(1 + random() % count);
            addresses.insert_run(address, inserted);
            for (std::uint32_t each = 0; each < inserted; ++each) {
                model.insert(address + each);
            }
        }
    }
    for (std::uint32_t address = 0; address < 10100; ++address) {
        EXPECT_EQ(addresses.contains(address), model.count(address) != 0) << address;
    }
}

} // namespace
