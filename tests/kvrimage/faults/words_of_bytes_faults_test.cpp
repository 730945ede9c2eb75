// Each allocation of joining bytes to words fails, one per trial.

#include "kvrimage/bytes/words_of_bytes.h"
#include "tests/allocation.h"
#include "tests/kvrimage/bytes/byte_images.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <new>

namespace {

using namespace kvrimage;

/// Joins the bytes of two blocks to words while the allocation @p number fails. Returns false if memory has
/// run out.
bool join_bytes(std::size_t number, read_result& result) {
    byte_blocks blocks;
    blocks.add(0, "\x01\x02\x03\x04");
    blocks.add(5, "\x05");
    read_options options = kvrimage_tests::bytes_as(16, byte_order::big);
    options.pad = 0;
    diagnostic_list list;
    const byte_finder find = [](std::uint64_t) { return span(); };
    try {
        const failing_allocation failing(number);
        make_words_of_bytes(blocks, options, find, list, result);
    } catch (const std::bad_alloc&) {
        return false;
    }
    return true;
}

TEST(WordsOfBytesFaults, LoseNoWordUnnoticed) {
    std::size_t number = 0;
    do {
        read_result result;
        if (join_bytes(++number, result)) {
            ASSERT_EQ(kvrimage_tests::set_words_of(result), "0=0102 1=0304 2=0005") << number;
        }
    } while (failing_allocation::happened());
    EXPECT_GT(number, 1U);
}

} // namespace
