#include "kvr/memory/memory_file.h"
#include "kvr/memory/rif/rif_writer.h"
#include "tests/memory/error_messages.h"
#include "tests/memory/temporary_directory.h"
#include "tests/memory/words_of_all_kinds.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <sstream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using kvr::rif_memory;
using kvr_test::content_of;
using kvr_test::error_messages;
using kvr_test::temporary_directory;
using testing::ElementsAre;
using testing::IsEmpty;

class RifWriter : public testing::Test {
protected:
    void set_words(const std::vector<std::string>& words) {
        memory.resize_words(static_cast<std::uint32_t>(words.size()));
        for (std::uint32_t address = 0; address < words.size(); ++address) {
            memory.data_words.set(address, words[address]);
        }
    }

    std::string written(KVR_MEMORY_RADIXES radix, std::uint32_t width,
                        const std::vector<std::string>& words) {
        memory.memory_radix = radix;
        memory.word_size = width;
        set_words(words);
        EXPECT_TRUE(kvr::write_rif_file(memory));
        return content_of(memory.file_name);
    }

    temporary_directory directory;
    KVR_MEMORY_FILE owner;
    rif_memory memory = [this] {
        rif_memory named(&owner);
        named.file_name = directory.path("out.rif");
        named.word_size = 8;
        return named;
    }();
};

TEST_F(RifWriter, TenWordsMakeTwoGroups) {
    EXPECT_EQ(written(RADIX_HEX, 8, {"00", "01", "02", "03", "04", "05", "06", "07", "08", "09"}),
              "\n@0\n00 01 02 03 04 05 06 07 \n@8\n08 09 ");
}

TEST_F(RifWriter, NinthWordStandsAloneInItsGroup) {
    EXPECT_EQ(written(RADIX_HEX, 4, {"1", "2", "3", "4", "5", "6", "7", "8", "9"}),
              "\n@0\n1 2 3 4 5 6 7 8 \n@8\n9 ");
}

TEST_F(RifWriter, EightWordsMakeOneGroup) {
    EXPECT_EQ(written(RADIX_HEX, 4, {"1", "2", "3", "4", "5", "6", "7", "8"}), "\n@0\n1 2 3 4 5 6 7 8 ");
}

TEST_F(RifWriter, EmptyStoreMakesAnEmptyFile) {
    EXPECT_EQ(written(RADIX_HEX, 8, {}), "");
}

TEST_F(RifWriter, MemoriesOfAllKindsAreWrittenAsTheRulesSayOfEachWord) {
    kvr_test::random_numbers numbers(8);
    for (const std::uint32_t width : {0U, 4U, 8U, 12U, 13U, 32U, 64U, 70U, 1024U}) {
        const auto words = kvr_test::words_of_all_kinds(numbers, 20000 + numbers() % 2000,
                                                        (width + 3) / 4 + (width == 0 ? 1U : 0U));
        std::ostringstream expected;
        std::string text;
        for (std::uint32_t address = 0; address < words.size(); ++address) {
            if (address % 8 == 0) {
                expected << "\n@" << std::hex << address << '\n';
            }
            kvr::format_hexadecimal_word(words[address], width, text);
            expected << text << ' ';
        }
        ASSERT_TRUE(written(RADIX_HEX, width, words) == expected.str()) << width << " bits";
    }
}

TEST_F(RifWriter, AddressesAreLowerCaseWithoutLeadingZeros) {
    memory.resize_words(0xB0);
    EXPECT_TRUE(kvr::write_rif_file(memory));
    const std::string text = content_of(memory.file_name);
    EXPECT_THAT(text, testing::HasSubstr("\n@8\n"));
    EXPECT_THAT(text, testing::HasSubstr("\n@10\n"));
    EXPECT_THAT(text, testing::HasSubstr("\n@18\n"));
    EXPECT_THAT(text, testing::HasSubstr("\n@a8\n"));
}

TEST_F(RifWriter, RunsOfEqualWordsAreWrittenWordByWord) {
    memory.resize_words(17);
    memory.data_words.set(16, "7");
    EXPECT_TRUE(kvr::write_rif_file(memory));
    EXPECT_EQ(content_of(memory.file_name),
              "\n@0\n00 00 00 00 00 00 00 00 \n@8\n00 00 00 00 00 00 00 00 \n@10\n07 ");
}

TEST_F(RifWriter, WordsAreWrittenInUpperCase) {
    EXPECT_EQ(written(RADIX_HEX, 8, {"ab", "x", "eF"}), "\n@0\nAB 0X EF ");
}

TEST_F(RifWriter, WordsAreCutToTheWordSizeFromTheRight) {
    EXPECT_EQ(written(RADIX_HEX, 6, {"FFF", "1C3", "XX"}), "\n@0\n3F 03 XX ");
}

TEST_F(RifWriter, WordsArePaddedToTheWordSize) {
    EXPECT_EQ(written(RADIX_HEX, 18, {"1", "", "FFFFF"}), "\n@0\n00001 00000 3FFFF ");
}

TEST_F(RifWriter, WordSizeZeroKeepsTheLength) {
    EXPECT_EQ(written(RADIX_HEX, 0, {"1", "", "00FF"}), "\n@0\n1  00FF ");
}

TEST_F(RifWriter, CharactersThatAreNoDigitsAreZeros) {
    EXPECT_EQ(written(RADIX_HEX, 8, {"UU", "G1", "-1", "+2", " 3"}), "\n@0\n00 01 01 02 03 ");
}

TEST_F(RifWriter, BinaryWordsAreConverted) {
    EXPECT_EQ(written(RADIX_BIN, 8, {"101", "11111111", "1X000000"}), "\n@0\n05 FF X0 ");
}

TEST_F(RifWriter, OctalWordsAreConverted) {
    EXPECT_EQ(written(RADIX_OCT, 9, {"777", "17", "1"}), "\n@0\n1FF 00F 001 ");
}

TEST_F(RifWriter, UnsignedWordsAreConverted) {
    EXPECT_EQ(written(RADIX_UNS, 8, {"255", "10", "256"}), "\n@0\nFF 0A 00 ");
}

TEST_F(RifWriter, NegativeSignedWordsAreInvertedButNotSignExtended) {
    EXPECT_EQ(written(RADIX_DEC, 8, {"5", "-5", "-0"}), "\n@0\n05 0A 03 ");
}

/// The contents of the file after writing these signed words has thrown an exception.
std::string left_of_signed_words(rif_memory& memory, const std::vector<std::string>& words) {
    memory.memory_radix = RADIX_DEC;
    memory.resize_words(static_cast<std::uint32_t>(words.size()));
    for (std::uint32_t address = 0; address < words.size(); ++address) {
        memory.data_words.set(address, words[address]);
    }
    EXPECT_THROW(kvr::write_rif_file(memory), std::out_of_range);
    return content_of(memory.file_name);
}

TEST_F(RifWriter, EmptySignedWordRaisesOutOfRangeAfterTheHeaderOfItsGroup) {
    EXPECT_EQ(left_of_signed_words(memory, {""}), "\n@0\n");
    EXPECT_EQ(left_of_signed_words(memory, std::vector<std::string>(20, "")), "\n@0\n");
    EXPECT_EQ(left_of_signed_words(memory, {"1", "2", "", "4"}), "\n@0\n01 02 ");
    EXPECT_EQ(left_of_signed_words(memory, {"1", "2", "3", "4", "5", "6", "7", "7", ""}),
              "\n@0\n01 02 03 04 05 06 07 07 \n@8\n");
    EXPECT_EQ(left_of_signed_words(memory, {"5", "5", "5", "5", "5", "5", "5", "5", "5", "5", ""}),
              "\n@0\n05 05 05 05 05 05 05 05 \n@8\n05 05 ");
}

TEST_F(RifWriter, WordThatRaisesChangesNoFlagButThatOfTheFile) {
    memory.file_not_found = true;
    for (const bool before : {false, true}) {
        memory.error_occurred = before;
        left_of_signed_words(memory, {""});
        EXPECT_EQ(memory.error_occurred, before);
        EXPECT_FALSE(memory.file_not_found);
    }
    EXPECT_THAT(error_messages(owner), IsEmpty());
}

TEST_F(RifWriter, WordsThatWereNeverSetRaiseOutOfRangeInASignedMemory) {
    owner.set_file_type(FILE_TYPE_RIF);
    owner.set_file_name(memory.file_name);
    owner.set_word_size(8);
    owner.set_memory_radix(RADIX_DEC);
    owner.set_number_of_words(9);
    for (unsigned address = 0; address < 8; ++address) {
        static_cast<void>(owner.set_data_word(address, "1", RADIX_DEC));
    }
    EXPECT_THROW(static_cast<void>(owner.write_file()), std::out_of_range);
    EXPECT_EQ(content_of(memory.file_name), "\n@0\n01 01 01 01 01 01 01 01 \n@8\n");
}

TEST_F(RifWriter, FixedPointWordsAreZeros) {
    EXPECT_EQ(written(RADIX_FIXED_POINT, 8, {"12"}), "\n@0\n00 ");
    EXPECT_THAT(error_messages(owner), IsEmpty());
}

TEST_F(RifWriter, WordsWithoutRadixAreLeftOutWithAMessage) {
    EXPECT_EQ(written(RADIX_NONE, 8, {"12", "34"}), "\n@0\n");
    EXPECT_THAT(error_messages(owner),
                ElementsAre("Data width is wider than the specified word size of the RIF file. Data value at "
                            "address 0 is 12 word size is 8",
                            "Data width is wider than the specified word size of the RIF file. Data value at "
                            "address 1 is 34 word size is 8"));
    EXPECT_FALSE(memory.error_occurred);
}

TEST_F(RifWriter, WordsWithoutRadixAreCounted) {
    EXPECT_EQ(written(RADIX_NONE, 8, std::vector<std::string>(9, "1")), "\n@0\n\n@8\n");
    EXPECT_EQ(error_messages(owner).size(), 9U);
}

TEST_F(RifWriter, SuccessClearsTheFlags) {
    memory.error_occurred = true;
    memory.file_not_found = true;
    EXPECT_EQ(written(RADIX_HEX, 4, {"1"}), "\n@0\n1 ");
    EXPECT_FALSE(memory.error_occurred);
    EXPECT_FALSE(memory.file_not_found);
    EXPECT_THAT(error_messages(owner), IsEmpty());
}

TEST_F(RifWriter, FileIsReplaced) {
    memory.file_name = directory.file("old.rif", std::string(1000, 'x'));
    EXPECT_EQ(written(RADIX_HEX, 4, {"1"}), "\n@0\n1 ");
}

TEST_F(RifWriter, FileThatCannotBeOpenedIsNotFound) {
    memory.file_name = directory.path("missing/out.rif");
    set_words({"1"});
    EXPECT_FALSE(kvr::write_rif_file(memory));
    EXPECT_TRUE(memory.file_not_found);
    EXPECT_TRUE(memory.error_occurred);
    EXPECT_THAT(error_messages(owner), ElementsAre("Memory file cannot be opened.  Memory file -- " +
                                                   memory.file_name + " -- not found. "));
}

TEST_F(RifWriter, FileThatCannotBeOpenedWithoutOwnerIsNotQueued) {
    memory.memory_file = nullptr;
    memory.file_name = directory.path("missing/out.rif");
    EXPECT_FALSE(kvr::write_rif_file(memory));
    EXPECT_TRUE(memory.file_not_found);
    EXPECT_THAT(error_messages(owner), IsEmpty());
}

TEST_F(RifWriter, DirectoryIsNotFound) {
    memory.file_name = directory.path(".");
    set_words({"1"});
    EXPECT_FALSE(kvr::write_rif_file(memory));
    EXPECT_TRUE(memory.file_not_found);
    EXPECT_EQ(error_messages(owner).size(), 1U);
}

#if defined(__linux__)

TEST_F(RifWriter, FullDiskIsTrueWithAMessage) {
    memory.file_name = "/dev/full";
    set_words({"1"});
    EXPECT_TRUE(kvr::write_rif_file(memory));
    EXPECT_FALSE(memory.file_not_found);
    EXPECT_FALSE(memory.error_occurred);
    EXPECT_THAT(error_messages(owner),
                ElementsAre("Memory file cannot be written.  Memory file -- /dev/full -- "));
}

#endif

TEST(FormatHexadecimalWord, OverwritesTheText) {
    std::string text = "before";
    kvr::format_hexadecimal_word("1", 8, text);
    EXPECT_EQ(text, "01");
}

TEST(ConvertWordToHexadecimal, FailsWithoutRadix) {
    std::string text = "before";
    EXPECT_FALSE(kvr::convert_word_to_hexadecimal("1", RADIX_NONE, 8, text));
    EXPECT_EQ(text, "00");
}

TEST(FormatHexadecimalWord, AgreesWithTheConversionForEveryCharacter) {
    for (int code = 0; code < 256; ++code) {
        const std::string word(2, static_cast<char>(code));
        for (std::uint32_t width = 0; width <= 9; ++width) {
            std::string formatted;
            std::string converted;
            kvr::format_hexadecimal_word(word, width, formatted);
            ASSERT_TRUE(kvr::convert_word_to_hexadecimal(word, RADIX_HEX, width, converted));
            ASSERT_EQ(formatted, converted) << code << " at width " << width;
        }
    }
}

TEST(FormatHexadecimalWord, AgreesWithTheConversionForRandomWords) {
    const std::string_view characters = "0123456789ABCDEFabcdefXxUuGz -.\xff\x01";
    std::mt19937 random(7);
    for (int round = 0; round < 20'000; ++round) {
        std::string word(random() % 20, ' ');
        for (char& character : word) {
            character = characters[random() % characters.size()];
        }
        const auto width = static_cast<std::uint32_t>(random() % 71);
        std::string formatted;
        std::string converted;
        kvr::format_hexadecimal_word(word, width, formatted);
        ASSERT_TRUE(kvr::convert_word_to_hexadecimal(word, RADIX_HEX, width, converted));
        ASSERT_EQ(formatted, converted) << '"' << word << "\" at width " << width;
    }
}

/// @p count random words of @p digits digits; the store packs them.
std::vector<std::string> random_words(std::size_t count, std::size_t digits) {
    kvr_test::random_numbers numbers(10);
    std::vector<std::string> words(count);
    for (std::string& word : words) {
        for (std::size_t digit = 0; digit < digits; ++digit) {
            word += "0123456789ABCDEF"[numbers() % 16];
        }
    }
    return words;
}

/// The text written for words with all digits.
std::string groups_of(const std::vector<std::string>& words) {
    std::ostringstream text;
    for (std::size_t address = 0; address < words.size(); ++address) {
        if (address % 8 == 0) {
            text << "\n@" << std::hex << address << '\n';
        }
        text << words[address] << ' ';
    }
    return text.str();
}

TEST_F(RifWriter, LastGroupOfManyWordsMayBeShort) {
    for (const std::uint32_t width : {4U, 8U, 12U, 32U}) {
        for (const std::size_t count : {5000U, 5001U, 5006U}) {
            const std::vector<std::string> words = random_words(count, width / 4);
            ASSERT_TRUE(written(RADIX_HEX, width, words) == groups_of(words)) << width << " bits, " << count;
        }
    }
}

TEST_F(RifWriter, EmptyWordsAmongWordsThatWereNeverSetAreZeros) {
    memory.memory_radix = RADIX_HEX;
    memory.memory_initialize_value = "5A";
    memory.resize_words(60);
    std::vector<std::string> words(60, "5A");
    for (std::uint32_t address = 0; address < words.size(); address += 2) {
        memory.data_words.set(address, "");
        words[address] = "00";
    }
    EXPECT_TRUE(kvr::write_rif_file(memory));
    EXPECT_EQ(content_of(memory.file_name), groups_of(words));
}

TEST_F(RifWriter, GroupsWithLongAddressesAreWrittenAsTheOthers) {
    const std::vector<std::string> words = random_words(70003, 2);
    ASSERT_TRUE(written(RADIX_HEX, 8, words) == groups_of(words));
}

} // namespace
