#include "kvrimage/bytes/image_bytes.h"
#include "kvrimage/formats/memory_file.h"
#include "kvrimage/formats/registry.h"
#include "kvrimage/image/image_part.h"
#include "kvrimage/image/memory_image.h"
#include "kvrimage/image/numbers.h"
#include "kvrimage/image/word.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <stdexcept>
#include <vector>

namespace {

using namespace kvrimage;

/// The values of 8-bit words; -1 for unset ones.
std::vector<int> byte_values(const memory_image& image) {
    std::vector<int> values;
    for (std::uint64_t offset = 0; offset < image.depth(); ++offset) {
        const std::optional<word> value = image[image.base() + offset];
        values.push_back(value ? static_cast<int>(value->to_unsigned().value()) : -1);
    }
    return values;
}

memory_image four_of_eight() {
    memory_image image(8, 8, 0x100);
    image.set(0x101, word::of(1, 8));
    image.fill({0x103, 0x105}, std::vector{word::of(7, 8), word::of(9, 8)});
    return image;
}

TEST(ImagePart, KeepsItsAddressesAndWords) {
    const memory_image part = cut_out(four_of_eight(), {0x101, 0x104});
    EXPECT_EQ(part.base(), 0x101U);
    EXPECT_EQ(part.width(), 8U);
    EXPECT_EQ(byte_values(part), (std::vector{1, -1, 7, 9}));
    EXPECT_EQ(cut_out(four_of_eight(), {0x100, 0x107}), four_of_eight());
}

TEST(ImagePart, BytesStayWhereTheyStand) {
    const memory_image image = image_of_bytes("abcdefgh", {.width = 16, .order = byte_order::big, .base = 8});
    const memory_image part = cut_out(image, {9, 10});
    const auto whole = numbers_in_place(image);
    const auto found = numbers_in_place(part);
    ASSERT_TRUE(whole);
    ASSERT_TRUE(found);
    EXPECT_EQ(found->numbers, static_cast<const char*>(whole->numbers) + 2);
    EXPECT_EQ(found->count, 2U);
    EXPECT_EQ(part[9]->to_unsigned(), 0x6364U);
    EXPECT_EQ(part[10]->to_unsigned(), 0x6566U);
}

TEST(ImagePart, GapsBetweenBytesStayGaps) {
    const read_result file = parse(":020002001234B6\n:0200060056782A\n:00000001FF\n",
                                   {.as = format_of_name("hexbytes"), .width = 8});
    ASSERT_TRUE(file.image);
    EXPECT_EQ(byte_values(cut_out(*file.image, {3, 6})), (std::vector{0x34, -1, -1, 0x56}));
    const memory_image gap = cut_out(*file.image, {4, 5});
    EXPECT_EQ(byte_values(gap), (std::vector{-1, -1}));
    EXPECT_EQ(gap.count_set(), 0U);
    EXPECT_EQ(gap, memory_image(8, 2, 4));
}

TEST(ImagePart, RangesBeyondTheMemoryAreRefused) {
    EXPECT_THROW(static_cast<void>(cut_out(four_of_eight(), {0xFF, 0x101})), std::out_of_range);
    EXPECT_THROW(static_cast<void>(cut_out(four_of_eight(), {0x107, 0x108})), std::out_of_range);
    EXPECT_THROW(static_cast<void>(cut_out(four_of_eight(), {0x104, 0x103})), std::invalid_argument);
}

TEST(ImagePart, AnOverlaySetsWhatItHas) {
    memory_image image = four_of_eight();
    memory_image part(8, 3, 0x103);
    part.set(0x103, word::of(42, 8));
    part.set(0x105, word::of(43, 8));
    overlay(image, part);
    EXPECT_EQ(byte_values(image), (std::vector{-1, 1, -1, 42, 9, 43, -1, -1}));
}

TEST(ImagePart, AnOverlayThatDoesNotFitIsRefused) {
    memory_image image = four_of_eight();
    EXPECT_THROW(overlay(image, memory_image(9, 1, 0x100)), std::invalid_argument);
    EXPECT_THROW(overlay(image, memory_image(8, 1, 0xFF)), std::out_of_range);
    EXPECT_THROW(overlay(image, memory_image(8, 2, 0x107)), std::out_of_range);
    EXPECT_EQ(image, four_of_eight());
}

} // namespace
