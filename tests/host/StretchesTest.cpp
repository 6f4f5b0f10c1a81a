#include "host/Stretches.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <limits>
#include <random>
#include <set>

namespace qx::host {

namespace {

using Addresses = std::set<Long>;

Stretches Random(std::mt19937& random, Addresses& addresses) {
    Stretches stretches;
    for (int i = 0; i < 12; ++i) {
        const Long start = static_cast<Long>(random() % 64) - 8;
        const Long size = static_cast<Long>(random() % 9);
        stretches.Add(start, size);
        for (Long address = start; address < start + size; ++address)
            addresses.insert(address);
    }
    return stretches;
}

Addresses AddressesOf(const std::vector<Stretch>& list) {
    Addresses addresses;
    for (const Stretch& stretch : list)
        for (Long address = stretch.address; address < stretch.End(); ++address)
            addresses.insert(address);
    return addresses;
}

} // namespace

TEST(Stretches, AgreesWithSetsOfAddresses) {
    for (unsigned seed = 0; seed < 300; ++seed) {
        std::mt19937 random(seed);
        Addresses a;
        Addresses b;
        const Stretches first = Random(random, a);
        const Stretches second = Random(random, b);
        ASSERT_EQ(AddressesOf(first.List()), a);
        for (std::size_t i = 1; i < first.List().size(); ++i)
            ASSERT_GT(first.List()[i].address, first.List()[i - 1].End()) << "not merged";
        Addresses rest;
        std::set_difference(a.begin(), a.end(), b.begin(), b.end(),
                            std::inserter(rest, rest.end()));
        ASSERT_EQ(AddressesOf(first.Without(second)), rest) << "seed " << seed;
        for (Long start = -10; start < 66; ++start)
            for (Long size = 0; size < 4; ++size) {
                bool contains = size > 0;
                for (Long address = start; address < start + size; ++address)
                    contains = contains && a.contains(address);
                ASSERT_EQ(first.Contains(start, size), contains) << start << "+" << size;
            }
    }
}

TEST(Stretches, HoldsAtTheLargestAddress) {
    constexpr Long kLargest = std::numeric_limits<Long>::max();
    Stretches stretches;
    stretches.Add(kLargest - 2, 100);
    EXPECT_EQ(stretches.List(), (std::vector<Stretch>{{kLargest - 2, 2}}));
    EXPECT_TRUE(stretches.Contains(kLargest - 1, kLargest));
    stretches.Add(5, -3);
    EXPECT_FALSE(stretches.Contains(2, 3));
}

} // namespace qx::host
