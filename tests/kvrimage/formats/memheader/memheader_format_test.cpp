#include "kvrimage/formats/memheader/memheader_format.h"
#include "kvrimage/formats/memory_file.h"
#include "kvrimage/formats/registry.h"
#include "tests/kvrimage/formats/list_format.h"

#include <gtest/gtest.h>

#include <string_view>

namespace {

using namespace kvrimage;

constexpr std::string_view small_mem =
    "#Format=AddrHex\n#Depth=16\n#Width=8\n#AddrRadix=3\n#DataRadix=3\n#Data\n0:1F\nA:02\n0:20\n";

TEST(MemheaderFormat, HasItsNameAndExtension) {
    EXPECT_EQ(format_of_name("memheader"), &memheader_format);
    read_options options;
    options.file_name = "table.mem";
    EXPECT_EQ(parse(small_mem, options).facts.as, &memheader_format);
}

TEST(MemheaderFormat, IsCertainByItsFormatLine) {
    EXPECT_EQ(memheader_format.sniff(small_mem), certainty::certain);
    EXPECT_EQ(memheader_format.sniff("#Depth=4\n#format=Hex\n"), certainty::certain);
    EXPECT_EQ(memheader_format.sniff("00\n#Format=Hex\n"), certainty::possible);
    EXPECT_EQ(memheader_format.sniff("#Format\n#Data\n00\n"), certainty::no);
    EXPECT_EQ(memheader_format.sniff("00 01\n"), certainty::no);
}

TEST(MemheaderFormat, FindsTheLineThatSetsAWordLast) {
    EXPECT_EQ(memheader_format.find_word(small_mem, {}, 0), (place{9, 3, 79, 2}));
    EXPECT_EQ(memheader_format.find_word(small_mem, {}, 10), (place{8, 3, 74, 2}));
    EXPECT_EQ(memheader_format.find_word(small_mem, {}, 1), std::nullopt);
    read_options options;
    options.base = 8;
    EXPECT_EQ(memheader_format.find_word(small_mem, options, 2), (place{8, 3, 74, 2}));
}

TEST(MemheaderFormat, KeepsThePromisesForDamagedFiles) {
    kvrimage_tests::expect_promises_kept(memheader_format, std::string(small_mem));
    kvrimage_tests::expect_promises_kept(memheader_format,
                                         "#Format=Bin\n#Depth=4\n#Width=2\n#Data\n0 1\n10\n");
}

} // namespace
