#include "kvr/memory/io/output_file.h"
#include "kvr/memory/mif/mif_writer.h"
#include "tests/memory/memory_fixture.h"
#include "tests/memory/mif/mif_steps.h"
#include "tests/memory/words_of_all_kinds.h"

#include <deque>
#include <random>
#include <vector>

namespace {

using strings = std::vector<std::string>;

class MifWriter : public kvr_test::memory_fixture {
protected:
    MifWriter() : memory_fixture(FILE_TYPE_MIF) {}

    void configure(unsigned depth, KVR_MEMORY_RADIXES address_radix, unsigned width = 8) {
        file.set_word_size(width);
        file.set_memory_radix(RADIX_HEX);
        file.set_address_radix(address_radix);
        file.set_number_of_words(depth);
    }
    /// The text between "CONTENT BEGIN" and "END;" of the written file.
    std::string written_content() {
        EXPECT_TRUE(file.write_file());
        return content_lines_of(written());
    }
    static std::string content_lines_of(const std::string& text) {
        const std::size_t begin = text.find("CONTENT BEGIN\n") + 14;
        return text.substr(begin, text.rfind("END;\n") - begin);
    }
};

TEST_F(MifWriter, WithoutCommentsAFileHasTheBannerAndEmptyLines) {
    configure(2, RADIX_UNS, 16);
    ASSERT_TRUE(file.write_file());
    EXPECT_EQ(written(),
              "\n-- Kovranti generated Memory Initialization File (.mif)\n\nWIDTH=16;\nDEPTH=2;\n\n"
              "ADDRESS_RADIX=UNS;\nDATA_RADIX=HEX;\n\nCONTENT BEGIN\n\t[0..1]  :   0;\nEND;\n");
    EXPECT_FALSE(file.get_error_occurred());
}

TEST_F(MifWriter, HeaderCommentsFollowTheirLines) {
    configure(1, RADIX_HEX);
    for (int slot = 0; slot < 6; ++slot) {
        std::deque<std::string> comments{"slot " + std::to_string(slot), "more"};
        ASSERT_TRUE(file.set_comment_deque(slot, &comments));
    }
    ASSERT_TRUE(file.write_file());
    EXPECT_EQ(written(), "\n-- slot 0\n-- more\nWIDTH=8;\n-- slot 1\n-- more\nDEPTH=1;\n-- slot 2\n-- more\n"
                         "ADDRESS_RADIX=HEX;\n-- slot 3\n-- more\nDATA_RADIX=HEX;\n-- slot 4\n-- more\n"
                         "CONTENT BEGIN\n\t0  :   0;\nEND;\n-- slot 5\n-- more\n");
}

TEST_F(MifWriter, EqualWordsBecomeOneRange) {
    configure(8, RADIX_BIN);
    EXPECT_EQ(written_content(), "\t[0000..0111]  :   0;\n");
}

TEST_F(MifWriter, WithoutConsolidationEveryAddressHasItsLine) {
    configure(8, RADIX_BIN);
    file.set_dont_consolidate_data(true);
    EXPECT_EQ(written_content(), "\t0000  :   0;\n\t0001  :   0;\n\t0010  :   0;\n\t0011  :   0;\n"
                                 "\t0100  :   0;\n\t0101  :   0;\n\t0110  :   0;\n\t0111  :   0;\n");
}

TEST_F(MifWriter, HexadecimalAddressesAreLowerCaseAndPaddedToTheDepth) {
    configure(16, RADIX_HEX);
    for (unsigned address = 0; address < 4; ++address) {
        ASSERT_TRUE(file.set_data_word(address, "FF", RADIX_HEX));
    }
    EXPECT_EQ(written_content(), "\t[00..03]  :   FF;\n\t[04..0f]  :   0;\n");
}

TEST_F(MifWriter, DecimalAddressesArePaddedWithTrailingBlanks) {
    configure(100, RADIX_DEC);
    ASSERT_TRUE(file.set_data_word(5, "A", RADIX_HEX));
    ASSERT_TRUE(file.set_data_word(42, "B", RADIX_HEX));
    EXPECT_EQ(written_content(), "\t[0..4]  :   0;\n\t5    :   0A;\n\t[6..41]  :   0;\n\t42   :   0B;\n"
                                 "\t[43..99]  :   0;\n");
}

TEST_F(MifWriter, OctalAddressesArePadded) {
    configure(9, RADIX_OCT);
    ASSERT_TRUE(file.set_data_word(8, "1", RADIX_HEX));
    EXPECT_EQ(written_content(), "\t[00..07]  :   0;\n\t10  :   01;\n");
}

/// The content lines according to the rules.
std::string plain_lines_of(const strings& words, KVR_MEMORY_RADIXES radix, bool with_runs) {
    const auto depth = static_cast<std::uint32_t>(words.size());
    const std::size_t width = kvr::address_length(depth, radix);
    std::string text;
    for (std::uint32_t first = 0; first < depth;) {
        std::uint32_t last = first;
        while (with_runs && last + 1 < depth && words[last + 1] == words[first]) {
            ++last;
        }
        kvr::append_content_line(text, first, last, words[first], radix, width, {});
        first = last + 1;
    }
    return text;
}

TEST_F(MifWriter, MemoriesOfAllKindsAreWrittenAsTheRulesSayOfEachWord) {
    kvr_test::random_numbers numbers(8);
    for (const KVR_MEMORY_RADIXES radix : {RADIX_BIN, RADIX_OCT, RADIX_DEC, RADIX_UNS, RADIX_HEX}) {
        for (const bool with_runs : {true, false}) {
            const strings words = kvr_test::words_of_all_kinds(numbers, 20000, 1 + numbers() % 9);
            kvr::mif_memory memory(nullptr);
            memory.file_name = path;
            memory.address_radix = radix;
            memory.dont_consolidate_data = !with_runs;
            memory.resize_words(static_cast<std::uint32_t>(words.size()));
            for (std::uint32_t address = 0; address < words.size(); ++address) {
                memory.data_words.set(address, words[address]);
            }
            ASSERT_TRUE(kvr::write_mif_file(memory));
            ASSERT_TRUE(content_lines_of(written()) == plain_lines_of(words, radix, with_runs)) << radix;
        }
    }
}

TEST_F(MifWriter, OneDataCommentGivesEveryAddressItsLine) {
    configure(3, RADIX_HEX);
    std::deque<std::string> comments{"first word"};
    ASSERT_TRUE(file.set_data_comments(&comments));
    EXPECT_EQ(written_content(), "\t0  :   0; -- first word\n\t1  :   0;\n\t2  :   0;\n");
}

TEST_F(MifWriter, CommentsThatWereReadKeepTheirDashesAndGoToTheFirstAddresses) {
    ASSERT_TRUE(read("WIDTH=8;\nDEPTH=3;\nCONTENT BEGIN\n1 : 7; -- seven\n2 : 8; -- eight\nEND;\n"));
    EXPECT_EQ(written_content(), "\t0  :   0; -- -- eight\n\t1  :   7; -- -- seven\n\t2  :   8;\n");
}

TEST_F(MifWriter, TextsThatDifferAreNotMerged) {
    configure(3, RADIX_HEX);
    ASSERT_TRUE(read("WIDTH=8;\nDEPTH=4;\nCONTENT BEGIN\n0:0;\n1:00;\n2:a;\n3:A;\nEND;\n"));
    EXPECT_EQ(written_content(), "\t0  :   0;\n\t1  :   00;\n\t[2..3]  :   A;\n");
}

TEST_F(MifWriter, WordsAreWrittenAsTheyAreStored) {
    ASSERT_TRUE(read("WIDTH=4;\nDEPTH=3;\nDATA_RADIX=DEC;\nCONTENT BEGIN\n0:-5 12345 xU;\nEND;\n"));
    EXPECT_EQ(written_content(), "\t0  :   -5;\n\t1  :   12345;\n\t2  :   XU;\n");
}

TEST_F(MifWriter, EmptySignedWordsAreWrittenAsTheyAreStored) {
    file.set_memory_initialize_value("");
    configure(3, RADIX_HEX);
    file.set_memory_radix(RADIX_DEC);
    ASSERT_TRUE(file.set_data_word(2, "-5", RADIX_NONE));
    EXPECT_TRUE(file.write_file());
    EXPECT_EQ(content_lines_of(written()), "\t[0..1]  :   ;\n\t2  :   01;\n");
}

TEST_F(MifWriter, ARadixWithoutNameLeavesItsLineEmpty) {
    configure(1, RADIX_FIXED_POINT);
    file.set_memory_radix(RADIX_FIXED_POINT);
    ASSERT_TRUE(file.write_file());
    EXPECT_NE(written().find("\nADDRESS_RADIX=;\nDATA_RADIX=;\n"), std::string::npos);
}

TEST_F(MifWriter, AFileThatCannotBeOpenedIsReported) {
    configure(1, RADIX_HEX);
    const std::string name = folder.path("no/such/folder/out.mif");
    file.set_file_name(name);
    EXPECT_FALSE(file.write_file());
    EXPECT_TRUE(file.get_file_not_found());
    EXPECT_TRUE(file.get_error_occurred());
    EXPECT_EQ(errors(), strings{"Memory file cannot be opened.  Memory file -- " + name + " -- not found. "});
}

TEST_F(MifWriter, AFullDiskIsReported) {
    configure(1, RADIX_HEX);
    file.set_file_name("/dev/full");
    EXPECT_FALSE(file.write_file());
    EXPECT_FALSE(file.get_file_not_found());
    EXPECT_TRUE(file.get_error_occurred());
    EXPECT_EQ(errors(), strings{"Memory file cannot be written.  Memory file -- /dev/full -- "});
}

TEST_F(MifWriter, AWriteThatSucceedsClearsTheFlags) {
    configure(1, RADIX_HEX);
    file.set_file_name(folder.path("no/such"));
    EXPECT_FALSE(file.write_file());
    file.set_file_name(path);
    EXPECT_TRUE(file.write_file());
    EXPECT_FALSE(file.get_file_not_found());
    EXPECT_FALSE(file.get_error_occurred());
}

TEST_F(MifWriter, ABillionWordsAreAHandfulOfLines) {
    ASSERT_TRUE(read("WIDTH=8;\nDEPTH=2147483647;\nCONTENT BEGIN\n[0..7ffffffe] : 5;\nEND;\n"));
    for (const unsigned address : {0U, 1000000U, 2147483646U}) {
        ASSERT_TRUE(file.set_data_word(address, "A1", RADIX_HEX));
    }
    EXPECT_EQ(written_content(), "\t00000000  :   A1;\n\t[00000001..000f423f]  :   5;\n\t000f4240  :   A1;\n"
                                 "\t[000f4241..7ffffffd]  :   5;\n\t7ffffffe  :   A1;\n");
}

TEST_F(MifWriter, WhatWasWrittenIsReadBack) {
    std::mt19937 random(5);
    for (const KVR_MEMORY_RADIXES radix : {RADIX_BIN, RADIX_DEC, RADIX_UNS, RADIX_HEX, RADIX_OCT}) {
        for (const unsigned width : {1U, 8U, 9U, 33U, 128U}) {
            const auto depth = static_cast<unsigned>(1 + random() % 3000);
            KVR_MEMORY_FILE original;
            original.set_file_type(FILE_TYPE_MIF);
            original.set_file_name(path);
            original.set_word_size(width);
            original.set_memory_radix(RADIX_BIN);
            original.set_address_radix(radix);
            original.set_number_of_words(depth);
            for (unsigned address = 0; address < depth; ++address) {
                const std::string bits(1 + random() % width, random() % 3 != 0 ? '1' : '0');
                ASSERT_TRUE(original.set_data_word(address, bits, RADIX_BIN));
            }
            ASSERT_TRUE(original.write_file());
            const std::string first = written();
            KVR_MEMORY_FILE copy;
            copy.set_file_type(FILE_TYPE_MIF);
            copy.set_file_name(path);
            ASSERT_TRUE(copy.read_file());
            EXPECT_EQ(kvr_test::stored_words(copy, 0, depth - 1),
                      kvr_test::stored_words(original, 0, depth - 1));
            std::deque<std::string> none;
            EXPECT_FALSE(copy.set_data_comments(&none));
            ASSERT_TRUE(copy.write_file());
            EXPECT_EQ(written(), first);
        }
    }
}

// --- the builders one by one ---

class MifTexts : public testing::Test {
protected:
    KVR_MEMORY_MIF_FILE file{nullptr};
    kvr::mif_steps steps{file};
};

TEST_F(MifTexts, HeaderLinesNameTheSettings) {
    steps.memory().word_size = 12;
    steps.memory().number_of_words = 4096;
    steps.memory().address_radix = RADIX_UNS;
    steps.memory().memory_radix = RADIX_BIN;
    EXPECT_EQ(steps.generate_width_string(), "WIDTH=12;\n");
    EXPECT_EQ(steps.generate_depth_string(), "DEPTH=4096;\n");
    EXPECT_EQ(steps.generate_address_radix_string(), "ADDRESS_RADIX=UNS;\n");
    EXPECT_EQ(steps.generate_data_radix_string(), "DATA_RADIX=BIN;\n");
}

TEST_F(MifTexts, TheNameOfNoRadixIsTheEmptyEntry) {
    steps.memory().address_radix = RADIX_NONE;
    steps.memory().memory_radix = RADIX_FIXED_POINT;
    EXPECT_EQ(steps.generate_address_radix_string(), "ADDRESS_RADIX=;\n");
    EXPECT_EQ(steps.generate_data_radix_string(), "DATA_RADIX=;\n");
}

TEST_F(MifTexts, NumbersBeyond31BitsComeOutNegative) {
    steps.memory().number_of_words = 4294967295U;
    EXPECT_EQ(steps.generate_depth_string(), "DEPTH=-1;\n");
}

TEST_F(MifTexts, AddressesAreWrittenInTheAddressRadix) {
    const std::vector<std::pair<KVR_MEMORY_RADIXES, strings>> expected = {
        {RADIX_BIN, {"0000", "1011", "11111111"}}, {RADIX_OCT, {"0000", "0013", "0377"}},
        {RADIX_HEX, {"0000", "000b", "00ff"}},     {RADIX_DEC, {"0", "11", "255"}},
        {RADIX_UNS, {"0", "11", "255"}},           {RADIX_NONE, {"0", "11", "255"}}};
    for (const auto& [radix, texts] : expected) {
        steps.memory().address_radix = radix;
        EXPECT_EQ(steps.convert_number_into_address_radix(0, 4), texts[0]);
        EXPECT_EQ(steps.convert_number_into_address_radix(11, 4), texts[1]);
        EXPECT_EQ(steps.convert_number_into_address_radix(255, 4), texts[2]);
    }
    steps.memory().address_radix = RADIX_BIN;
    EXPECT_EQ(steps.convert_number_into_address_radix(4294967295U, 0), std::string(32, '1'));
    EXPECT_EQ(steps.convert_number_into_address_radix(0, 0), "0");
}

TEST_F(MifTexts, AContentLineHasItsFixedBlanks) {
    steps.memory().address_radix = RADIX_HEX;
    EXPECT_EQ(steps.generate_address_data_string(1, 1, "AB", 4, ""), "\t0001  :   AB;\n");
    EXPECT_EQ(steps.generate_address_data_string(1, 10, "AB", 2, "note"), "\t[01..0a]  :   AB; -- note\n");
    steps.memory().address_radix = RADIX_DEC;
    EXPECT_EQ(steps.generate_address_data_string(1, 1, "AB", 4, "-- note"), "\t1     :   AB; -- -- note\n");
    EXPECT_EQ(steps.generate_address_data_string(1, 2, "", 4, ""), "\t[1..2]  :   ;\n");
}

TEST_F(MifTexts, HeaderCommentsBeyondTheLastListAreNotWritten) {
    const kvr_test::temporary_directory folder;
    kvr::output_file output = kvr::output_file::create(folder.path("out"));
    steps.memory().header_comments[5].lines = {"line"};
    EXPECT_FALSE(steps.output_comments_to_file(6, output));
    EXPECT_FALSE(steps.output_comments_to_file(0, output));
    EXPECT_TRUE(steps.output_comments_to_file(5, output));
    EXPECT_TRUE(output.close());
    EXPECT_EQ(kvr_test::content_of(folder.path("out")), "-- line\n");
}

} // namespace
