#include "kvrimage/formats/hex/hex_rows.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace kvrimage;

/// The buffer is passed on when less than room_limit of it is left.
constexpr std::size_t least_part = kvr::output_file::block_size - kvr::output_file::room_limit;

class part_collector : public text_sink {
public:
    void write(std::string_view text) override {
        parts.push_back(text.size());
        all.append(text);
    }
    std::vector<std::size_t> parts;
    std::string all;
};

/// Writes @p count words of @p bytes bytes, repetitions of @p byte, from address 0 on.
void expect_records(std::uint32_t bytes, std::uint32_t byte, std::uint32_t count) {
    std::string word;
    for (std::uint32_t index = 0; index < bytes; ++index) {
        word += fmt::format("{:02X}", byte);
    }
    std::string words;
    std::string expected;
    for (std::uint32_t address = 0; address < count; ++address) {
        words += word;
        const std::uint32_t sum = bytes + address / 256 + address % 256 + bytes * byte;
        expected += fmt::format(":{:02X}{:04X}00{}{:02X}\n", bytes, address, word, (0 - sum) % 256);
    }
    const kvr::word_row row{words.data(), static_cast<std::uint32_t>(word.size()), count};
    const std::size_t record_size = expected.size() / count;
    // The last record of a part begins at the limit at the latest.
    const auto records_of_part = static_cast<std::uint32_t>(least_part / record_size + 1);

    part_collector sink;
    hex_rows rows(bytes, sink);
    std::uint32_t written = 0;
    while (written < count) {
        const std::uint32_t now = rows.write(row.part(written, count - written), written);
        ASSERT_EQ(now, std::min(records_of_part, count - written)) << bytes << " bytes, from " << written;
        written += now;
    }
    rows.flush();
    EXPECT_TRUE(sink.all == expected) << bytes;
    std::vector<std::size_t> parts(count / records_of_part, records_of_part * record_size);
    if (count % records_of_part != 0) {
        parts.push_back(count % records_of_part * record_size);
    }
    EXPECT_EQ(sink.parts, parts) << bytes;
}

TEST(HexRows, PassesRecordsOnInPartsOfItsBuffer) {
    expect_records(100, 0x5A, 2500);
    expect_records(128, 0xC3, 10);
    expect_records(1, 0x7F, 3);
}

TEST(HexRows, PassesTextsOnWhenItsBufferIsFull) {
    part_collector sink;
    hex_rows rows(1, sink);
    const std::string kilobyte(1024, 'x');
    for (int number = 0; number < 253; ++number) {
        rows.add(kilobyte);
    }
    EXPECT_EQ(sink.parts, std::vector<std::size_t>{least_part});
}

} // namespace
