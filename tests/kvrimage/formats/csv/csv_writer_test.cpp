#include "kvrimage/formats/csv/csv_format.h"
#include "kvrimage/formats/memory_file.h"
#include "tests/kvrimage/formats/list_format.h"

#include <gtest/gtest.h>

namespace {

using namespace kvrimage;

memory_image two_words_of_csv() {
    memory_image image(6, 20);
    image.set(3, word::of(0x3F, 6));
    image.set(17, word::of(5, 6));
    return image;
}

write_options to_csv(radix addresses, radix digits) {
    return {.as = &csv_format, .address_radix = addresses, .data_radix = digits};
}

TEST(CsvWriter, WritesOneWordALineInHexadecimal) {
    EXPECT_EQ(to_text(two_words_of_csv(), {.as = &csv_format}), "address,value\n0x03,0x3F\n0x11,0x05\n");
}

TEST(CsvWriter, WritesTheRadixesThatAreAskedFor) {
    EXPECT_EQ(to_text(two_words_of_csv(), to_csv(radix::uns, radix::dec)), "address,value\n3,-1\n17,5\n");
    EXPECT_EQ(to_text(two_words_of_csv(), to_csv(radix::bin, radix::bin)),
              "address,value\n0b00011,0b111111\n0b10001,0b000101\n");
    EXPECT_EQ(to_text(two_words_of_csv(), to_csv(radix::dec, radix::uns)), "address,value\n3,63\n17,5\n");
}

TEST(CsvWriter, WritesTabsIntoATsv) {
    const auto written_to = [](const char* name) {
        return to_text(two_words_of_csv(), {.as = &csv_format, .file_name = name});
    };
    const char* const with_tabs = "address\tvalue\n0x03\t0x3F\n0x11\t0x05\n";
    EXPECT_EQ(written_to("a.tsv"), with_tabs);
    EXPECT_EQ(written_to("folder/a.TSV"), with_tabs);
    EXPECT_EQ(written_to(".tsv"), to_text(two_words_of_csv(), {.as = &csv_format}));
    EXPECT_EQ(written_to("a.tsv.csv"), to_text(two_words_of_csv(), {.as = &csv_format}));
}

TEST(CsvWriter, WritesOctalAsHexadecimal) {
    EXPECT_EQ(to_text(two_words_of_csv(), to_csv(radix::oct, radix::oct)),
              to_text(two_words_of_csv(), {.as = &csv_format}));
}

TEST(CsvWriter, AMemoryWithoutWordsHasAHeader) {
    EXPECT_EQ(to_text(memory_image(8, 4), {.as = &csv_format}), "address,value\n");
}

TEST(CsvWriter, WhatItWritesReadsAsTheSameWords) {
    for (const radix digits : {radix::bin, radix::dec, radix::uns, radix::hex}) {
        kvrimage_tests::expect_round_trips(to_csv(digits, digits), true);
    }
}

TEST(CsvWriter, KnowsTheSizeOfWhatItWrites) {
    kvrimage_tests::expect_close_size(to_csv(radix::hex, radix::hex), true);
    kvrimage_tests::expect_close_size(to_csv(radix::bin, radix::bin), true);
    kvrimage_tests::expect_close_size(to_csv(radix::uns, radix::hex), false);
    kvrimage_tests::expect_close_size(to_csv(radix::uns, radix::dec), true);
}

} // namespace
