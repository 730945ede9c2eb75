// A base in the formats whose readers use the addresses of the file.

#include "kvrimage/formats/coe/coe_format.h"
#include "kvrimage/formats/hex/hex_format.h"
#include "kvrimage/formats/memheader/memheader_format.h"
#include "kvrimage/formats/memory_file.h"
#include "kvrimage/formats/mif/mif_format.h"
#include "kvrimage/formats/reading_from_base.h"
#include "kvrimage/formats/readmem/readmem_format.h"
#include "kvrimage/formats/rif/rif_format.h"
#include "tests/kvrimage/bytes/byte_images.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string>

namespace {

using namespace kvrimage;
using namespace kvrimage_tests;

const std::string mif_with_words = "WIDTH=8;\nDEPTH=16;\nCONTENT BEGIN\n"
                                   "4 : 11;\n[5..9] : 22 33;\nF : 44;\nEND;\n";

read_options from_base(const format& as, std::uint64_t base, std::optional<std::uint64_t> depth = {}) {
    read_options options;
    options.as = &as;
    options.base = base;
    options.depth = depth;
    return options;
}

std::string words_from(const std::string& text, const read_options& options) {
    return set_words_of(parse(text, options));
}

std::string report_from(const std::string& text, const read_options& options) {
    return shown_report(parse(text, options));
}

TEST(ReadingFromBase, MovesTheWordsOfAMif) {
    const read_result result = parse(mif_with_words, from_base(mif_format, 4));
    EXPECT_EQ(set_words_of(result), "0=11 1=22 2=33 3=22 4=33 5=22 11=44");
    EXPECT_EQ(result.image->depth(), 12U);
    EXPECT_EQ(shown_report(result), "");
}

TEST(ReadingFromBase, ABaseOfZeroChangesNothing) {
    EXPECT_EQ(words_from(mif_with_words, from_base(mif_format, 0)), "4=11 5=22 6=33 7=22 8=33 9=22 15=44");
}

TEST(ReadingFromBase, ADepthCountsFromTheBase) {
    const read_result result = parse(mif_with_words, from_base(mif_format, 4, 12));
    EXPECT_EQ(result.image->depth(), 12U);
    EXPECT_EQ(report_from(mif_with_words, from_base(mif_format, 4, 11)), "broken beyond-depth 6:1+1 x1\n");
    const read_result deep = parse("@2\n05 \n", from_base(rif_format, 2, deepest_memory));
    EXPECT_EQ(deep.image->depth(), deepest_memory);
}

TEST(ReadingFromBase, WordsBelowTheBaseAreBroken) {
    const read_result result = parse(mif_with_words, from_base(mif_format, 6));
    EXPECT_FALSE(result.image);
    EXPECT_EQ(shown_report(result), "broken below-base 4:1+7 x2\n");
    EXPECT_EQ(result.diagnostics.front().message, "address 4 is below the base 6");
}

TEST(ReadingFromBase, KeepsTheWordsAboveWhereTheCallerGoesOn) {
    read_options options = from_base(mif_format, 6);
    options.keep_going = true;
    EXPECT_EQ(words_from(mif_with_words, options), "0=33 1=22 2=33 3=22 9=44");
    const std::string doubtful = "WIDTH=8;\nDEPTH=16;\nCONTENT BEGIN\n1 : 1FF;\n8 : 1FF;\nEND;\n";
    const read_result result = parse(doubtful, options);
    ASSERT_EQ(result.unreadable.size(), 1U);
    EXPECT_EQ(result.unreadable.front().first, 2U);
}

TEST(ReadingFromBase, ABaseBeyondTheMemoryIsBroken) {
    const std::string empty = "WIDTH=8;\nDEPTH=16;\nCONTENT BEGIN\nEND;\n";
    EXPECT_EQ(report_from(empty, from_base(mif_format, 16)), "broken beyond-depth 0:0+0 x1\n");
    EXPECT_EQ(report_from(mif_with_words, from_base(mif_format, ~std::uint64_t{0})),
              "broken below-base 4:1+7 x7\n");
}

TEST(ReadingFromBase, ABaseBeyondEveryMemoryIsBroken) {
    read_options options = from_base(hex_format, deepest_memory, 4);
    options.width = 8;
    options.unit = address_unit::word;
    const read_result result = parse(":00000001FF\n", options);
    EXPECT_FALSE(result.image);
    ASSERT_EQ(result.diagnostics.size(), 1U);
    EXPECT_EQ(result.diagnostics.front().message, "address 4294967296 is beyond the largest, 4294967295");
}

TEST(ReadingFromBase, FindsWordsAtTheirNewAddresses) {
    const read_options options = from_base(mif_format, 4);
    EXPECT_EQ(mif_format.find_word(mif_with_words, options, 0)->line, 4U);
    EXPECT_EQ(mif_format.find_word(mif_with_words, options, 11)->line, 6U);
    EXPECT_FALSE(mif_format.find_word(mif_with_words, options, ~std::uint64_t{0}));
}

TEST(ReadingFromBase, HoldsForRif) {
    EXPECT_EQ(words_from("@8\n05 06 \n", from_base(rif_format, 8)), "0=05 1=06");
    const std::string text = "@8\n05 06 \n";
    EXPECT_EQ(rif_format.find_word(text, from_base(rif_format, 8), 1)->offset, 6U);
    EXPECT_FALSE(rif_format.find_word(text, from_base(rif_format, 8), 0xFFFFFFF8));
    EXPECT_FALSE(rif_format.find_word(text, from_base(rif_format, 0x100000008), 0));
    check_options options;
    options.read = from_base(rif_format, 8);
    EXPECT_EQ(shown_report(check(text, options)), "");
}

TEST(ReadingFromBase, MessagesCountTheDepthFromTheBase) {
    const std::string records = ":0400100012345678D8\n:00000001FF\n";
    read_options of_bytes = from_base(hex_format, 0xF, 3);
    of_bytes.width = 8;
    const auto message = [](const std::string& text, const read_options& options) {
        return parse(text, options).diagnostics.front().message;
    };
    EXPECT_EQ(message(mif_with_words, from_base(mif_format, 4, 5)),
              "address 5 is beyond the depth 5 (0 to 4)");
    EXPECT_EQ(message("@4\n1 2 3 4 5 \n", from_base(rif_format, 4, 4)),
              "address 4 is beyond the depth 4 (0 to 3)");
    EXPECT_EQ(message(records, of_bytes), "address 3 is beyond the depth 3 (0 to 2)");
}

TEST(ReadingFromBase, ADepthThatIsAskedForCountsFromTheBase) {
    const std::string bare = "1 : 1;\n5 : 2;\n";
    EXPECT_EQ(parse(bare, from_base(mif_format, 2)).diagnostics.front().option, "--width 4 --depth 4");
    EXPECT_EQ(parse(bare, from_base(mif_format, 6)).diagnostics.front().option, "--width 4 --depth 6");
}

TEST(ReadingFromBase, HoldsForRecordsWhoseAddressesCountWords) {
    const std::string records = ":0400100012345678D8\n:00000001FF\n";
    read_options options = from_base(hex_format, 0x10);
    options.width = 16;
    options.unit = address_unit::word;
    EXPECT_EQ(words_from(records, options), "0=1234 1=5678");
    EXPECT_EQ(hex_format.find_word(records, options, 1)->line, 1U);
    options.unit = address_unit::byte;
    options.order = byte_order::big;
    EXPECT_EQ(words_from(records, options), "0=1234 1=5678");
    EXPECT_EQ(hex_format.find_word(records, options, 1)->line, 1U);
}

TEST(ReadingFromBase, TheLibraryIsComparedAtTheAddressesOfTheFile) {
    check_options options;
    options.read = from_base(mif_format, 4);
    EXPECT_EQ(shown_report(check("WIDTH=8;\nDEPTH=6;\nCONTENT BEGIN\n4 : 11;\n5 : 22;\nEND;\n", options)),
              "");
}

TEST(ReadingFromBase, AStatedDepthLosesWhatIsBelow) {
    const std::string file = "#Format=AddrHex\n#Depth=16\n#Width=8\n#Data\n8:10\n";
    EXPECT_EQ(parse(file, from_base(memheader_format, 8)).image->depth(), 8U);
    EXPECT_EQ(report_from(file, from_base(memheader_format, 16)), "broken below-base 5:3+2 x1\n");
}

TEST(ReadingFromBase, ACoeHasNoAddresses) {
    const std::string file = "memory_initialization_radix=16;\nmemory_initialization_vector=1;\n";
    EXPECT_EQ(report_from(file, from_base(coe_format, 1)), "broken no-addresses 0:0+0 x1\n");
    EXPECT_EQ(words_from(file, from_base(coe_format, 0)), "0=1");
}

TEST(ReadingFromBase, ABaseFarBelowTheContentsIsRefused) {
    const std::string words = "@80000000 01 02\n";
    const read_result result = parse(words, from_base(readmemh_format, 80000000));
    EXPECT_EQ(shown_report(result), "broken base-needed 0:0+0 x1\n");
    EXPECT_EQ(result.diagnostics.front().option, "--base 0x80000000");
    EXPECT_EQ(words_from(words, from_base(readmemh_format, 0x7FFFFFFF)), "1=01 2=02");
    EXPECT_EQ(words_from(words, from_base(readmemh_format, 0)), "2147483648=01 2147483649=02");
}

} // namespace
