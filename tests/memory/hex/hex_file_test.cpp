#include "kvr/memory/hex/hex_file.h"
#include "kvr/memory/memory_file.h"
#include "tests/memory/error_messages.h"
#include "tests/memory/hex/hex_record_texts.h"
#include "tests/memory/hex/hex_steps.h"
#include "tests/memory/temporary_directory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace kvr {
namespace {

using kvr_test::content_of;
using kvr_test::temporary_directory;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* four_byte_file = ":020000040000FA\n:0400000012345678E8\n:00000001FF\n";

/// A memory file of type Intel HEX and the directory of its file.
class HexFile : public testing::Test {
protected:
    HexFile() { memory.set_file_type(FILE_TYPE_HEX); }

    void name(const std::string& path) { memory.set_file_name(path); }

    bool read(std::string_view content) {
        name(directory.file("words.hex", content));
        return memory.read_file();
    }

    std::vector<std::string> words() {
        std::vector<std::string> texts;
        for (unsigned int address = 0; address < memory.get_number_of_words(); ++address) {
            texts.push_back(memory.get_data_word(address, RADIX_NONE));
        }
        return texts;
    }

    std::vector<std::string> messages() { return kvr_test::error_messages(memory); }

    [[nodiscard]] std::string invalid_line_message() const {
        return "Invalid line found in memory file.  Invalid line --  -- found in file " +
               memory.get_file_name();
    }
    [[nodiscard]] std::string not_found_message() const {
        return "Memory file cannot be opened.  Memory file -- " + memory.get_file_name() + " -- not found. ";
    }

    temporary_directory directory;
    KVR_MEMORY_FILE memory;
};

TEST_F(HexFile, StartsWithWordsOf8BitsAndNothingElse) {
    KVR_MEMORY_HEX_FILE handler(nullptr);
    const hex_memory& held = hex_steps{handler}.memory();
    EXPECT_EQ(held.number_of_words, 0U);
    EXPECT_EQ(held.word_size, 8U);
    EXPECT_EQ(held.memory_radix, RADIX_NONE);
    EXPECT_FALSE(held.error_occurred);
    EXPECT_FALSE(held.file_not_found);
    EXPECT_EQ(held.invalid_line_number, 0);
    EXPECT_EQ(held.file_name, "");
    EXPECT_EQ(held.error_state, ERROR_STATE_NONE);
    EXPECT_EQ(held.memory_initialize_value, "0");
    EXPECT_EQ(held.lowest_address, 0U);
    EXPECT_EQ(held.highest_address, 0U);
    EXPECT_TRUE(held.data_words.empty());
    EXPECT_EQ(held.address_offset, 0U);
    EXPECT_EQ(held.memory_file, nullptr);
}

TEST_F(HexFile, FourBytesAreReadAsFourWords) {
    ASSERT_TRUE(read(four_byte_file));
    EXPECT_THAT(words(), ElementsAre("12", "34", "56", "78"));
    EXPECT_EQ(memory.get_number_of_words(), 4U);
    EXPECT_EQ(memory.get_lowest_address(), 0U);
    EXPECT_EQ(memory.get_highest_address(), 3U);
    EXPECT_EQ(memory.get_memory_radix(), RADIX_HEX);
    EXPECT_FALSE(memory.get_error_occurred());
    EXPECT_EQ(memory.get_invalid_line_number(), 0);
    EXPECT_THAT(messages(), IsEmpty());
}

TEST_F(HexFile, FourBytesAreReadAsTwoWordsOf16Bits) {
    memory.set_word_size(16);
    ASSERT_TRUE(read(four_byte_file));
    EXPECT_THAT(words(), ElementsAre("1234", "5678"));
}

TEST_F(HexFile, FourBytesAreReadAsOneWordOf32Bits) {
    memory.set_word_size(32);
    ASSERT_TRUE(read(four_byte_file));
    EXPECT_THAT(words(), ElementsAre("12345678"));
}

TEST_F(HexFile, ChecksumOffByOneIsAnInvalidLineWithoutItsText) {
    EXPECT_FALSE(read(":0400000012345678E9\n:00000001FF\n"));
    EXPECT_EQ(memory.get_invalid_line_number(), 1);
    EXPECT_TRUE(memory.get_error_occurred());
    EXPECT_FALSE(memory.get_file_not_found());
    EXPECT_EQ(memory.get_error_state(), ERROR_STATE_INVALID_LINE);
    EXPECT_THAT(messages(),
                ElementsAre("Invalid line found in memory file.  Invalid line --  -- found in file " +
                            directory.path("words.hex")));
}

struct invalid_case {
    std::string_view content;
    int line;
};

class HexFileInvalidLine : public HexFile, public testing::WithParamInterface<invalid_case> {};

TEST_P(HexFileInvalidLine, IsReportedWithItsNumber) {
    EXPECT_FALSE(read(GetParam().content));
    EXPECT_EQ(memory.get_invalid_line_number(), GetParam().line);
    EXPECT_TRUE(memory.get_error_occurred());
    EXPECT_EQ(memory.get_error_state(), ERROR_STATE_INVALID_LINE);
    EXPECT_EQ(memory.get_number_of_words(), 0U);
    EXPECT_THAT(messages(), ElementsAre(invalid_line_message()));
}

INSTANTIATE_TEST_SUITE_P(FieldsThatEndEarly, HexFileInvalidLine,
                         testing::Values(invalid_case{":\n:00000001FF\n", 1},
                                         invalid_case{"\n:00\n:00000001FF\n", 2}, invalid_case{":0000\n", 1},
                                         invalid_case{":000000", 1}, invalid_case{":0000000\n", 1}));
INSTANTIATE_TEST_SUITE_P(OtherLengthThanTheRecordSays, HexFileInvalidLine,
                         testing::Values(invalid_case{":0100000012ED\n:0200000012EC\n:00000001FF\n", 2},
                                         invalid_case{":0000000012EE\n", 1}, invalid_case{":00000001F\n", 1},
                                         invalid_case{":00000001\n", 1}));
INSTANTIATE_TEST_SUITE_P(Checksum, HexFileInvalidLine,
                         testing::Values(invalid_case{":0100000012ED\n\n:01000100AB52\n:00000001FF\n", 3},
                                         invalid_case{":0100000012ED\n:00000001FE\n", 2}));
INSTANTIATE_TEST_SUITE_P(UnknownType, HexFileInvalidLine,
                         testing::Values(invalid_case{":0100000012ED\n:0100000600F9\n:00000001FF\n", 2},
                                         invalid_case{":000000FF01\n", 1}));
INSTANTIATE_TEST_SUITE_P(NoEndRecord, HexFileInvalidLine,
                         testing::Values(invalid_case{":0100000012ED\n", 2}, invalid_case{":0100000012ED", 1},
                                         invalid_case{":0100000012ED\r\n:01000100AB53\r\n", 3},
                                         invalid_case{"", 1}, invalid_case{"\n", 2},
                                         invalid_case{"no record at all\n", 2}));
INSTANTIATE_TEST_SUITE_P(NoData, HexFileInvalidLine,
                         testing::Values(invalid_case{":00000001FF\n", 1},
                                         invalid_case{":0000000000\n:00000001FF\n", 2},
                                         invalid_case{":020000040001F9\n:00000001FF\n", 2}));
INSTANTIATE_TEST_SUITE_P(TruncatedRecord, HexFileInvalidLine,
                         testing::Values(invalid_case{":0100000012ED\n:0400010012345", 2}));
INSTANTIATE_TEST_SUITE_P(BinaryContent, HexFileInvalidLine,
                         testing::Values(invalid_case{std::string_view("\x7F\0\0\1\n\n\xFF\xFE\n", 9), 4},
                                         invalid_case{std::string_view(":\0\0\0\0\0\0\0\0\n", 10), 1}));

TEST_F(HexFile, RecordInALineOf600CharactersIsAnInvalidLine) {
    std::string line = ":0100000012ED";
    line.resize(600, ' ');
    EXPECT_FALSE(read(line + "\n:00000001FF\n"));
    EXPECT_EQ(memory.get_invalid_line_number(), 1);
    EXPECT_FALSE(read(std::string(700, ' ') + line + "\n:00000001FF\n"));
    EXPECT_EQ(memory.get_invalid_line_number(), 1);
    EXPECT_TRUE(read(line.substr(0, 599) + "\n:00000001FF\n"));
}

TEST_F(HexFile, LongLineOfTextIsPassedOver) {
    EXPECT_TRUE(read(std::string(5000, '-') + ":1\n:0100000012ED\n:00000001FF\n"));
    EXPECT_THAT(words(), ElementsAre("12"));
}

TEST_F(HexFile, SecondFailureQueuesNoSecondMessage) {
    EXPECT_FALSE(read(":00000001FF\n"));
    EXPECT_FALSE(read("\n\n:broken\n"));
    EXPECT_EQ(memory.get_invalid_line_number(), 3);
    EXPECT_THAT(messages(), ElementsAre(invalid_line_message()));
}

TEST_F(HexFile, SuccessClearsTheErrorButNotTheErrorState) {
    EXPECT_FALSE(read(":00000001FF\n"));
    EXPECT_TRUE(read(four_byte_file));
    EXPECT_FALSE(memory.get_error_occurred());
    EXPECT_EQ(memory.get_invalid_line_number(), 0);
    EXPECT_EQ(memory.get_error_state(), ERROR_STATE_INVALID_LINE);
    EXPECT_FALSE(read(":00000001FF\n"));
    EXPECT_TRUE(memory.get_error_occurred());
    EXPECT_THAT(messages(), ElementsAre(invalid_line_message()));
}

TEST_F(HexFile, FailedReadKeepsTheWordsAndTheirNumber) {
    ASSERT_TRUE(read(four_byte_file));
    EXPECT_FALSE(read(":0100000012ED\n"));
    EXPECT_THAT(words(), ElementsAre("12", "34", "56", "78"));
}

TEST_F(HexFile, FailedReadSetsTheMemoryRadix) {
    memory.set_memory_radix(RADIX_BIN);
    EXPECT_FALSE(read(""));
    EXPECT_EQ(memory.get_memory_radix(), RADIX_HEX);
}

TEST_F(HexFile, UncoveredWordsHoldTheInitializeValue) {
    memory.set_memory_initialize_value("EE");
    ASSERT_TRUE(read(":020002001122C9\n:00000001FF\n"));
    EXPECT_THAT(words(), ElementsAre("EE", "EE", "11", "22"));
}

TEST_F(HexFile, SecondReadKeepsTheWordsOfTheFirst) {
    ASSERT_TRUE(read(":0400000012345678E8\n:00000001FF\n"));
    ASSERT_TRUE(read(":0100030055A7\n:00000001FF\n"));
    EXPECT_THAT(words(), ElementsAre("12", "34", "56", "55"));
}

TEST_F(HexFile, SecondReadKeepsTheAddressOffset) {
    ASSERT_TRUE(read(":020000020001FB\n:0100000011EE\n:00000001FF\n"));
    memory.set_number_of_words(32);
    ASSERT_TRUE(read(":020002001122C9\n:020000020000FC\n:01000100AB53\n:00000001FF\n"));
    EXPECT_THAT(words(), ElementsAre("0", "AB", "0", "0"));
}

TEST_F(HexFile, DataAfterASegmentAddressIsStoredThere) {
    ASSERT_TRUE(read(":020000021000EC\n:01000100AB53\n:00000001FF\n"));
    EXPECT_EQ(memory.get_number_of_words(), 0x10002U);
    EXPECT_EQ(memory.get_data_word(0x10001, RADIX_HEX), "AB");
}

TEST_F(HexFile, DataAfterALinearAddressIsStoredThere) {
    ASSERT_TRUE(read(":02000004000AF0\n:01000100AB53\n:00000001FF\n"));
    EXPECT_EQ(memory.get_number_of_words(), 0xA0002U);
    EXPECT_EQ(memory.get_data_word(0xA0001, RADIX_HEX), "AB");
}

TEST_F(HexFile, MissingFileIsRefusedWithoutTouchingAnything) {
    name(directory.path("missing.hex"));
    EXPECT_FALSE(memory.can_proceed_with_read());
    EXPECT_FALSE(memory.read_file());
    EXPECT_FALSE(memory.get_file_not_found());
    EXPECT_THAT(messages(), IsEmpty());
}

TEST_F(HexFile, HandlerAskedForAMissingFileReportsIt) {
    KVR_MEMORY_HEX_FILE handler(&memory);
    name(directory.path("missing.hex"));
    hex_steps{handler}.memory().file_name = directory.path("missing.hex");
    EXPECT_FALSE(handler.can_proceed_with_read());
    EXPECT_FALSE(handler.read_in_hex_file());
    EXPECT_TRUE(hex_steps{handler}.memory().file_not_found);
    EXPECT_FALSE(hex_steps{handler}.memory().error_occurred);
    EXPECT_EQ(hex_steps{handler}.memory().error_state, ERROR_STATE_NONE);
    EXPECT_THAT(messages(), ElementsAre(not_found_message()));
}

TEST_F(HexFile, DirectoryCannotBeOpened) {
    name(directory.path("."));
    EXPECT_TRUE(memory.can_proceed_with_read());
    EXPECT_FALSE(memory.read_file());
    EXPECT_TRUE(memory.get_file_not_found());
    EXPECT_FALSE(memory.get_error_occurred());
    EXPECT_EQ(memory.get_error_state(), ERROR_STATE_NONE);
    EXPECT_EQ(memory.get_memory_radix(), RADIX_HEX);
    EXPECT_THAT(messages(), ElementsAre(not_found_message()));
}

TEST_F(HexFile, ReadThatSucceedsClearsFileNotFound) {
    name(directory.path("."));
    EXPECT_FALSE(memory.read_file());
    EXPECT_TRUE(read(four_byte_file));
    EXPECT_FALSE(memory.get_file_not_found());
}

TEST_F(HexFile, HandlerWithoutOwnerDropsItsMessages) {
    KVR_MEMORY_HEX_FILE handler(nullptr);
    hex_steps{handler}.memory().file_name = directory.path("missing.hex");
    EXPECT_FALSE(handler.read_in_hex_file());
    EXPECT_TRUE(hex_steps{handler}.memory().file_not_found);
    EXPECT_EQ(handler.get_hex_data_word(0, RADIX_HEX), "");
    EXPECT_FALSE(handler.set_hex_data_word(0, "1", RADIX_HEX));
    hex_steps{handler}.memory().file_name = directory.path("missing/out.hex");
    EXPECT_FALSE(handler.write_out_hex_file());
    EXPECT_TRUE(hex_steps{handler}.memory().error_occurred);
}

// Words and their addresses.

TEST_F(HexFile, SetNumberOfWordsFillsNewWordsAndDropsTheSurplus) {
    KVR_MEMORY_HEX_FILE handler(&memory);
    hex_steps{handler}.memory().memory_radix = RADIX_HEX;
    handler.set_number_of_words(2);
    hex_steps{handler}.memory().memory_initialize_value = "F";
    handler.set_number_of_words(3);
    EXPECT_EQ(handler.get_hex_data_word(0, RADIX_HEX), "0");
    EXPECT_EQ(handler.get_hex_data_word(2, RADIX_HEX), "F");
    handler.set_number_of_words(1);
    EXPECT_EQ(hex_steps{handler}.memory().number_of_words, 1U);
    EXPECT_EQ(hex_steps{handler}.memory().data_words.size(), 1U);
}

TEST_F(HexFile, GetWordInNoneOrTheMemoryRadixGivesTheStoredText) {
    ASSERT_TRUE(read(":0100000012ED\n:00000001FF\n"));
    EXPECT_EQ(memory.get_data_word(0, RADIX_NONE), "12");
    EXPECT_EQ(memory.get_data_word(0, RADIX_HEX), "12");
}

TEST_F(HexFile, GetWordInAnotherRadixConvertsIt) {
    ASSERT_TRUE(read(":0100000012ED\n:00000001FF\n"));
    EXPECT_EQ(memory.get_data_word(0, RADIX_BIN), "00010010");
    EXPECT_EQ(memory.get_data_word(0, RADIX_OCT), "022");
    EXPECT_EQ(memory.get_data_word(0, RADIX_UNS), "81");
}

TEST_F(HexFile, GetWordBeyondTheStoreReportsTheAddress) {
    ASSERT_TRUE(read(four_byte_file));
    EXPECT_EQ(memory.get_data_word(4, RADIX_HEX), "");
    EXPECT_THAT(
        messages(),
        ElementsAre("Invalid memory address value. Address value is bigger than the maximum number of "
                    "words in the memory. The number of words in the memory is 4 and the specified "
                    "address is 4"));
    EXPECT_FALSE(memory.get_error_occurred());
    EXPECT_EQ(memory.get_error_state(), ERROR_STATE_NONE);
}

TEST_F(HexFile, SetWordInTheMemoryRadixNormalizesIt) {
    ASSERT_TRUE(read(four_byte_file));
    EXPECT_TRUE(memory.set_data_word(0, "a", RADIX_HEX));
    EXPECT_TRUE(memory.set_data_word(1, "1ff", RADIX_NONE));
    EXPECT_THAT(words(), ElementsAre("0A", "FF", "56", "78"));
}

TEST_F(HexFile, SetWordInAnotherRadixConvertsFromTheMemoryRadix) {
    ASSERT_TRUE(read(four_byte_file));
    EXPECT_TRUE(memory.set_data_word(0, "0f", RADIX_BIN));
    EXPECT_EQ(memory.get_data_word(0, RADIX_NONE), "00001111");
    EXPECT_EQ(memory.get_memory_radix(), RADIX_HEX);
}

TEST_F(HexFile, SetWordBeyondTheNumberOfWordsReportsTheAddress) {
    ASSERT_TRUE(read(four_byte_file));
    EXPECT_FALSE(memory.set_data_word(4294967295U, "0", RADIX_HEX));
    EXPECT_THAT(words(), ElementsAre("12", "34", "56", "78"));
    EXPECT_THAT(
        messages(),
        ElementsAre("Invalid memory address value. Address value is bigger than the maximum number of "
                    "words in the memory. The number of words in the memory is 4 and the specified "
                    "address is -1"));
}

TEST_F(HexFile, SetWordThatIsNotInTheStoreIsDropped) {
    KVR_MEMORY_HEX_FILE handler(&memory);
    hex_steps{handler}.memory().memory_radix = RADIX_HEX;
    handler.set_number_of_words(2);
    hex_steps{handler}.memory().number_of_words = 5;
    EXPECT_TRUE(handler.set_hex_data_word(3, "1", RADIX_HEX));
    EXPECT_TRUE(messages().empty());
    EXPECT_EQ(handler.get_hex_data_word(3, RADIX_HEX), "");
    EXPECT_TRUE(handler.set_hex_data_word(2, "1", RADIX_HEX));
    hex_steps{handler}.memory().data_words.resize(3, "0");
    EXPECT_EQ(handler.get_hex_data_word(2, RADIX_HEX), "0");
    hex_steps{handler}.memory().number_of_words = 1;
    EXPECT_FALSE(handler.set_hex_data_word(1, "1", RADIX_HEX));
    EXPECT_EQ(handler.get_hex_data_word(1, RADIX_HEX), "0");
}

// Writing.

TEST_F(HexFile, MemoryWhoseNumberOfWordsIsZeroIsNotWritten) {
    KVR_MEMORY_HEX_FILE handler(&memory);
    handler.set_number_of_words(2);
    kvr::hex_memory& held = hex_steps{handler}.memory();
    held.file_name = directory.path("out.hex");
    held.memory_radix = RADIX_HEX;
    EXPECT_TRUE(handler.can_proceed_with_write());
    held.number_of_words = 0;
    EXPECT_FALSE(handler.can_proceed_with_write());
}

TEST_F(HexFile, WordsAreWrittenOneARecord) {
    name(directory.path("out.hex"));
    memory.set_memory_radix(RADIX_HEX);
    memory.set_number_of_words(2);
    memory.set_data_word(0, "12", RADIX_HEX);
    memory.set_data_word(1, "AB", RADIX_HEX);
    ASSERT_TRUE(memory.write_file());
    EXPECT_EQ(content_of(directory.path("out.hex")), ":0100000012ed\n:01000100ab53\n:00000001ff\n");
    EXPECT_FALSE(memory.get_error_occurred());
    EXPECT_FALSE(memory.get_file_not_found());
}

TEST_F(HexFile, WriteReplacesWhatTheFileHeld) {
    name(directory.file("out.hex", std::string(10000, 'x')));
    memory.set_memory_radix(RADIX_HEX);
    memory.set_number_of_words(1);
    ASSERT_TRUE(memory.write_file());
    EXPECT_EQ(content_of(directory.path("out.hex")), ":0100000000ff\n:00000001ff\n");
}

TEST_F(HexFile, WriteNeedsNameWordsAndRadix) {
    EXPECT_FALSE(memory.can_proceed_with_write());
    memory.set_memory_radix(RADIX_HEX);
    memory.set_number_of_words(1);
    EXPECT_FALSE(memory.can_proceed_with_write());
    name(directory.path("out.hex"));
    EXPECT_TRUE(memory.can_proceed_with_write());
    memory.set_word_size(0);
    EXPECT_TRUE(memory.can_proceed_with_write());
    memory.set_memory_radix(RADIX_NONE);
    EXPECT_FALSE(memory.can_proceed_with_write());
    memory.set_memory_radix(RADIX_HEX);
    memory.set_number_of_words(0);
    EXPECT_FALSE(memory.can_proceed_with_write());
    EXPECT_FALSE(memory.write_file());
    EXPECT_FALSE(std::filesystem::exists(directory.path("out.hex")));
    EXPECT_THAT(messages(), IsEmpty());
}

TEST_F(HexFile, HandlerNeedsWordsInTheStoreToWrite) {
    KVR_MEMORY_HEX_FILE handler(&memory);
    hex_steps{handler}.memory().memory_radix = RADIX_HEX;
    hex_steps{handler}.memory().file_name = directory.path("out.hex");
    hex_steps{handler}.memory().number_of_words = 3;
    EXPECT_FALSE(handler.can_proceed_with_write());
    handler.set_number_of_words(3);
    EXPECT_TRUE(handler.can_proceed_with_write());
}

TEST_F(HexFile, WriteToWhereNoFileCanBeOpenedIsReported) {
    name(directory.path("missing/out.hex"));
    memory.set_memory_radix(RADIX_HEX);
    memory.set_number_of_words(1);
    EXPECT_FALSE(memory.write_file());
    EXPECT_TRUE(memory.get_file_not_found());
    EXPECT_TRUE(memory.get_error_occurred());
    EXPECT_EQ(memory.get_error_state(), ERROR_STATE_NONE);
    EXPECT_THAT(messages(), ElementsAre(not_found_message()));
}

TEST_F(HexFile, FullDiskIsReported) {
    if (!std::filesystem::exists("/dev/full")) {
        GTEST_SKIP() << "there is no device that is always full";
    }
    name("/dev/full");
    memory.set_memory_radix(RADIX_HEX);
    memory.set_number_of_words(100000);
    EXPECT_FALSE(memory.write_file());
    EXPECT_TRUE(memory.get_error_occurred());
    EXPECT_FALSE(memory.get_file_not_found());
    EXPECT_EQ(memory.get_error_state(), ERROR_STATE_NONE);
    EXPECT_THAT(messages(), ElementsAre("Memory file cannot be written.  Memory file -- /dev/full -- "));
}

TEST_F(HexFile, ErrorOfAWriteIsClearedByTheNext) {
    name(directory.path("missing/out.hex"));
    memory.set_memory_radix(RADIX_HEX);
    memory.set_number_of_words(1);
    EXPECT_FALSE(memory.write_file());
    name(directory.path("out.hex"));
    EXPECT_TRUE(memory.write_file());
    EXPECT_FALSE(memory.get_error_occurred());
    EXPECT_FALSE(memory.get_file_not_found());
}

struct size_case {
    unsigned int word_size;
    unsigned int words;
};

class HexFileRoundTrip : public HexFile, public testing::WithParamInterface<size_case> {};

TEST_P(HexFileRoundTrip, GivesTheSameWordsAndTheSameFile) {
    const auto [word_size, count] = GetParam();
    kvr_test::random_record_lines random(word_size + count);
    name(directory.path("first.hex"));
    memory.set_word_size(word_size);
    memory.set_memory_radix(RADIX_HEX);
    memory.set_number_of_words(count);
    for (unsigned int address = 0; address < count; ++address) {
        memory.set_data_word(address, random.digits(word_size / 4), RADIX_HEX);
    }
    ASSERT_TRUE(memory.write_file());

    KVR_MEMORY_FILE second;
    second.set_file_type(FILE_TYPE_HEX);
    second.set_word_size(word_size);
    second.set_file_name(directory.path("first.hex"));
    ASSERT_TRUE(second.read_file());
    ASSERT_EQ(second.get_number_of_words(), count);
    for (unsigned int address = 0; address < count; ++address) {
        std::string expected = memory.get_data_word(address, RADIX_NONE);
        for (char& digit : expected) {
            digit = digit >= 'A' ? static_cast<char>(digit - 'A' + 'a') : digit;
        }
        ASSERT_EQ(second.get_data_word(address, RADIX_NONE), expected) << address;
    }
    second.set_file_name(directory.path("second.hex"));
    ASSERT_TRUE(second.write_file());
    EXPECT_EQ(content_of(directory.path("second.hex")), content_of(directory.path("first.hex")));
}

INSTANTIATE_TEST_SUITE_P(Widths, HexFileRoundTrip,
                         testing::Values(size_case{8, 1}, size_case{8, 1000}, size_case{16, 1000},
                                         size_case{24, 1000}, size_case{32, 1000}, size_case{64, 1000},
                                         size_case{128, 1000}));
INSTANTIATE_TEST_SUITE_P(Pages, HexFileRoundTrip,
                         testing::Values(size_case{8, 65536}, size_case{8, 65537}, size_case{32, 70000},
                                         size_case{16, 131072}, size_case{16, 131073},
                                         size_case{64, 140000}));

TEST_F(HexFile, BinaryMemoryReadsBackAsHexadecimal) {
    name(directory.path("out.hex"));
    memory.set_memory_radix(RADIX_BIN);
    memory.set_number_of_words(2);
    memory.set_data_word(0, "1010", RADIX_BIN);
    memory.set_data_word(1, "11111111", RADIX_BIN);
    ASSERT_TRUE(memory.write_file());
    EXPECT_EQ(content_of(directory.path("out.hex")), ":010000000Af5\n:01000100FFff\n:00000001ff\n");
    ASSERT_TRUE(memory.read_file());
    EXPECT_THAT(words(), ElementsAre("0A", "FF"));
}

// The steps of the reader and the writer.

class HexSteps : public testing::Test {
protected:
    KVR_MEMORY_HEX_FILE handler{nullptr};
};

TEST_F(HexSteps, GetTotalAddressSpaceIsTrueAndReportsTheLineWhenItFailed) {
    line_source source(":0100000012ED\n:broken\n");
    int line_number = 77;
    EXPECT_TRUE(hex_steps{handler}.get_total_address_space(source, &line_number));
    EXPECT_EQ(line_number, 2);
}

TEST_F(HexSteps, GetTotalAddressSpaceIsFalseAndLeavesTheLineWhenItSucceeded) {
    line_source source(":0100000012ED\n:00000001FF\n");
    int line_number = 77;
    EXPECT_FALSE(hex_steps{handler}.get_total_address_space(source, &line_number));
    EXPECT_EQ(line_number, 77);
    EXPECT_EQ(hex_steps{handler}.memory().data_words.size(), 1U);
}

TEST_F(HexSteps, InterpretHexLineIsFalseWhetherWordsAreStoredOrNot) {
    hex_steps{handler}.memory().data_words.resize(2, "-");
    hex_steps{handler}.memory().address_offset = 1;
    EXPECT_FALSE(hex_steps{handler}.interpret_hex_line("0000", "12", "01"));
    EXPECT_FALSE(hex_steps{handler}.interpret_hex_line("FFFF", "34", "01"));
    EXPECT_EQ(hex_steps{handler}.memory().data_words[0], "-");
    EXPECT_EQ(hex_steps{handler}.memory().data_words[1], "12");
}

TEST_F(HexSteps, InterpretHexLineWithWordsOfNoBitsStoresNothing) {
    hex_steps{handler}.memory().word_size = 0;
    hex_steps{handler}.memory().data_words.resize(1, "-");
    EXPECT_FALSE(hex_steps{handler}.interpret_hex_line("0000", "12", "01"));
    EXPECT_EQ(hex_steps{handler}.memory().data_words[0], "-");
}

TEST_F(HexSteps, ParseHexStringFillsTheFields) {
    std::string length;
    std::string address;
    std::string type;
    std::string data;
    std::string checksum;
    EXPECT_TRUE(
        hex_steps{handler}.parse_hex_string(":02A5c7FF12345e", length, address, type, data, checksum));
    EXPECT_THAT((std::vector{length, address, type, data, checksum}),
                ElementsAre("02", "A5c7", "FF", "1234", "5e"));
}

TEST_F(HexSteps, ParseHexStringLeavesTheFieldsWhenItFails) {
    std::string field = "kept";
    for (const char* line : {"", ":", ":02", ":02A5c7", ":02A5c700123", ":02A5c70012345e0"}) {
        EXPECT_FALSE(hex_steps{handler}.parse_hex_string(line, field, field, field, field, field)) << line;
    }
    EXPECT_EQ(field, "kept");
}

TEST_F(HexSteps, RemoveExtraCharsRemovesBlanksAnywhere) {
    std::string line = " a\tb\r\n c\v ";
    hex_steps{handler}.remove_extra_chars(line);
    EXPECT_EQ(line, "abc\v");
    hex_steps{handler}.remove_extra_chars(line);
    EXPECT_EQ(line, "abc\v");
}

TEST_F(HexSteps, SumOfStringBytesAddsThePiecesOf8Characters) {
    EXPECT_EQ(hex_steps{handler}.sum_of_string_bytes("0400000012345678E8"), 0x200U);
    EXPECT_EQ(hex_steps{handler}.sum_of_string_bytes("-1"), 4 * 0xFFU);
}

TEST_F(HexSteps, BytesInWordSizeAreTakenUp) {
    const auto bytes_of = [this](std::uint32_t word_size) {
        hex_steps{handler}.memory().word_size = word_size;
        return hex_steps{handler}.get_bytes_in_word_size();
    };
    EXPECT_EQ(bytes_of(0), 0U);
    EXPECT_EQ(bytes_of(1), 1U);
    EXPECT_EQ(bytes_of(8), 1U);
    EXPECT_EQ(bytes_of(9), 2U);
    EXPECT_EQ(bytes_of(16), 2U);
    EXPECT_EQ(bytes_of(17), 3U);
    EXPECT_EQ(bytes_of(0xFFFFFFFF), 0x20000000U);
}

TEST_F(HexSteps, RadixBaseIs10ForAllButThePowersOf2) {
    EXPECT_EQ(hex_steps{handler}.get_radix_base(RADIX_BIN), 2);
    EXPECT_EQ(hex_steps{handler}.get_radix_base(RADIX_OCT), 8);
    EXPECT_EQ(hex_steps{handler}.get_radix_base(RADIX_HEX), 16);
    for (const KVR_MEMORY_RADIXES radix : {RADIX_DEC, RADIX_UNS, RADIX_FIXED_POINT, RADIX_NONE}) {
        EXPECT_EQ(hex_steps{handler}.get_radix_base(radix), 10) << radix;
    }
}

TEST_F(HexSteps, ConvertValueToHexReturnsTheByteSum) {
    std::string text;
    EXPECT_EQ(hex_steps{handler}.convert_value_to_hex(0xABC, text, 4), 0x0A + 0xBC);
    EXPECT_EQ(text, "0abc");
}

TEST_F(HexSteps, ReadInFileReadsTheFileItIsGiven) {
    const temporary_directory directory;
    EXPECT_TRUE(hex_steps{handler}.read_in_file(directory.file("words.hex", four_byte_file)));
    EXPECT_EQ(hex_steps{handler}.memory().number_of_words, 4U);
}

TEST_F(HexSteps, WriteOutFileWritesWithoutAskingWhetherItCanProceed) {
    const temporary_directory directory;
    hex_steps{handler}.memory().file_name = directory.path("empty.hex");
    EXPECT_TRUE(hex_steps{handler}.write_out_file());
    EXPECT_EQ(content_of(directory.path("empty.hex")), ":00000001ff\n");
}

} // namespace
} // namespace kvr
