// Files that set words several times: single words, lists and ranges of mixed lengths that overlap. The
// result must be the same as in a simple list of texts, for every page and form of the word store.

#include "tests/memory/hex/hex_record_texts.h"
#include "tests/memory/memory_fixture.h"
#include "tests/models/choices.h"
#include "tests/sanitized.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <deque>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace {

using kvr_test::hex_digits;
using kvr_test::random_choices;

/// A file under construction and the words that it sets.
class overlapping_words {
public:
    overlapping_words(std::uint32_t seed, const std::string& unset)
        : chosen(seed),
          words(chosen.between(1000, 5000), unset),
          longest(chosen.one_of(std::array<std::uint32_t, 6>{1, 2, 2, 4, 8, 20})),
          mixed_once_in(chosen.one_of(std::array<std::uint32_t, 4>{1, 3, 40, 500})) {}

    /// Hexadecimal digits, sometimes fewer than the longest.
    std::string text() {
        const std::uint32_t length = chosen.once_in(mixed_once_in) ? chosen.between(1, longest) : longest;
        std::string digits = hex_digits(chosen.below(chosen.once_in(20) ? 2 : 1U << 31U), length);
        return digits.substr(digits.size() - length);
    }

    /// Adjacent addresses, at most @p most.
    std::pair<std::uint32_t, std::uint32_t> stretch(std::uint32_t most) {
        const std::uint32_t first = chosen.below(depth());
        return {first, std::min(depth(), first + chosen.between(1, most))};
    }

    [[nodiscard]] std::uint32_t depth() const { return static_cast<std::uint32_t>(words.size()); }

    random_choices chosen;
    std::deque<std::string> words;

private:
    std::uint32_t longest;
    std::uint32_t mixed_once_in;
};

void expect_words(KVR_MEMORY_FILE& file, const std::deque<std::string>& words) {
    ASSERT_EQ(file.get_number_of_words(), words.size());
    for (std::uint32_t address = 0; address < words.size(); ++address) {
        ASSERT_EQ(file.get_data_word(address, RADIX_NONE), words[address]) << "at " << address;
    }
}

/// Sets some words of @p file and of @p all to other texts.
void set_some_words(KVR_MEMORY_FILE& file, overlapping_words& all) {
    for (int i = 0; i < 300; ++i) {
        const std::uint32_t address = all.chosen.below(all.depth());
        all.words[address] = all.text();
        // A word is stored in as many digits as its width has.
        file.set_word_size(static_cast<unsigned>(4 * all.words[address].size()));
        EXPECT_EQ(file.set_data_word(address, all.words[address], RADIX_HEX),
                  file.get_file_type() != FILE_TYPE_RIF);
    }
}

class OverlappingWords : public testing::Test {
protected:
    /// Reads @p text into its own file object, then sets some of its words, and compares with @p all.
    void read_and_compare(KVR_FILE_TYPES type, unsigned word_size, const std::string& text,
                          overlapping_words& all) {
        KVR_MEMORY_FILE file;
        file.set_file_type(type);
        file.set_word_size(word_size);
        if (type == FILE_TYPE_RIF) { // the other formats contain it
            file.set_number_of_words(all.depth());
        }
        file.set_file_name(path);
        kvr_test::write_content(path, text);
        ASSERT_TRUE(file.read_file());
        ASSERT_NO_FATAL_FAILURE(expect_words(file, all.words));
        set_some_words(file, all);
        expect_words(file, all.words);
    }

    kvr_test::temporary_directory folder;
    std::string path = folder.path("words");
};

/// Content lines of all kinds. A single address may be set only once, but ranges and lists may overlap it.
class mif_lines {
public:
    explicit mif_lines(overlapping_words& target) : all(target) {}

    std::string next() {
        switch (all.chosen.below(8)) {
        case 0:
            return single_lines(all.depth());
        case 1:
        case 2:
            return single_lines(200);
        case 3:
        case 4:
            return list();
        default:
            return range();
        }
    }

private:
    std::string single_lines(std::uint32_t most) {
        std::string lines;
        const auto [first, after] = all.stretch(most);
        for (std::uint32_t address = first; address < after; ++address) {
            if (set_alone.insert(address).second) {
                all.words[address] = all.text();
                lines += hex_digits(address, 1) + " : " + all.words[address] + ";\n";
            }
        }
        return lines;
    }

    std::string list() {
        const auto [first, after] = all.stretch(12);
        if (after - first < 2) {
            return "";
        }
        std::string line = hex_digits(first, 1) + " :";
        for (std::uint32_t address = first; address < after; ++address) {
            all.words[address] = all.text();
            line += " " + all.words[address];
        }
        return line + ";\n";
    }

    std::string range() {
        const auto [first, after] = all.stretch(all.chosen.once_in(6) ? all.depth() : 60);
        if (after - first < 2) {
            return "";
        }
        std::string line = "[" + hex_digits(first, 1) + ".." + hex_digits(after - 1, 1) + "] :";
        std::deque<std::string> values(all.chosen.between(1, 5));
        for (std::string& value : values) {
            value = all.text();
            line += " " + value;
        }
        for (std::uint32_t address = first; address < after; ++address) {
            all.words[address] = values[(address - first) % values.size()];
        }
        return line + ";\n";
    }

    overlapping_words& all;
    std::set<std::uint32_t> set_alone;
};

TEST_F(OverlappingWords, OfMifLeaveThoseThatWereSetLast) {
    const std::uint32_t files = kvr_test::fewer(kvr_test::is_sanitized ? 10U : 120U);
    for (std::uint32_t seed = 1; seed <= files; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        overlapping_words all(seed, "0");
        mif_lines lines(all);
        std::string text = "WIDTH=96;\nDEPTH=" + std::to_string(all.depth()) +
                           ";\nADDRESS_RADIX=HEX;\nDATA_RADIX=HEX;\nCONTENT BEGIN\n";
        for (int line = 0; line < 60; ++line) {
            text += lines.next();
        }
        ASSERT_NO_FATAL_FAILURE(read_and_compare(FILE_TYPE_MIF, 96, text + "END;\n", all));
    }
}

/// Words that start at a new address, some of them in one line.
std::string rif_words(overlapping_words& all) {
    const auto [first, after] = all.stretch(all.chosen.once_in(4) ? all.depth() : 80);
    const std::uint32_t words_a_line = all.chosen.between(1, 16);
    std::string text = "@" + hex_digits(first, 1) + "\n";
    for (std::uint32_t address = first; address < after; ++address) {
        all.words[address] = all.text();
        text += all.words[address] + ((address - first) % words_a_line == words_a_line - 1 ? " \n" : " ");
    }
    return text + "\n";
}

TEST_F(OverlappingWords, OfRifLeaveThoseThatWereSetLast) {
    const std::uint32_t files = kvr_test::fewer(kvr_test::is_sanitized ? 10U : 120U);
    for (std::uint32_t seed = 1; seed <= files; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        overlapping_words all(seed, "");
        std::string text;
        for (int group = 0; group < 40; ++group) {
            text += rif_words(all);
        }
        ASSERT_NO_FATAL_FAILURE(read_and_compare(FILE_TYPE_RIF, 96, text, all));
    }
}

/// A record with @p digits digits for each word.
std::string hex_record(overlapping_words& all, std::uint32_t digits) {
    const auto [first, after] = all.stretch(64 / digits);
    std::string data;
    for (std::uint32_t address = first; address < after; ++address) {
        all.words[address] = hex_digits(all.chosen.below(256), digits);
        data += all.words[address];
    }
    return kvr_test::hex_record_line(0, first, data) + "\n";
}

TEST_F(OverlappingWords, OfIntelHexLeaveThoseThatWereSetLast) {
    const std::uint32_t files = kvr_test::fewer(kvr_test::is_sanitized ? 10U : 60U);
    for (std::uint32_t seed = 1; seed <= files; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        // An unset word has the initialize value, which is shorter than the words.
        overlapping_words all(seed, "0");
        const std::uint32_t digits = all.chosen.one_of(std::array<std::uint32_t, 4>{2, 4, 8, 16});
        std::string text;
        for (int record = 0; record < 900; ++record) {
            text += hex_record(all, digits);
        }
        const std::uint32_t last = all.depth() - 1;
        all.words[last] = hex_digits(seed, digits);
        text += kvr_test::hex_record_line(0, last, all.words[last]) + "\n:00000001FF\n";
        ASSERT_NO_FATAL_FAILURE(read_and_compare(FILE_TYPE_HEX, 4 * digits, text, all));
    }
}

class OverlappingMif : public kvr_test::memory_fixture {
protected:
    OverlappingMif() : memory_fixture(FILE_TYPE_MIF) {}
};

TEST_F(OverlappingMif, ARangeOfMixedLengthsOverSingleLinesKeepsEveryLength) {
    std::string text = "WIDTH=8;\nDEPTH=2048;\nCONTENT BEGIN\n";
    for (unsigned address = 0; address < 2048; ++address) {
        text += hex_digits(address, 1) + " : " + hex_digits(address % 256, 2) + ";\n";
    }
    ASSERT_TRUE(read(text + "[100..17F] : 10 0;\nEND;\n"));
    EXPECT_EQ(words(0xFE, 0x105), (std::vector<std::string>{"FE", "FF", "10", "0", "10", "0", "10", "0"}));
    EXPECT_EQ(words(0x17E, 0x181), (std::vector<std::string>{"10", "0", "80", "81"}));
}

TEST_F(OverlappingMif, ARangeOfMixedLengthsOverAFewWordsKeepsEveryLength) {
    std::string text = "WIDTH=8;\nDEPTH=14;\nCONTENT BEGIN\n[b..d] : AA;\n";
    for (unsigned address = 0; address <= 10; ++address) {
        text += hex_digits(address, 1) + " : " + hex_digits(0x10 + address, 2) + ";\n";
    }
    ASSERT_TRUE(read(text + "c : 77;\n[4..7] : 12 3;\nEND;\n"));
    EXPECT_EQ(words(3, 8), (std::vector<std::string>{"13", "12", "3", "12", "3", "18"}));
}

TEST_F(OverlappingMif, AShorterWordThatIsSetOverAFullPageKeepsItsLength) {
    std::string text = "WIDTH=8;\nDEPTH=1024;\nCONTENT BEGIN\n[0..3FE] : AA;\n3FF : BB;\n";
    for (unsigned word = 0; word < 89; ++word) {
        text += hex_digits(2 * word + 1, 1) + " : " + hex_digits(0x10 + word, 2) + ";\n";
    }
    ASSERT_TRUE(read(text + "0 : C;\nEND;\n"));
    EXPECT_EQ(words(0, 3), (std::vector<std::string>{"C", "10", "AA", "11"}));
}

} // namespace
