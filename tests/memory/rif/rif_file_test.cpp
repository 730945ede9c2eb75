#include "kvr/memory/memory_file.h"
#include "kvr/memory/rif/rif_file.h"
#include "tests/memory/error_messages.h"
#include "tests/memory/rif/rif_steps.h"
#include "tests/memory/temporary_directory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <random>
#include <string>
#include <string_view>

#if !defined(_WIN32)
#include <unistd.h>
#endif

namespace {

using kvr::rif_steps;
using kvr_test::content_of;
using kvr_test::error_messages;
using kvr_test::temporary_directory;
using testing::ElementsAre;
using testing::IsEmpty;

/// A memory file of the type RIF with eight words of eight bits.
class RifFile : public testing::Test {
protected:
    RifFile() {
        file.set_file_type(FILE_TYPE_RIF);
        file.set_file_name(directory.path("data.rif"));
        file.set_word_size(8);
        file.set_number_of_words(8);
    }

    void content(std::string_view text) { static_cast<void>(directory.file("data.rif", text)); }

    temporary_directory directory;
    KVR_MEMORY_FILE file;
};

TEST(RifFileDefaults, AreHexadecimalAndEmpty) {
    KVR_MEMORY_FILE file;
    file.set_file_type(FILE_TYPE_RIF);
    EXPECT_EQ(file.get_number_of_words(), 0U);
    EXPECT_EQ(file.get_word_size(), 0U);
    EXPECT_EQ(file.get_address_radix(), RADIX_HEX);
    EXPECT_EQ(file.get_memory_radix(), RADIX_HEX);
    EXPECT_EQ(file.get_error_state(), ERROR_STATE_NONE);
    EXPECT_FALSE(file.get_error_occurred());
    EXPECT_FALSE(file.get_file_not_found());
    EXPECT_EQ(file.get_invalid_line_number(), 0);
    EXPECT_EQ(file.get_file_name(), "");
}

TEST_F(RifFile, NewWordsAreEmpty) {
    EXPECT_EQ(file.get_data_word(7, RADIX_NONE), "");
}

TEST_F(RifFile, InitializeValueDoesNotReachIt) {
    file.set_memory_initialize_value("FF");
    file.set_number_of_words(9);
    EXPECT_EQ(file.get_data_word(8, RADIX_NONE), "");
}

TEST_F(RifFile, ResizingKeepsTheWordsThatStay) {
    file.set_data_word(0, "12", RADIX_HEX);
    file.set_data_word(7, "34", RADIX_HEX);
    file.set_number_of_words(4);
    file.set_number_of_words(8);
    EXPECT_EQ(file.get_data_word(0, RADIX_NONE), "12");
    EXPECT_EQ(file.get_data_word(7, RADIX_NONE), "");
}

TEST_F(RifFile, HandlerSizesItsWordsItself) {
    KVR_MEMORY_RIF_FILE handler(nullptr);
    handler.set_number_of_words(3);
    EXPECT_EQ(rif_steps{handler}.memory().number_of_words, 3U);
    EXPECT_EQ(rif_steps{handler}.memory().data_words.size(), 3U);
}

TEST_F(RifFile, HighestAddressIsTheNumberOfWords) {
    EXPECT_EQ(file.get_highest_address(), 8U);
}

TEST_F(RifFile, SettingAWordStoresItAndIsFalse) {
    EXPECT_FALSE(file.set_data_word(3, "A5", RADIX_HEX));
    EXPECT_EQ(file.get_data_word(3, RADIX_HEX), "A5");
    EXPECT_THAT(error_messages(file), IsEmpty());
}

TEST_F(RifFile, WordThatIsSetIsFittedToTheWordSize) {
    file.set_data_word(0, "1", RADIX_HEX);
    file.set_data_word(1, "abc", RADIX_NONE);
    EXPECT_EQ(file.get_data_word(0, RADIX_NONE), "01");
    EXPECT_EQ(file.get_data_word(1, RADIX_NONE), "BC");
}

TEST_F(RifFile, WordIsConvertedFromTheMemoryRadixToTheGivenOne) {
    file.set_data_word(0, "0F", RADIX_BIN);
    EXPECT_EQ(file.get_data_word(0, RADIX_NONE), "00001111");
}

TEST_F(RifFile, WordIsGivenInTheRadixAskedFor) {
    file.set_data_word(0, "0C", RADIX_HEX);
    EXPECT_EQ(file.get_data_word(0, RADIX_BIN), "00001100");
    EXPECT_EQ(file.get_data_word(0, RADIX_OCT), "014");
    EXPECT_EQ(file.get_data_word(0, RADIX_UNS), "21");
}

TEST_F(RifFile, WordThatWasReadIsGivenAsItStands) {
    content("1 ");
    ASSERT_TRUE(file.read_file());
    EXPECT_EQ(file.get_data_word(0, RADIX_HEX), "1");
    EXPECT_EQ(file.get_data_word(0, RADIX_NONE), "1");
    EXPECT_EQ(file.get_data_word(0, RADIX_BIN), "00000001");
}

TEST_F(RifFile, GettingAWordOutOfRangeGivesAMessage) {
    EXPECT_EQ(file.get_data_word(8, RADIX_HEX), "");
    EXPECT_THAT(
        error_messages(file),
        ElementsAre("Invalid memory address value. Address value is bigger than the maximum number of "
                    "words in the memory. The number of words in the memory is 8 and the specified "
                    "address is 8"));
}

TEST_F(RifFile, SettingAWordOutOfRangeGivesAMessage) {
    EXPECT_FALSE(file.set_data_word(4294967295U, "1", RADIX_HEX));
    EXPECT_THAT(
        error_messages(file),
        ElementsAre("Invalid memory address value. Address value is bigger than the maximum number of "
                    "words in the memory. The number of words in the memory is 8 and the specified "
                    "address is -1"));
}

TEST_F(RifFile, HandlerWithoutOwnerDropsItsMessages) {
    KVR_MEMORY_RIF_FILE handler(nullptr);
    EXPECT_EQ(handler.get_rif_data_word(0, RADIX_HEX), "");
    EXPECT_FALSE(handler.set_rif_data_word(0, "1", RADIX_HEX));
}

TEST_F(RifFile, CellValueIsHexadecimalDigitsBlanksAndUnknowns) {
    KVR_MEMORY_RIF_FILE handler(nullptr);
    EXPECT_TRUE(handler.check_if_cell_value_is_valid("0123456789ABCDEFabcdef XxUu"));
    EXPECT_TRUE(handler.check_if_cell_value_is_valid(""));
    EXPECT_FALSE(handler.check_if_cell_value_is_valid("12G"));
    EXPECT_FALSE(handler.check_if_cell_value_is_valid("@1"));
    EXPECT_FALSE(handler.check_if_cell_value_is_valid(std::string(1, '\0')));
}

TEST_F(RifFile, ReadNeedsAnExistingFile) {
    EXPECT_FALSE(file.can_proceed_with_read());
    EXPECT_FALSE(file.read_file());
    EXPECT_FALSE(file.get_file_not_found());
    EXPECT_THAT(error_messages(file), IsEmpty());
    content("");
    EXPECT_TRUE(file.can_proceed_with_read());
    EXPECT_TRUE(file.read_file());
}

TEST_F(RifFile, ReadNeedsAFileName) {
    file.set_file_name("");
    EXPECT_FALSE(file.can_proceed_with_read());
    EXPECT_FALSE(file.read_file());
}

TEST_F(RifFile, WriteNeedsEverySetting) {
    EXPECT_TRUE(file.can_proceed_with_write());
    file.set_word_size(0);
    EXPECT_FALSE(file.can_proceed_with_write());
    file.set_word_size(8);
    file.set_memory_radix(RADIX_NONE);
    EXPECT_FALSE(file.can_proceed_with_write());
    file.set_memory_radix(RADIX_HEX);
    file.set_number_of_words(0);
    EXPECT_FALSE(file.can_proceed_with_write());
    file.set_number_of_words(1);
    file.set_file_name("");
    EXPECT_FALSE(file.can_proceed_with_write());
    EXPECT_FALSE(file.write_file());
    EXPECT_THAT(error_messages(file), IsEmpty());
}

/// A handler with everything that a write needs.
class RifHandler : public testing::Test {
protected:
    RifHandler() {
        handler.set_number_of_words(1);
        memory.word_size = 8;
        memory.file_name = directory.path("data.rif");
    }

    temporary_directory directory;
    KVR_MEMORY_RIF_FILE handler = KVR_MEMORY_RIF_FILE(nullptr);
    kvr::rif_memory& memory = rif_steps{handler}.memory();
};

TEST_F(RifHandler, WriteNeedsAnAddressRadix) {
    EXPECT_TRUE(handler.can_proceed_with_write());
    memory.address_radix = RADIX_NONE;
    EXPECT_FALSE(handler.can_proceed_with_write());
}

TEST_F(RifHandler, WriteNeedsADepthAndWords) {
    memory.number_of_words = 0;
    EXPECT_FALSE(handler.can_proceed_with_write());
    memory.number_of_words = 1;
    memory.data_words.resize(0, "");
    EXPECT_FALSE(handler.can_proceed_with_write());
}

TEST_F(RifHandler, ReadOfAMissingFileIsTrueWithTheFlag) {
    EXPECT_TRUE(handler.read_in_rif_file());
    EXPECT_TRUE(memory.file_not_found);
    EXPECT_FALSE(memory.error_occurred);
    EXPECT_EQ(memory.error_state, ERROR_STATE_NONE);
}

TEST_F(RifHandler, ReadNeedsAnExistingFile) {
    EXPECT_FALSE(handler.can_proceed_with_read());
    memory.file_name = directory.file("data.rif", "");
    EXPECT_TRUE(handler.can_proceed_with_read());
}

TEST_F(RifHandler, AddressIsWrittenInTheBaseGiven) {
    std::string text = "before";
    rif_steps{handler}.convert_address_to_hex(0xABCD, text, 16);
    EXPECT_EQ(text, "abcd");
    rif_steps{handler}.convert_address_to_hex(10, text, 2);
    EXPECT_EQ(text, "1010");
    rif_steps{handler}.convert_address_to_hex(4294967295U, text, 10);
    EXPECT_EQ(text, "4294967295");
    rif_steps{handler}.convert_address_to_hex(35, text, 36);
    EXPECT_EQ(text, "z");
    rif_steps{handler}.convert_address_to_hex(0, text, 16);
    EXPECT_EQ(text, "0");
}

TEST_F(RifHandler, DataIsConvertedToHexadecimal) {
    std::string text = "before";
    EXPECT_TRUE(rif_steps{handler}.convert_data_to_hex("1100", text, RADIX_BIN, 8));
    EXPECT_EQ(text, "0C");
}

TEST_F(RifHandler, DataWithoutRadixIsNotConverted) {
    std::string text = "before";
    EXPECT_FALSE(rif_steps{handler}.convert_data_to_hex("1100", text, RADIX_NONE, 0));
    EXPECT_EQ(text, "");
}

TEST_F(RifHandler, RadixesHaveTheirBase) {
    EXPECT_EQ(rif_steps{handler}.get_radix_base(RADIX_BIN), 2);
    EXPECT_EQ(rif_steps{handler}.get_radix_base(RADIX_OCT), 8);
    EXPECT_EQ(rif_steps{handler}.get_radix_base(RADIX_HEX), 16);
    EXPECT_EQ(rif_steps{handler}.get_radix_base(RADIX_DEC), 10);
    EXPECT_EQ(rif_steps{handler}.get_radix_base(RADIX_UNS), 10);
    EXPECT_EQ(rif_steps{handler}.get_radix_base(RADIX_FIXED_POINT), 10);
    EXPECT_EQ(rif_steps{handler}.get_radix_base(RADIX_NONE), 10);
}

TEST_F(RifFile, WritingNineWordsEndsWithALineOfOneWord) {
    file.set_number_of_words(9);
    EXPECT_TRUE(file.write_file());
    EXPECT_EQ(content_of(file.get_file_name()), "\n@0\n00 00 00 00 00 00 00 00 \n@8\n00 ");
}

TEST_F(RifFile, ReadingAnAddressLineAndTwoWords) {
    file.set_number_of_words(32);
    content("@10\nAB CD ");
    EXPECT_TRUE(file.read_file());
    EXPECT_EQ(file.get_data_word(16, RADIX_HEX), "AB");
    EXPECT_EQ(file.get_data_word(17, RADIX_HEX), "CD");
}

TEST_F(RifFile, ReadOfAnIllegalLineIsTrueWithErrorStateAndMessage) {
    content("12 3G \n44 ");
    EXPECT_TRUE(file.read_file());
    EXPECT_EQ(file.get_error_state(), ERROR_STATE_INVALID_LINE);
    EXPECT_FALSE(file.get_error_occurred());
    EXPECT_EQ(file.get_invalid_line_number(), 0);
    EXPECT_EQ(file.get_data_word(0, RADIX_NONE), "");
    EXPECT_THAT(error_messages(file),
                ElementsAre("Invalid line found in memory file.  Illegal line -- 12 3G  -- found in file " +
                            file.get_file_name()));
}

TEST_F(RifFile, LowerCaseDataIsStoredInUpperCase) {
    content("ab x u ");
    EXPECT_TRUE(file.read_file());
    EXPECT_EQ(file.get_data_word(0, RADIX_NONE), "AB");
    EXPECT_EQ(file.get_data_word(1, RADIX_NONE), "X");
    EXPECT_EQ(file.get_data_word(2, RADIX_NONE), "U");
}

TEST_F(RifFile, ReadOfADirectoryIsTrueAndNotFound) {
    file.set_file_name(directory.path("."));
    EXPECT_TRUE(file.read_file());
    EXPECT_TRUE(file.get_file_not_found());
    EXPECT_FALSE(file.get_error_occurred());
    EXPECT_THAT(error_messages(file), IsEmpty());
}

#if !defined(_WIN32)

TEST_F(RifFile, ReadOfAnUnreadableFileIsTrueAndNotFound) {
    if (geteuid() == 0) {
        GTEST_SKIP() << "every file is readable for the superuser";
    }
    content("12 ");
    std::filesystem::permissions(file.get_file_name(), std::filesystem::perms::none);
    EXPECT_TRUE(file.read_file());
    EXPECT_TRUE(file.get_file_not_found());
    EXPECT_THAT(error_messages(file), IsEmpty());
}

#endif

TEST_F(RifFile, ReadOfABinaryFileIsTrueWithErrorState) {
    std::string bytes(3 * 256, '\0');
    std::generate(bytes.begin(), bytes.end(), [value = 0]() mutable { return static_cast<char>(value++); });
    content(bytes);
    EXPECT_TRUE(file.read_file());
    EXPECT_EQ(file.get_error_state(), ERROR_STATE_INVALID_LINE);
    EXPECT_EQ(error_messages(file).size(), 1U);
}

TEST_F(RifFile, TruncatedFileIsReadAsFarAsItGoes) {
    for (std::uint32_t address = 0; address < 8; ++address) {
        file.set_data_word(address, "A" + std::to_string(address), RADIX_HEX);
    }
    ASSERT_TRUE(file.write_file());
    const std::string whole = content_of(file.get_file_name());
    for (std::size_t size = 0; size < whole.size(); ++size) {
        content(whole.substr(0, size));
        EXPECT_TRUE(file.read_file());
        EXPECT_EQ(file.get_error_state(), ERROR_STATE_NONE) << size;
    }
    EXPECT_EQ(file.get_data_word(7, RADIX_NONE), "A7");
}

TEST_F(RifFile, FailedWriteCanBeFollowedByASuccess) {
    file.set_file_name(directory.path("missing/data.rif"));
    EXPECT_FALSE(file.write_file());
    EXPECT_TRUE(file.get_error_occurred());
    file.set_file_name(directory.path("data.rif"));
    EXPECT_TRUE(file.write_file());
    EXPECT_FALSE(file.get_error_occurred());
    EXPECT_FALSE(file.get_file_not_found());
}

std::string random_word(std::mt19937& random, std::uint32_t width) {
    std::string bits(width, '0');
    std::generate(bits.begin(), bits.end(), [&] { return random() % 2 == 0 ? '0' : '1'; });
    return bits;
}

/// A word width in bits.
class RifFileRoundTrip : public testing::TestWithParam<std::uint32_t> {};

INSTANTIATE_TEST_SUITE_P(Widths, RifFileRoundTrip, testing::Range(1U, 131U));

TEST_P(RifFileRoundTrip, WrittenWordsAreReadAndWrittenAgainUnchanged) {
    const temporary_directory directory;
    const std::uint32_t width = GetParam();
    std::mt19937 random(width);
    const auto depth = static_cast<std::uint32_t>(1 + random() % 60);
    KVR_MEMORY_FILE first;
    first.set_file_type(FILE_TYPE_RIF);
    first.set_file_name(directory.path("first.rif"));
    first.set_word_size(width);
    first.set_memory_radix(RADIX_BIN);
    first.set_number_of_words(depth);
    for (std::uint32_t address = 0; address < depth; ++address) {
        first.set_data_word(address, random_word(random, width), RADIX_BIN);
    }
    ASSERT_TRUE(first.write_file());

    KVR_MEMORY_FILE second;
    second.set_file_type(FILE_TYPE_RIF);
    second.set_file_name(directory.path("first.rif"));
    second.set_word_size(width);
    second.set_number_of_words(depth);
    ASSERT_TRUE(second.read_file());
    for (std::uint32_t address = 0; address < depth; ++address) {
        EXPECT_EQ(second.get_data_word(address, RADIX_BIN), first.get_data_word(address, RADIX_BIN));
    }
    second.set_file_name(directory.path("second.rif"));
    ASSERT_TRUE(second.write_file());
    EXPECT_EQ(content_of(directory.path("second.rif")), content_of(directory.path("first.rif")));
}

} // namespace
