#include "kvrimage/formats/memory_file.h"
#include "kvrimage/formats/srec/srec_format.h"
#include "kvrimage/formats/srec/srec_reader.h"
#include "kvrimage/formats/srec/srec_writer.h"
#include "tests/kvrimage/bytes/byte_images.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using namespace kvrimage;
using namespace kvrimage_tests;

std::string written_srec(const memory_image& image, const std::string& length = "") {
    write_options options;
    options.as = &srec_format;
    options.order = byte_order::big;
    if (!length.empty()) {
        options.choices = {{"record-length", length}};
    }
    return to_text(image, options);
}

TEST(SrecWriter, WritesHeaderDataCountAndEnd) {
    memory_image image(8, 0x1240);
    image.set(0x1234, word::of(0xAA, 8));
    image.set(0x1235, word::of(0xBB, 8));
    EXPECT_EQ(written_srec(image), "S0030000FC\nS1051234AABB4F\nS5030001FB\nS9030000FC\n");
}

TEST(SrecWriter, TheLastRecordHasTheStartAddressAndRoomForIt) {
    memory_image image(8, 1, 0x1234);
    image.set(0x1234, word::of(0xAA, 8));
    write_options options{.as = &srec_format, .start_address = 0x1234};
    EXPECT_EQ(to_text(image, options), "S0030000FC\nS1041234AA0B\nS5030001FB\nS9031234B6\n");
    options.start_address = 0x80000010;
    EXPECT_EQ(to_text(image, options), "S0030000FC\nS30600001234AA09\nS5030001FB\nS705800000106A\n");
    EXPECT_EQ(size_of_srec(image, options), to_text(image, options).size());
}

TEST(SrecWriter, TheHighestAddressSaysWhichRecordsAreUsed) {
    memory_image image(8, 1, 0xFFFF);
    image.set(0xFFFF, word::of(1, 8));
    EXPECT_EQ(written_srec(image), "S0030000FC\nS104FFFF01FC\nS5030001FB\nS9030000FC\n");
    memory_image middle(8, 1, 0x10000);
    middle.set(0x10000, word::of(1, 8));
    EXPECT_EQ(written_srec(middle), "S0030000FC\nS20501000001F8\nS5030001FB\nS804000000FB\n");
    memory_image high(8, 1, 0xFFFFFFFF);
    high.set(0xFFFFFFFF, word::of(1, 8));
    EXPECT_EQ(written_srec(high), "S0030000FC\nS306FFFFFFFF01FC\nS5030001FB\nS70500000000FA\n");
}

TEST(SrecWriter, RecordsHave32BytesOrWhatIsChosen) {
    memory_image image(8, 40);
    image.fill({0, 39}, std::vector{word(8)});
    EXPECT_EQ(written_srec(image).substr(11, 15), "S12300000000000");
    EXPECT_EQ(written_srec(image, "3").substr(11, 15), "S1060000000000F");
}

TEST(SrecWriter, ManyRecordsAreCountedInS6) {
    memory_image image(8, 0x10000);
    image.fill({0, 0xFFFF}, std::vector{word(8)});
    EXPECT_NE(written_srec(image, "1").find("\nS604010000FA\nS9030000FC\n"), std::string::npos);
}

TEST(SrecWriter, MoreRecordsThanS6CountsAreNotCounted) {
    constexpr std::uint64_t frame_of_s2 = 13;
    constexpr std::uint64_t frame_of_s3 = 15;
    constexpr std::uint64_t header_size = 11;
    write_options options{.as = &srec_format, .choices = {{"record-length", "1"}}};
    memory_image counted(8, 0xFFFFFF);
    counted.fill({0, 0xFFFFFE}, std::vector{word(8)});
    // One byte per record, then the count and the end record.
    EXPECT_EQ(size_of_srec(counted, options), header_size + 0xFFFFFF * (frame_of_s2 + 2) + 2 * frame_of_s2);
    memory_image uncounted(8, 0x1000000);
    uncounted.fill({0, 0xFFFFFF}, std::vector{word(8)});
    EXPECT_EQ(size_of_srec(uncounted, options), header_size + 0x1000000 * (frame_of_s2 + 2) + frame_of_s2);
    uncounted.resize(0x1000001);
    uncounted.set(0x1000000, word(8));
    EXPECT_EQ(size_of_srec(uncounted, options), header_size + 0x1000001 * (frame_of_s3 + 2) + frame_of_s3);
}

TEST(SrecWriter, RefusesAddressesBeyond32BitsAndImpossibleLengths) {
    memory_image image(8, 1, 0x100000000);
    image.set(0x100000000, word(8));
    write_options options;
    options.as = &srec_format;
    EXPECT_EQ(can_write(image, options).at(0).message,
              "byte address 100000000 is beyond FFFFFFFF, the largest of an S-record");
    options.choices = {{"record-length", "251"}};
    EXPECT_EQ(can_write(memory_image(8, 1), options).at(0).message, "--record-length 251 is not valid");
}

TEST(SrecWriter, WhatIsWrittenIsRead) {
    EXPECT_EQ(fault_of_round_trips(srec_format, true), "");
}

TEST(SrecWriter, WhatIsWrittenHasNothingWrong) {
    std::mt19937 random(12);
    for (int round = 0; round < 100; ++round) {
        const memory_image image = random_byte_image(random, 8, 100000);
        EXPECT_EQ(shown_report(read_srec(written_srec(image, std::to_string(1 + random() % 250)), {})), "");
    }
}

} // namespace
