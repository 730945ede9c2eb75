#include "kvr/memory/hex/hex_memory.h"
#include "kvr/memory/hex/hex_writer.h"
#include "kvr/memory/io/output_file.h"
#include "kvr/util/letter_case.h"
#include "tests/memory/hex/hex_record_texts.h"
#include "tests/memory/temporary_directory.h"
#include "tests/memory/words_of_all_kinds.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace kvr {
namespace {

using kvr_test::content_of;
using kvr_test::temporary_directory;

constexpr std::string_view end_record = ":00000001ff\n";

void set_words(hex_memory& memory, const std::vector<std::string>& words) {
    memory.resize_words(static_cast<std::uint32_t>(words.size()));
    for (std::uint32_t address = 0; address < words.size(); ++address) {
        memory.data_words.set(address, words[address]);
    }
}

/// The text written for @p words, without the required end record.
std::string records_of(const std::vector<std::string>& words, std::uint32_t word_size,
                       KVR_MEMORY_RADIXES radix = RADIX_HEX) {
    const temporary_directory directory;
    hex_memory memory(nullptr);
    memory.word_size = word_size;
    memory.memory_radix = radix;
    memory.file_name = directory.path("words.hex");
    set_words(memory, words);
    EXPECT_TRUE(write_hex_file(memory));
    std::string text = content_of(memory.file_name);
    EXPECT_TRUE(text.ends_with(end_record)) << text;
    return text.substr(0, text.size() - std::min(text.size(), end_record.size()));
}

TEST(HexWriter, WordsOf8Bits) {
    EXPECT_EQ(records_of({"12", "AB"}, 8), ":0100000012ed\n:01000100ab53\n");
}

TEST(HexWriter, ShortWordIsPaddedToItsBytes) {
    EXPECT_EQ(records_of({"1"}, 16), ":020000000001fd\n");
}

TEST(HexWriter, WordsAreWrittenInLowerCase) {
    EXPECT_EQ(records_of({"ABCDEF"}, 24), ":03000000abcdef96\n");
}

TEST(HexWriter, WordsOfWidthsThatAreNoMultipleOf8TakeWholeBytes) {
    EXPECT_EQ(records_of({"ABC"}, 12), ":020000000abc38\n");
    EXPECT_EQ(records_of({"1"}, 1), ":0100000001fe\n");
    EXPECT_EQ(records_of({"1FF"}, 9), ":0200000001fffe\n");
}

TEST(HexWriter, EmptyWordIsSkippedAndTheNextOneTakesItsAddress) {
    EXPECT_EQ(records_of({"12", "", "", "AB"}, 8), ":0100000012ed\n:01000100ab53\n");
    EXPECT_EQ(records_of({"", ""}, 8), "");
}

TEST(HexWriter, WordLongerThanTheWordSizeIsWrittenAsItIs) {
    EXPECT_EQ(records_of({"1234"}, 8), ":010000001234b9\n");
}

TEST(HexWriter, ChecksumOfAWordWithAnOddNumberOfDigitsTakesTheOddOneByItself) {
    EXPECT_EQ(records_of({"123"}, 8), ":01000000123db\n");
    EXPECT_EQ(records_of({"12345678A"}, 8), ":0100000012345678ae1\n");
}

TEST(HexWriter, ChecksumOfOtherCharactersIsThatOfTheDigitsBeforeThem) {
    EXPECT_EQ(records_of({"G1"}, 8), ":01000000g1ff\n");
    EXPECT_EQ(records_of({"1X"}, 8), ":010000001xfe\n");
    EXPECT_EQ(records_of({"0X12"}, 16), ":020000000x12ec\n");
    EXPECT_EQ(records_of({"X5"}, 24), ":030000000000x5fd\n");
    EXPECT_EQ(records_of({" +"}, 8), ":01000000 +ff\n");
}

TEST(HexWriter, PaddingMovesThePiecesOfTheChecksum) {
    EXPECT_EQ(records_of({"G2345678"}, 40), ":0500000000g234567883\n");
}

TEST(HexWriter, HighBytesArePassedThrough) {
    EXPECT_EQ(records_of({"\xC4\xE4"}, 8), ":01000000\304\344"
                                           "ff\n");
}

TEST(HexWriter, RecordLengthOf256BytesTakes3Digits) {
    const std::string text = records_of({"1"}, 2048);
    EXPECT_EQ(text, ":100000000" + std::string(511, '0') + "1ff\n");
}

TEST(HexWriter, WordsOfAnyLengthAreWritten) {
    const std::string word(3000, 'f');
    EXPECT_EQ(records_of({word}, 8), ":01000000" + word + "db\n");
    const std::string long_word(600000, '1');
    EXPECT_EQ(records_of({long_word}, 8), ":01000000" + long_word + "1f\n");
}

TEST(HexWriter, WideWordsArePaddedAtAnyWidth) {
    EXPECT_EQ(records_of({"1"}, 800000), ":186a0000000" + std::string(199999, '0') + "15f\n");
}

TEST(HexWriter, WordSize0WritesTheWordWithRecordLength0) {
    EXPECT_EQ(records_of({"AB"}, 0), ":00000000ab55\n");
    EXPECT_EQ(records_of({"1010"}, 0, RADIX_BIN), ":00000000Af6\n");
}

TEST(HexWriter, BinaryWordIsPaddedToTheWordSize) {
    EXPECT_EQ(records_of({"1010"}, 8, RADIX_BIN), ":010000000Af5\n");
    EXPECT_EQ(records_of({"1"}, 12, RADIX_BIN), ":020000000001fd\n");
}

TEST(HexWriter, ConvertedWordsHaveUpperCaseDigits) {
    EXPECT_EQ(records_of({"10101011", "11001101"}, 8, RADIX_BIN), ":01000000AB54\n:01000100CD31\n");
}

TEST(HexWriter, ConvertedWordsKeepTheirLastBits) {
    EXPECT_EQ(records_of({"1111111100000001"}, 8, RADIX_BIN), ":0100000001fe\n");
    EXPECT_EQ(records_of({"111100"}, 3, RADIX_BIN), ":0100000004fb\n");
}

TEST(HexWriter, DecimalAndOctalWordsAreConverted) {
    EXPECT_EQ(records_of({"171"}, 8, RADIX_UNS), ":01000000AB54\n");
    EXPECT_EQ(records_of({"7"}, 8, RADIX_DEC), ":0100000007f8\n");
    EXPECT_EQ(records_of({"253"}, 8, RADIX_OCT), ":01000000AB54\n");
}

TEST(HexWriter, DecimalWordsOfOneLengthAreConverted) {
    std::vector<std::string> decimal;
    std::vector<std::string> hexadecimal;
    for (unsigned index = 0; index < 3000; ++index) {
        const unsigned value = 100 + index % 150;
        decimal.push_back(std::to_string(value));
        hexadecimal.push_back(kvr_test::hex_digits(value, 2));
    }
    EXPECT_EQ(to_lower_case(records_of(decimal, 8, RADIX_UNS)), records_of(hexadecimal, 8));
}

TEST(HexWriter, DontCareDigitsOfOctalWordsBecomeDontCareDigits) {
    EXPECT_EQ(records_of({"00X"}, 8, RADIX_OCT), ":010000000Xff\n");
}

TEST(HexWriter, EmptyWordIsSkippedInEveryRadix) {
    for (const KVR_MEMORY_RADIXES radix : {RADIX_BIN, RADIX_DEC, RADIX_UNS, RADIX_OCT}) {
        EXPECT_EQ(records_of({"", "1"}, 8, radix), ":0100000001fe\n") << radix;
    }
}

TEST(HexWriter, WordsInAnUnknownRadixAreWrittenAsZeros) {
    EXPECT_EQ(records_of({"12"}, 8, RADIX_FIXED_POINT), ":0100000000ff\n");
}

/// The record of @p text with the number @p index, starting at 0.
std::string line_at(const std::string& text, std::size_t index) {
    std::size_t begin = 0;
    for (; index > 0; --index) {
        begin = text.find('\n', begin) + 1;
    }
    return text.substr(begin, text.find('\n', begin) - begin);
}

TEST(HexWriter, Word65537BeginsAPage) {
    std::vector<std::string> words(65537, "00");
    words[65535] = "12";
    words[65536] = "34";
    const std::string text = records_of(words, 8);
    EXPECT_EQ(line_at(text, 65534), ":01fffe000002");
    EXPECT_EQ(line_at(text, 65535), ":01ffff0012ef");
    EXPECT_EQ(line_at(text, 65536), ":020000040001f9");
    EXPECT_EQ(line_at(text, 65537), ":0100000034cb");
}

TEST(HexWriter, FirstPageHasNoAddressRecord) {
    const std::string text = records_of(std::vector<std::string>(65536, "00"), 8);
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 65536);
    EXPECT_EQ(text.find(":02000004"), std::string::npos);
}

TEST(HexWriter, EmptyWordsDoNotCountForThePage) {
    std::vector<std::string> words(65540, "00");
    words[3] = words[9] = words[65536] = "";
    const std::string text = records_of(words, 8);
    EXPECT_EQ(line_at(text, 65536), ":020000040001f9");
    EXPECT_EQ(line_at(text, 65537), ":0100000000ff");
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 65538);
}

TEST(HexWriter, EveryPageHasItsNumber) {
    const std::string text = records_of(std::vector<std::string>(17 * 65536 + 1, "00"), 8);
    EXPECT_EQ(line_at(text, 2 * 65537 - 1), ":020000040002f8");
    EXPECT_EQ(line_at(text, 16 * 65537 - 1), ":020000040010ea");
    EXPECT_EQ(line_at(text, 17 * 65537 - 1), ":020000040011e9");
}

/// The records according to the rules, word by word.
std::string plain_records_of(const std::vector<std::string>& words, std::uint32_t word_size) {
    const temporary_directory directory;
    output_file file = output_file::create(directory.path("plain.hex"));
    const hex_record_layout layout(word_size / 8, true);
    std::uint32_t written = 0;
    for (const std::string& word : words) {
        if (word.empty()) {
            continue;
        }
        if (written != 0 && written % 65536 == 0) {
            const std::string line =
                kvr_test::hex_record_line(4, 0, kvr_test::hex_digits(written / 65536, 4, false), false);
            file.write(line + '\n');
        }
        write_hex_record(layout, written % 65536, word, file);
        ++written;
    }
    EXPECT_TRUE(file.close());
    return content_of(directory.path("plain.hex"));
}

TEST(HexWriter, MemoriesOfAllKindsAreWrittenAsTheRulesSayOfEachWord) {
    kvr_test::random_numbers numbers(8);
    for (const std::uint32_t bytes : {1U, 2U, 3U, 4U, 9U}) {
        const auto words =
            kvr_test::words_of_all_kinds(numbers, 65000 + numbers() % 2000, 2 * bytes - numbers() % 2);
        ASSERT_TRUE(records_of(words, 8 * bytes) == plain_records_of(words, 8 * bytes)) << bytes << " bytes";
    }
}

TEST(HexWriter, PagesOfDifferentWordsBeginWhereTheRulesSay) {
    kvr_test::random_numbers numbers(9);
    std::vector<std::string> words;
    while (words.size() < 2 * 65536) {
        words.push_back(kvr_test::hex_digits(numbers() % 256, 2));
    }
    ASSERT_TRUE(records_of(words, 8) == plain_records_of(words, 8));
    words.erase(words.begin() + 65536, words.end());
    ASSERT_TRUE(records_of(words, 8) == plain_records_of(words, 8));
    words.insert(words.begin() + 100, "");
    words.push_back("5A");
    ASSERT_TRUE(records_of(words, 8) == plain_records_of(words, 8));
}

TEST(HexWriter, FileThatCannotBeOpenedIsForgottenByTheNextWrite) {
    const temporary_directory directory;
    hex_memory memory(nullptr);
    memory.memory_radix = RADIX_HEX;
    memory.file_name = directory.path("missing/words.hex");
    set_words(memory, {"12"});
    EXPECT_FALSE(write_hex_file(memory));
    EXPECT_TRUE(memory.file_not_found);
    memory.file_name = directory.path("words.hex");
    EXPECT_TRUE(write_hex_file(memory));
    EXPECT_FALSE(memory.file_not_found);
    EXPECT_FALSE(memory.error_occurred);
}

struct value_case {
    std::uint32_t value;
    std::uint32_t width;
    std::string_view text;
    std::int32_t sum;
};

class FormatHexValue : public testing::TestWithParam<value_case> {};

TEST_P(FormatHexValue, WritesDigitsAndAddsTheirPairs) {
    std::string text = "left over";
    EXPECT_EQ(format_hex_value(GetParam().value, text, GetParam().width), GetParam().sum);
    EXPECT_EQ(text, GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Values, FormatHexValue,
    testing::Values(value_case{0, 0, "0", 0}, value_case{0, 4, "0000", 0}, value_case{0xAB, 2, "ab", 0xAB},
                    value_case{0xABC, 2, "abc", 0xAB + 0xC}, value_case{0xABC, 4, "0abc", 0x0A + 0xBC},
                    value_case{0xFFFF, 4, "ffff", 2 * 0xFF},
                    value_case{0x12345, 4, "12345", 0x12 + 0x34 + 0x5},
                    value_case{0xFFFFFFFF, 4, "ffffffff", 4 * 0xFF}, value_case{1, 3, "001", 1},
                    value_case{0x10, 11, "00000000010", 0x1}));

TEST(FormatFastHexRecord, GivesTheRecordsOfTheExactWay) {
    const temporary_directory directory;
    output_file exact = output_file::create(directory.path("exact.hex"));
    std::string plain;
    std::vector<char> room(output_file::room_limit);
    kvr_test::random_record_lines random(6);
    int records = 0;
    for (int i = 0; i < 50000; ++i) {
        const bool is_broken = random.below(4) == 0;
        const std::string word = is_broken ? random.broken() : random.digits(1 + random.below(40));
        const hex_record_layout layout(static_cast<std::uint32_t>(random.below(20)), random.below(2) == 0);
        const auto address = static_cast<std::uint32_t>(random.below(65536));
        const std::size_t size = format_fast_hex_record(layout, address, word, room.data());
        if (size != 0) {
            ++records;
            plain.append(room.data(), size);
            write_hex_record(layout, address, word, exact);
        }
    }
    ASSERT_TRUE(exact.close());
    EXPECT_TRUE(plain == content_of(directory.path("exact.hex")));
    EXPECT_GT(records, 15000);
}

TEST(FormatFastHexRecord, TakesEveryWordOfDigitsThatFitsItsBytes) {
    kvr_test::random_record_lines random(7);
    std::vector<char> room(output_file::room_limit);
    for (std::uint32_t bytes = 1; bytes <= 64; ++bytes) {
        const hex_record_layout layout(bytes, true);
        for (std::size_t digits = 1; digits <= 2 * bytes; ++digits) {
            EXPECT_NE(format_fast_hex_record(layout, 0, random.digits(digits), room.data()), 0U);
        }
    }
}

TEST(FormatFastHexRecord, LeavesOtherCharactersOddDigitsAndLongRecordsToTheExactWay) {
    std::vector<char> room(output_file::room_limit);
    const hex_record_layout layout(1, true);
    for (const char* word : {"G1", "1X", " 1", "123", "0x12", "-1"}) {
        EXPECT_EQ(format_fast_hex_record(layout, 0, word, room.data()), 0U) << word;
    }
    EXPECT_EQ(format_fast_hex_record(layout, 0, std::string(4084, '0'), room.data()), 4096U);
    EXPECT_EQ(format_fast_hex_record(layout, 0, std::string(4086, '0'), room.data()), 0U);
}

TEST(HexWriter, EmptyWordsAmongWordsThatWereNeverSetAreSkipped) {
    const temporary_directory directory;
    hex_memory memory(nullptr);
    memory.word_size = 8;
    memory.memory_radix = RADIX_HEX;
    memory.file_name = directory.path("words.hex");
    memory.memory_initialize_value = "5A";
    memory.resize_words(60);
    std::vector<std::string> words(60, "5A");
    for (std::uint32_t address = 0; address < words.size(); address += 2) {
        memory.data_words.set(address, "");
        words[address] = "";
    }
    EXPECT_TRUE(write_hex_file(memory));
    EXPECT_EQ(content_of(memory.file_name), records_of(words, 8) + std::string(end_record));
}

} // namespace
} // namespace kvr
