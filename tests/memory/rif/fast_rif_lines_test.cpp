// The fast path of a RIF file, compared with the exact path, which an observer requests.

#include "kvr/memory/io/line_source.h"
#include "kvr/memory/rif/rif_reader.h"
#include "tests/memory/io/failing_read.h"
#include "tests/memory/mutated_text.h"
#include "tests/memory/number_text.h"
#include "tests/sanitized.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace kvr {
namespace {

using namespace std::string_view_literals;
using kvr_test::number_text;

class rif_observer_without_interest : public read_observer {
public:
    bool fault(const read_fault& /*fault*/, std::string_view /*text*/) override { return false; }
    void words(std::uint64_t /*first*/, std::uint64_t /*last*/, std::uint64_t /*line*/) override {}
};

struct rif_reading {
    KVR_ERROR_STATES error_state = ERROR_STATE_NONE;
    std::vector<std::string> words;

    friend bool operator==(const rif_reading&, const rif_reading&) = default;
};

rif_reading read_rif(std::string_view text, read_observer* observer) {
    rif_memory memory(nullptr);
    memory.resize_words(2500);
    const std::vector<char> characters = kvr_test::exactly(text);
    line_source source(std::string_view(characters.data(), characters.size()));
    rif_reader(memory, observer).read(source);
    rif_reading result;
    result.error_state = memory.error_state;
    for (std::uint32_t address = 0; address < memory.data_words.size(); ++address) {
        result.words.emplace_back(memory.data_words[address]);
    }
    return result;
}

void expect_same_rif(std::string_view text) {
    rif_observer_without_interest observer;
    ASSERT_TRUE(read_rif(text, nullptr) == read_rif(text, &observer)) << text.substr(0, 4000);
}

std::string regular_rif(std::mt19937& random) {
    const bool lower_case = random() % 3 == 0;
    const bool mixed_lengths = random() % 4 == 0;
    const std::size_t length = std::array<std::size_t, 8>{1, 2, 7, 8, 16, 32, 33, 300}[random() % 8];
    const std::size_t words_a_line = random() % 20 == 0 ? 300 : 1 + random() % 10;
    const std::size_t lines = random() % 8 == 0 ? 400 : 1 + random() % 30;
    const bool with_addresses = random() % 2 == 0;
    const std::string line_end = random() % 6 == 0 ? "\r\n" : "\n";
    std::string text;
    for (std::size_t line = 0; line < lines; ++line) {
        if (with_addresses) {
            text += "@" + number_text(line * words_a_line, 16, 6, !lower_case) + line_end;
        }
        for (std::size_t i = 0; i < words_a_line; ++i) {
            const std::size_t word_length = mixed_lengths ? 1 + random() % length : length;
            const std::string digits =
                number_text(random() % (random() % 8 == 0 ? 2 : 65536), 16, word_length, !lower_case);
            text += digits.substr(digits.size() - word_length) + " ";
        }
        text += line_end;
    }
    return text;
}

TEST(FastRifLines, RegularFilesAreReadAsTheRulesSay) {
    std::mt19937 random(1);
    for (int i = 0; i < kvr_test::fewer(300); ++i) {
        expect_same_rif(regular_rif(random));
    }
}

TEST(FastRifLines, MutatedFilesAreReadAsTheRulesSay) {
    std::mt19937 random(2);
    kvr_test::text_mutator mutator(random, "0123456789ABCDEFabcdefXxUuG@ \t\r\n\0\x80\xFF"sv);
    for (int i = 0; i < kvr_test::fewer(500); ++i) {
        std::string text = regular_rif(random);
        mutator.mutate(text, 1 + mutator.below(4));
        expect_same_rif(text);
    }
}

TEST(FastRifLines, WordsBeforeAnExceptionAreStored) {
    constexpr std::uint32_t count = 2500;
    std::string text;
    for (std::uint32_t address = 0; address < count; ++address) {
        text += number_text(address, 16, 4) + "\n";
    }
    std::uint32_t most_stored = 0;
    bool thrown = true;
    for (std::size_t failure = 1; thrown; ++failure) {
        rif_memory memory(nullptr);
        memory.resize_words(count);
        line_source source{std::string_view(text)};
        thrown = kvr_test::throws_without_allocation(failure, [&] { rif_reader(memory).read(source); });
        std::uint32_t stored = 0;
        while (stored < count && memory.data_words[stored] == number_text(stored, 16, 4)) {
            ++stored;
        }
        most_stored = thrown ? std::max(most_stored, stored) : most_stored;
    }
    // The last allocation is for the last page, after all regular lines were read.
    EXPECT_GT(most_stored, count - 100);
}

} // namespace
} // namespace kvr
