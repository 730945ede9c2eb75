#include "kvrimage/formats/writable.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace kvrimage;
using testing::ElementsAre;
using testing::IsEmpty;

format plain_format() {
    format made;
    made.id = "plain";
    made.title = "Plain";
    return made;
}

std::vector<std::string> obstacles(const format& as, const memory_image& image,
                                   const write_options& options = {}) {
    write_options with_format = options;
    with_format.as = &as;
    std::vector<std::string> messages;
    for (const diagnostic& each : general_obstacles(image, with_format)) {
        messages.push_back(each.message);
    }
    return messages;
}

TEST(Writable, WordsThatAreNotSetNeedAFormatThatCanLeaveThemOut) {
    format plain = plain_format();
    memory_image image(8, 8);
    image.set(2, word::of(1, 8));
    EXPECT_THAT(obstacles(plain, image), IsEmpty());
    plain.holds_unset = false;
    EXPECT_THAT(obstacles(plain, image),
                ElementsAre("2 words are not set, the first at address 0, but Plain cannot omit words"));
    image.set(0, word::of(1, 8));
    EXPECT_THAT(obstacles(plain, image),
                ElementsAre("1 word is not set, the first at address 1, but Plain cannot omit words"));
    image.set(1, word::of(1, 8));
    EXPECT_THAT(obstacles(plain, image), IsEmpty());
}

TEST(Writable, AFormatThatStatesItsDepthNeedsTheWordsAtTheEndToo) {
    format plain = plain_format();
    plain.holds_unset = false;
    plain.states_depth = true;
    memory_image image(8, 8);
    image.fill({0, 5}, std::vector{word::of(1, 8)});
    EXPECT_THAT(obstacles(plain, image),
                ElementsAre("2 words are not set, the first at address 6, but Plain cannot omit words"));
}

TEST(Writable, DontCareBitsNeedAFormatThatHoldsThem) {
    format plain = plain_format();
    memory_image image(8, 4096);
    image.fill({0, 4095}, std::vector{word::of(1, 8), *word::parse("X0", radix::hex, 8).value});
    EXPECT_THAT(obstacles(plain, image),
                ElementsAre("word X0 at address 1 has a don't-care bit, which Plain cannot hold"));
    image.fill({0, 4095}, std::vector{word::of(1, 8), word::of(2, 8)});
    EXPECT_THAT(obstacles(plain, image), IsEmpty());
    image.set(77, *word::parse("1X", radix::hex, 8).value);
    EXPECT_THAT(obstacles(plain, image),
                ElementsAre("word 1X at address 77 has a don't-care bit, which Plain cannot hold"));
    plain.holds_dont_care = true;
    EXPECT_THAT(obstacles(plain, image), IsEmpty());
}

TEST(Writable, WordsOfSeveralBytesNeedAnOrderInAFileOfBytes) {
    format plain = plain_format();
    plain.counts = address_unit::byte;
    EXPECT_THAT(obstacles(plain, memory_image(8, 4)), IsEmpty());
    EXPECT_THAT(obstacles(plain, memory_image(9, 4)),
                ElementsAre("the byte order of words of 9 bits is unknown"));
    EXPECT_THAT(obstacles(plain, memory_image(9, 4), {.order = byte_order::big}), IsEmpty());
}

} // namespace
