#include "tests/allocation.h"
#include "tests/memory/memory_fixture.h"

#include <deque>
#include <new>

namespace {

/// A file type that names no format.
KVR_FILE_TYPES no_format() {
    return static_cast<KVR_FILE_TYPES>(2);
}

class MemoryFile : public testing::Test {
protected:
    KVR_MEMORY_FILE file;
};

void expect_defaults(KVR_MEMORY_FILE& file) {
    EXPECT_EQ(file.get_number_of_words(), 0U);
    EXPECT_EQ(file.get_word_size(), 0U);
    EXPECT_EQ(file.get_memory_radix(), RADIX_NONE);
    EXPECT_EQ(file.get_address_radix(), RADIX_NONE);
    EXPECT_TRUE(file.get_error_occurred());
    EXPECT_TRUE(file.get_file_not_found());
    EXPECT_EQ(file.get_invalid_line_number(), 0);
    EXPECT_EQ(file.get_file_name(), "");
    EXPECT_EQ(file.get_error_state(), ERROR_STATE_NONE);
    EXPECT_EQ(file.get_lowest_address(), 0U);
    EXPECT_EQ(file.get_highest_address(), 0U);
    EXPECT_EQ(file.get_data_word(0, RADIX_HEX), "");
    EXPECT_FALSE(file.set_data_word(0, "1", RADIX_HEX));
    EXPECT_FALSE(file.set_data_word_with_comments(0, "1", "comment", RADIX_HEX));
    EXPECT_FALSE(file.can_proceed_with_read());
    EXPECT_FALSE(file.can_proceed_with_write());
    EXPECT_FALSE(file.read_file());
    EXPECT_FALSE(file.write_file());
    EXPECT_FALSE(file.has_error_messages());
}

TEST_F(MemoryFile, AFreshOneAnswersWithItsDefaults) {
    EXPECT_EQ(file.get_file_type(), FILE_TYPE_UNSET);
    expect_defaults(file);
}

TEST_F(MemoryFile, ATypeWithoutFormatCreatesNothing) {
    for (const KVR_FILE_TYPES type : {no_format(), FILE_TYPE_UNSET}) {
        file.set_file_type(type);
        EXPECT_EQ(file.get_file_type(), type);
        file.set_file_name("name");
        file.set_number_of_words(4);
        expect_defaults(file);
    }
}

TEST_F(MemoryFile, CommentOperationsWithoutMifHandlerLeaveTheCallersQueueAlone) {
    std::deque<std::string> comments{"kept"};
    for (const KVR_FILE_TYPES type : {FILE_TYPE_UNSET, FILE_TYPE_HEX, FILE_TYPE_RIF}) {
        file.set_file_type(type);
        EXPECT_FALSE(file.get_data_comments(&comments));
        EXPECT_FALSE(file.set_data_comments(&comments));
        EXPECT_FALSE(file.get_comment_deque(0, &comments));
        EXPECT_FALSE(file.set_comment_deque(0, &comments));
        EXPECT_FALSE(file.set_data_word_with_comments(0, "1", "comment", RADIX_HEX));
        EXPECT_EQ(comments, std::deque<std::string>{"kept"});
    }
}

TEST_F(MemoryFile, TheAddressRadixOfIntelHexIsAlwaysHexadecimal) {
    file.set_file_type(FILE_TYPE_HEX);
    EXPECT_EQ(file.get_address_radix(), RADIX_HEX);
    file.set_address_radix(RADIX_BIN);
    EXPECT_EQ(file.get_address_radix(), RADIX_HEX);
}

/// Sets a type while the allocation of its handler fails.
void set_type_without_memory(KVR_MEMORY_FILE& file, KVR_FILE_TYPES type) {
    const failing_allocation failing(1);
    EXPECT_THROW(file.set_file_type(type), std::bad_alloc);
}

TEST_F(MemoryFile, ATypeWithoutMemoryForItsHandlerIsTheTypeAllTheSame) {
    for (const KVR_FILE_TYPES type : {FILE_TYPE_MIF, FILE_TYPE_RIF}) {
        set_type_without_memory(file, type);
        EXPECT_EQ(file.get_file_type(), type);
        expect_defaults(file);
    }
    set_type_without_memory(file, FILE_TYPE_HEX);
    EXPECT_EQ(file.get_file_type(), FILE_TYPE_HEX);
    EXPECT_EQ(file.get_address_radix(), RADIX_HEX); // of this type, with or without a handler
    EXPECT_EQ(file.get_lowest_address(), 0U);
    EXPECT_EQ(file.get_highest_address(), 0U);
    EXPECT_FALSE(file.set_data_word(0, "1", RADIX_HEX));
    EXPECT_FALSE(file.can_proceed_with_write());
    EXPECT_TRUE(file.get_error_occurred());
}

TEST_F(MemoryFile, CommentOperationsOfMifWithoutMemoryForItLeaveTheCallersQueueAlone) {
    set_type_without_memory(file, FILE_TYPE_MIF);
    std::deque<std::string> comments{"kept"};
    EXPECT_FALSE(file.get_data_comments(&comments));
    EXPECT_FALSE(file.set_data_comments(&comments));
    EXPECT_FALSE(file.get_comment_deque(0, &comments));
    EXPECT_FALSE(file.set_comment_deque(0, &comments));
    EXPECT_EQ(comments, std::deque<std::string>{"kept"});
}

TEST_F(MemoryFile, ATypeWithoutMemoryForItsHandlerCanBeSetAgain) {
    for (const KVR_FILE_TYPES type : {FILE_TYPE_HEX, FILE_TYPE_MIF, FILE_TYPE_RIF}) {
        set_type_without_memory(file, type);
        file.set_file_type(type);
        EXPECT_FALSE(file.get_error_occurred());
    }
}

TEST_F(MemoryFile, OtherHandlersStayWhenThereIsNoMemoryForAFurtherOne) {
    file.set_file_type(FILE_TYPE_MIF);
    file.set_memory_initialize_value("5A");
    file.set_number_of_words(2);
    set_type_without_memory(file, FILE_TYPE_RIF);
    EXPECT_EQ(file.get_number_of_words(), 0U);
    EXPECT_EQ(file.get_data_word(1, RADIX_NONE), "");
    file.set_file_type(FILE_TYPE_MIF);
    EXPECT_EQ(file.get_data_word(1, RADIX_NONE), "5A");
}

TEST_F(MemoryFile, TheAddressRadixIsSetForMifOnly) {
    file.set_file_type(FILE_TYPE_RIF);
    file.set_file_type(FILE_TYPE_MIF);
    file.set_address_radix(RADIX_OCT);
    EXPECT_EQ(file.get_address_radix(), RADIX_OCT);
    file.set_file_type(FILE_TYPE_RIF);
    EXPECT_EQ(file.get_address_radix(), RADIX_HEX);
}

TEST_F(MemoryFile, HandlersStartFromTheirOwnDefaults) {
    file.set_file_type(FILE_TYPE_HEX);
    EXPECT_EQ(file.get_word_size(), 8U);
    EXPECT_EQ(file.get_memory_radix(), RADIX_NONE);
    EXPECT_FALSE(file.get_error_occurred());
    EXPECT_FALSE(file.get_file_not_found());
    file.set_file_type(FILE_TYPE_MIF);
    EXPECT_EQ(file.get_word_size(), 0U);
    EXPECT_EQ(file.get_memory_radix(), RADIX_NONE);
    EXPECT_EQ(file.get_address_radix(), RADIX_NONE);
    file.set_file_type(FILE_TYPE_RIF);
    EXPECT_EQ(file.get_word_size(), 0U);
    EXPECT_EQ(file.get_memory_radix(), RADIX_HEX);
    EXPECT_EQ(file.get_address_radix(), RADIX_HEX);
}

TEST_F(MemoryFile, ASettingMadeBeforeTheHandlerExistsDoesNotReachIt) {
    file.set_word_size(16);
    file.set_file_type(FILE_TYPE_MIF);
    EXPECT_EQ(file.get_word_size(), 0U);
}

TEST_F(MemoryFile, ASettingReachesEveryHandlerThatExists) {
    for (const KVR_FILE_TYPES type : {FILE_TYPE_HEX, FILE_TYPE_MIF, FILE_TYPE_RIF}) {
        file.set_file_type(type);
    }
    file.set_word_size(16);
    file.set_memory_radix(RADIX_OCT);
    file.set_file_name("name");
    file.set_number_of_words(3);
    for (const KVR_FILE_TYPES type : {FILE_TYPE_HEX, FILE_TYPE_MIF, FILE_TYPE_RIF}) {
        file.set_file_type(type);
        EXPECT_EQ(file.get_word_size(), 16U);
        EXPECT_EQ(file.get_memory_radix(), RADIX_OCT);
        EXPECT_EQ(file.get_file_name(), "name");
        EXPECT_EQ(file.get_number_of_words(), 3U);
    }
}

TEST_F(MemoryFile, NewWordsHoldTheInitializeValueOfTheirTime) {
    file.set_file_type(FILE_TYPE_MIF);
    file.set_number_of_words(4);
    file.set_memory_initialize_value("FF");
    file.set_number_of_words(6);
    EXPECT_EQ(kvr_test::stored_words(file, 0, 5), (std::vector<std::string>{"0", "0", "0", "0", "FF", "FF"}));
}

TEST_F(MemoryFile, ShrinkingDropsTheHighestAddresses) {
    file.set_file_type(FILE_TYPE_MIF);
    file.set_memory_radix(RADIX_HEX);
    file.set_word_size(8);
    file.set_number_of_words(3);
    for (unsigned address = 0; address < 3; ++address) {
        EXPECT_TRUE(file.set_data_word(address, "AB", RADIX_HEX));
    }
    file.set_number_of_words(1);
    file.set_number_of_words(3);
    EXPECT_EQ(kvr_test::stored_words(file, 0, 2), (std::vector<std::string>{"AB", "0", "0"}));
}

TEST_F(MemoryFile, TheInitializeValueDoesNotReachRif) {
    file.set_file_type(FILE_TYPE_RIF);
    file.set_memory_initialize_value("FF");
    file.set_number_of_words(2);
    EXPECT_EQ(kvr_test::stored_words(file, 0, 1), (std::vector<std::string>{"", ""}));
}

TEST_F(MemoryFile, TheHighestAddressOfMifAndRifIsTheNumberOfWords) {
    for (const KVR_FILE_TYPES type : {FILE_TYPE_MIF, FILE_TYPE_RIF}) {
        file.set_file_type(type);
        file.set_number_of_words(256);
        EXPECT_EQ(file.get_highest_address(), 256U);
        EXPECT_EQ(file.get_lowest_address(), 0U);
    }
}

TEST_F(MemoryFile, TheHighestAddressOfIntelHexIsThatOfTheLastRead) {
    file.set_file_type(FILE_TYPE_HEX);
    file.set_number_of_words(256);
    EXPECT_EQ(file.get_highest_address(), 0U);
}

TEST_F(MemoryFile, TheLowestAddressIsThatOfTheLastReadOfIntelHex) {
    const kvr_test::temporary_directory folder;
    kvr_test::write_content(folder.path("words.hex"), ":01000500a555\n:00000001ff\n");
    file.set_file_type(FILE_TYPE_HEX);
    file.set_file_name(folder.path("words.hex"));
    file.set_word_size(8);
    file.set_memory_radix(RADIX_HEX);
    ASSERT_TRUE(file.read_file());
    EXPECT_EQ(file.get_lowest_address(), 5U);
    file.set_file_type(FILE_TYPE_MIF);
    EXPECT_EQ(file.get_lowest_address(), 0U);
}

TEST_F(MemoryFile, AHandlerKeepsItsWordsWhileTheTypeIsAnother) {
    file.set_file_type(FILE_TYPE_MIF);
    file.set_memory_radix(RADIX_HEX);
    file.set_word_size(8);
    file.set_number_of_words(2);
    EXPECT_TRUE(file.set_data_word(1, "5A", RADIX_HEX));
    file.set_file_type(FILE_TYPE_HEX);
    EXPECT_EQ(file.get_number_of_words(), 0U);
    file.set_file_type(no_format());
    file.set_file_type(FILE_TYPE_MIF);
    EXPECT_EQ(file.get_data_word(1, RADIX_HEX), "5A");
}

TEST_F(MemoryFile, AMissingOrUnnamedFileIsNotReadAndLeavesNoTrace) {
    for (const KVR_FILE_TYPES type : {FILE_TYPE_HEX, FILE_TYPE_MIF, FILE_TYPE_RIF}) {
        file.set_file_type(type);
        for (const char* name : {"", "/no/such/folder/file"}) {
            file.set_file_name(name);
            EXPECT_FALSE(file.can_proceed_with_read());
            EXPECT_FALSE(file.read_file());
            EXPECT_FALSE(file.get_error_occurred());
            EXPECT_FALSE(file.get_file_not_found());
            EXPECT_EQ(file.get_error_state(), ERROR_STATE_NONE);
        }
    }
    EXPECT_FALSE(file.has_error_messages());
}

struct write_condition {
    const char* missing;
    const char* name;
    unsigned words;
    unsigned size;
    KVR_MEMORY_RADIXES data_radix;
    KVR_MEMORY_RADIXES address_radix;
    bool mif;
    bool hex;
    bool rif;
};

TEST_F(MemoryFile, AWriteNeedsWhatItsFormatNeeds) {
    const write_condition conditions[] = {
        {"nothing", "name", 1, 8, RADIX_HEX, RADIX_HEX, true, true, true},
        {"name", "", 1, 8, RADIX_HEX, RADIX_HEX, false, false, false},
        {"words", "name", 0, 8, RADIX_HEX, RADIX_HEX, false, false, false},
        {"word size", "name", 1, 0, RADIX_HEX, RADIX_HEX, false, true, false},
        {"data radix", "name", 1, 8, RADIX_NONE, RADIX_HEX, false, false, false},
        {"address radix", "name", 1, 8, RADIX_HEX, RADIX_NONE, false, true, true},
    };
    for (const write_condition& condition : conditions) {
        SCOPED_TRACE(condition.missing);
        KVR_MEMORY_FILE memory;
        for (const KVR_FILE_TYPES type : {FILE_TYPE_HEX, FILE_TYPE_MIF, FILE_TYPE_RIF}) {
            memory.set_file_type(type);
        }
        memory.set_file_name(condition.name);
        memory.set_number_of_words(condition.words);
        memory.set_word_size(condition.size);
        memory.set_memory_radix(condition.data_radix);
        memory.set_address_radix(condition.address_radix);
        memory.set_file_type(FILE_TYPE_MIF);
        EXPECT_EQ(memory.can_proceed_with_write(), condition.mif);
        memory.set_file_type(FILE_TYPE_HEX);
        EXPECT_EQ(memory.can_proceed_with_write(), condition.hex);
        memory.set_file_type(FILE_TYPE_RIF);
        EXPECT_EQ(memory.can_proceed_with_write(), condition.rif);
    }
}

TEST_F(MemoryFile, AnIncompleteConfigurationIsNotWrittenAndLeavesNoMessage) {
    const kvr_test::temporary_directory folder;
    for (const KVR_FILE_TYPES type : {FILE_TYPE_HEX, FILE_TYPE_MIF, FILE_TYPE_RIF}) {
        file.set_file_type(type);
        file.set_file_name(folder.path("output"));
        EXPECT_FALSE(file.write_file());
        EXPECT_FALSE(file.has_error_messages());
        EXPECT_FALSE(std::filesystem::exists(folder.path("output")));
    }
}

TEST_F(MemoryFile, AMifFileIsReadAndWrittenAsIntelHex) {
    const kvr_test::temporary_directory folder;
    kvr_test::write_content(folder.path("in.mif"), "WIDTH=8;\nDEPTH=4;\nADDRESS_RADIX=DEC;\nDATA_RADIX=BIN;\n"
                                                   "CONTENT BEGIN\n[0..2] : 10100101;\n3 : 1;\nEND;\n");
    file.set_file_type(FILE_TYPE_MIF);
    file.set_file_name(folder.path("in.mif"));
    ASSERT_TRUE(file.read_file());
    std::vector<std::string> words;
    for (unsigned address = 0; address < file.get_number_of_words(); ++address) {
        words.push_back(file.get_data_word(address, RADIX_HEX));
    }
    EXPECT_EQ(words, (std::vector<std::string>{"A5", "A5", "A5", "01"}));
    file.set_file_type(FILE_TYPE_HEX);
    file.set_file_name(folder.path("out.hex"));
    file.set_word_size(8);
    file.set_memory_radix(RADIX_HEX);
    file.set_number_of_words(4);
    for (unsigned address = 0; address < 4; ++address) {
        EXPECT_TRUE(file.set_data_word(address, words[address], RADIX_HEX));
    }
    ASSERT_TRUE(file.write_file());
    EXPECT_EQ(kvr_test::content_of(folder.path("out.hex")),
              ":01000000a55a\n:01000100a559\n:01000200a558\n:0100030001fb\n:00000001ff\n");
}

/// The words that get_data_word() copies are those that the rules determine.
TEST_F(MemoryFile, WordsOfEveryLengthAndKindOfPageComeBackAsTheyAre) {
    for (const KVR_FILE_TYPES type : {FILE_TYPE_HEX, FILE_TYPE_MIF, FILE_TYPE_RIF}) {
        KVR_MEMORY_FILE each;
        each.set_file_type(type);
        each.set_memory_radix(RADIX_HEX);
        each.set_number_of_words(40 * 1024);
        std::vector<std::string> expected(std::size_t{40} * 1024, each.get_data_word(0, RADIX_NONE));
        for (unsigned address = 0; address < expected.size(); ++address) {
            const unsigned page = address / 1024;
            const std::size_t length = page < 36 ? page : 1 + address % 20;
            if (length == 0 || address % 50 == 49) {
                continue;
            }
            expected[address] = std::string(length - 1, 'A') + "0123456789ABCDEF"[address % 16];
            each.set_word_size(static_cast<unsigned>(4 * length));
            each.set_data_word(address, expected[address], RADIX_HEX);
        }
        for (unsigned address = 0; address < expected.size(); ++address) {
            ASSERT_EQ(each.get_data_word(address, RADIX_HEX), expected[address]) << address;
            ASSERT_EQ(each.get_data_word(address, RADIX_NONE), expected[address]) << address;
        }
        EXPECT_FALSE(each.has_error_messages());
        EXPECT_EQ(each.get_data_word(40 * 1024, RADIX_HEX), "");
        EXPECT_TRUE(each.has_error_messages());
    }
}

TEST(MemoryFileTypes, ConsolidationIsAMatterOfMifFilesAlone) {
    for (const KVR_FILE_TYPES type : {FILE_TYPE_HEX, FILE_TYPE_RIF}) {
        KVR_MEMORY_FILE file;
        file.set_file_type(type);
        file.set_dont_consolidate_data(true);
        EXPECT_EQ(file.get_file_type(), type);
        // A new handler has the initial state of every MIF handler.
        file.set_file_type(FILE_TYPE_MIF);
        const kvr_test::temporary_directory folder;
        file.set_file_name(folder.path("out.mif"));
        file.set_number_of_words(2);
        file.set_word_size(8);
        file.set_address_radix(RADIX_HEX);
        file.set_memory_radix(RADIX_HEX);
        ASSERT_TRUE(file.write_file());
        EXPECT_NE(kvr_test::content_of(folder.path("out.mif")).find("[0..1]"), std::string::npos);
    }
}

} // namespace
