// The fast paths of a MIF file, compared with the exact path, which an observer requests by asking for every
// line.

#include "kvr/memory/io/line_source.h"
#include "kvr/memory/memory_file.h"
#include "kvr/memory/mif/mif_header.h"
#include "kvr/memory/mif/mif_reader.h"
#include "tests/memory/error_messages.h"
#include "tests/memory/io/failing_read.h"
#include "tests/memory/mutated_text.h"
#include "tests/memory/number_text.h"
#include "tests/sanitized.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace kvr {
namespace {

using namespace std::string_view_literals;
using kvr_test::number_text;

class observer_of_every_line : public mif_observer {
public:
    [[nodiscard]] bool wants_every_line() const override { return true; }
    void content_line(const mif_content& /*content*/) override {}
    void cut_at_percent(std::string_view /*rest*/, std::uint64_t /*line*/) override {}
    bool fault(const read_fault& /*fault*/, std::string_view /*text*/) override { return false; }
    void words(std::uint64_t /*first*/, std::uint64_t /*last*/, std::uint64_t /*line*/) override {}
};

/// The result of a read.
struct mif_reading {
    bool complete = false;
    bool error_occurred = false;
    KVR_ERROR_STATES error_state = ERROR_STATE_NONE;
    int invalid_line = 0;
    std::vector<std::string> messages;
    std::vector<std::string> words;
    std::deque<std::string> comments;
    std::vector<bool> address_set;

    friend bool operator==(const mif_reading&, const mif_reading&) = default;
};

mif_reading read_mif(std::string_view text, mif_observer* observer) {
    KVR_MEMORY_FILE owner;
    mif_memory memory(&owner);
    fill_radix_names(memory);
    const std::vector<char> characters = kvr_test::exactly(text);
    line_source source(std::string_view(characters.data(), characters.size()), mif_reader::source_limit);
    mif_reading result;
    result.complete = mif_reader(memory, observer).read(source);
    result.error_occurred = memory.error_occurred;
    result.error_state = memory.error_state;
    result.invalid_line = memory.invalid_line_number;
    result.messages = kvr_test::error_messages(owner);
    memory.data_comments.copy_to(result.comments);
    for (std::uint32_t address = 0; address < memory.data_words.size(); ++address) {
        result.words.emplace_back(memory.data_words[address]);
        result.address_set.push_back(memory.address_set.contains(address));
    }
    return result;
}

template <class Value, std::size_t count>
const Value& one_of(const std::array<Value, count>& values, std::mt19937& random) {
    return values[random() % count];
}

struct named_radix {
    const char* name;
    unsigned base;
};

/// A regular file: all content lines have the same form.
std::string regular_mif(std::mt19937& random) {
    const named_radix address_radix =
        one_of(std::array<named_radix, 4>{{{"HEX", 16}, {"UNS", 10}, {"OCT", 8}, {"BIN", 2}}}, random);
    const bool lower_case = random() % 3 == 0;
    const std::string before =
        one_of(std::array<std::string, 4>{"\t", "", "  ", "                 "}, random);
    const std::string between = one_of(std::array<std::string, 4>{"  :   ", ":", " :\t", " : "}, random);
    const std::string ending =
        one_of(std::array<std::string, 5>{"", " ", "  -- a comment", " --x % y", "\t"}, random);
    const std::string line_end = random() % 4 == 0 ? "\r\n" : "\n";
    const std::size_t value_length = one_of(std::array<std::size_t, 9>{1, 2, 3, 7, 8, 9, 16, 32, 40}, random);
    const bool mixed_lengths = random() % 4 == 0;
    // Reading ends at a line that is too long.
    const std::size_t most_values = std::min<std::size_t>(20, 400 / (value_length + 2));
    const std::size_t values = random() % 3 == 0 ? 1 + random() % most_values : 1;
    const std::size_t depth = random() % 8 == 0 ? 3000 : 20 + random() % 200;
    std::string text = "WIDTH=8;\nDEPTH=" + std::to_string(depth) + ";\nADDRESS_RADIX=" + address_radix.name +
                       ";\nDATA_RADIX=HEX;\nCONTENT BEGIN\n";
    for (std::size_t address = 0; address < depth; address += values) {
        text +=
            before + number_text(address, address_radix.base, 1 + 11 * (depth % 2), !lower_case) + between;
        for (std::size_t i = 0; i < values && address + i < depth; ++i) {
            const std::size_t length = mixed_lengths ? 1 + random() % value_length : value_length;
            text += (i != 0 ? " " : "") + std::string(mixed_lengths && random() % 4 == 0 ? "-" : "") +
                    number_text(random() % (random() % 8 == 0 ? 2 : 65536), 16, length, !lower_case)
                        .substr(0, length);
        }
        text += ";" + ending + line_end;
    }
    return text + "END;" + line_end;
}

void expect_same_mif(std::string_view text, std::size_t number) {
    observer_of_every_line observer;
    const mif_reading exact = read_mif(text, &observer);
    const mif_reading fast = read_mif(text, nullptr);
    ASSERT_TRUE(fast == exact) << "text " << number << ":\n" << text.substr(0, 4000);
}

TEST(FastMifLines, RegularFilesAreReadAsTheRulesSay) {
    std::mt19937 random(1);
    for (std::size_t i = 0; i < kvr_test::fewer(300U); ++i) {
        const std::string text = regular_mif(random);
        expect_same_mif(text, i);
        ASSERT_TRUE(read_mif(text, nullptr).complete) << text.substr(0, 4000);
    }
}

TEST(FastMifLines, MutatedFilesAreReadAsTheRulesSay) {
    std::mt19937 random(2);
    kvr_test::text_mutator mutator(random, "0123456789ABCDEFabcdefXxUuGg;:-%[]. \t\r\n\0\x80\xFF"sv);
    for (std::size_t i = 0; i < kvr_test::fewer(kvr_test::is_sanitized ? 500U : 3000U); ++i) {
        std::string text = regular_mif(random);
        const std::size_t header = text.find("BEGIN") + 6;
        std::string content = text.substr(header);
        mutator.mutate(content, 1 + mutator.below(4));
        expect_same_mif(text.substr(0, header) + content, i);
    }
}

TEST(FastMifLines, AnAddressSetTwiceEndsTheReadWhereverItStandsInARun) {
    for (std::size_t place = 0; place < 100; ++place) {
        std::string text = "WIDTH=8;\nDEPTH=100;\nCONTENT BEGIN\n" + number_text(place, 16, 2) + " : FF;\n";
        for (std::size_t address = 0; address < 100; ++address) {
            text += number_text(address, 16, 2) + " : 5A;\n";
        }
        text += "END;\n";
        expect_same_mif(text, place);
        EXPECT_EQ(read_mif(text, nullptr).invalid_line, static_cast<int>(place + 5));
    }
}

TEST(FastMifLines, WordsBeforeAnExceptionAreStored) {
    constexpr std::uint32_t count = 1500;
    std::string text = "WIDTH=16;\nDEPTH=1500;\nCONTENT BEGIN\n";
    for (std::uint32_t address = 0; address < count; ++address) {
        text += number_text(address, 16, 4) + " : " + number_text(address + 1, 16, 4) + "; -- a comment\n";
    }
    text += "END;\n";
    std::size_t most_comments = 0;
    bool thrown = true;
    for (std::size_t failure = 1; thrown; ++failure) {
        KVR_MEMORY_FILE owner;
        mif_memory memory(&owner);
        fill_radix_names(memory);
        line_source source(text, mif_reader::source_limit);
        thrown = kvr_test::throws_without_allocation(
            failure, [&] { static_cast<void>(mif_reader(memory).read(source)); });
        const std::size_t comments = memory.data_comments.size();
        for (std::uint32_t address = 0; address < comments; ++address) {
            ASSERT_EQ(memory.data_words[address], number_text(address + 1, 16, 4)) << failure;
        }
        most_comments = thrown ? std::max(most_comments, comments) : most_comments;
    }
    EXPECT_GT(most_comments, 1024U);
}

/// Reads content lines by the fast path and by the exact one; true if both were complete.
bool read_equally(const std::string& content, unsigned width = 8, unsigned depth = 64) {
    const std::string text = "WIDTH=" + std::to_string(width) + ";\nDEPTH=" + std::to_string(depth) +
                             ";\nCONTENT BEGIN\n" + content + "END;\n" +
                             std::string(100, '\n'); // the fast path needs lines after the ones it reads
    expect_same_mif(text, 0);
    return read_mif(text, nullptr).complete;
}

/// Lines of one word each, starting at @p first, so that the next line is predicted.
std::string uniform_lines(unsigned first, unsigned count, const std::string& value) {
    std::string text;
    for (unsigned address = first; address < first + count; ++address) {
        text += number_text(address, 16, 4, true) + " : " + value + ";\n";
    }
    return text;
}

TEST(FastMifLines, LinesBeyondTheDepthEndTheRead) {
    EXPECT_TRUE(read_equally(uniform_lines(0, 48, "5A"), 8, 48));
    EXPECT_FALSE(read_equally(uniform_lines(0, 120, "5A"), 8, 48));
    std::string uneven_lines;
    for (unsigned address = 0; address < 120; ++address) {
        uneven_lines += number_text(address, 16, 4, true) + " : " + std::string(1 + address % 2, '5') + ";\n";
    }
    EXPECT_FALSE(read_equally(uneven_lines, 8, 48));
    std::string values;
    for (unsigned address = 0; address < 120; address += 2) {
        values += number_text(address, 16, 4, true) + " : 5 A;\n";
    }
    EXPECT_FALSE(read_equally(values, 8, 48));
}

TEST(FastMifLines, AnEmptyValueEndsTheRead) {
    EXPECT_FALSE(read_equally("0 : 5;\n1 : ;\n"));
    EXPECT_FALSE(read_equally("0 : 5;\n1 : 5;\n2 : ;\n"));
    EXPECT_FALSE(read_equally("0 : 5;\n1 : 5 5;\n3 : ;\n"));
}

TEST(FastMifLines, AnExpectedLineMayBeTooLong) {
    const std::size_t longest = mif_reader::line_limit;
    const auto line_of = [](unsigned address, std::size_t length) {
        const std::string front = number_text(address, 16, 4, true) + ":";
        return front + std::string(length - front.size() - 1, '1') + ";\n";
    };
    EXPECT_TRUE(read_equally(line_of(0, longest) + line_of(1, longest), 2048));
    EXPECT_FALSE(read_equally(line_of(0, longest) + line_of(1, longest) + line_of(2, longest + 1), 2048));
    std::string many_values;
    for (int value = 0; value < 300; ++value) {
        many_values += " 1";
    }
    EXPECT_FALSE(read_equally("0 : 1;\n1 :" + many_values + ";\n", 8, 1000));
}

TEST(FastMifLines, TheEndAfterAnAddressThatJumpsIsNoValue) {
    std::string content = uniform_lines(0, 40, "ABC");
    for (unsigned address = 41; address < 200; address += 2) {
        EXPECT_TRUE(read_equally(content, 12, 256)) << address;
        content += uniform_lines(address, 1, "ABC");
    }
}

} // namespace
} // namespace kvr
