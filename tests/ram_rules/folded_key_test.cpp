#include "kvr/ram_rules/folded_key.h"
#include "kvr/util/letter_case.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

namespace {

using kvr::folded_key;

TEST(FoldedKey, ByteMatchesItselfAndTheOtherCaseOfALetterOnly) {
    for (int one = 0; one < 256; ++one) {
        for (int other = 0; other < 256; ++other) {
            const std::string left(1, static_cast<char>(one));
            const std::string right(1, static_cast<char>(other));
            EXPECT_EQ(folded_key(left) == folded_key(right), kvr::equal_ignoring_case(left, right))
                << one << " and " << other;
        }
    }
}

TEST(FoldedKey, EveryPlaceOfATextCounts) {
    for (std::size_t size = 1; size <= folded_key::longest_text; ++size) {
        const std::string text = std::string("aBcDeFgHiJkLmNoP").substr(0, size);
        for (std::size_t place = 0; place < size; ++place) {
            std::string other = text;
            other[place] = '_';
            EXPECT_NE(folded_key(other), folded_key(text)) << other;
            other[place] = static_cast<char>(text[place] ^ 0x20);
            EXPECT_EQ(folded_key(other), folded_key(text)) << other;
            EXPECT_EQ(folded_key(other).hash(), folded_key(text).hash()) << other;
        }
    }
}

TEST(FoldedKey, LengthCounts) {
    for (std::size_t size = 0; size < folded_key::longest_text; ++size) {
        const std::string text(size, '\0');
        EXPECT_NE(folded_key(text), folded_key(text + '\0')) << size;
    }
}

} // namespace
