// The state that a walk over plain data records leaves for the next walk.

#include "kvr/memory/hex/fast_hex_records.h"
#include "kvr/memory/hex/hex_record_walk.h"
#include "kvr/memory/io/line_source.h"
#include "tests/memory/hex/hex_record_texts.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace {

using kvr::hex_record_walk;
using kvr_test::hex_record_line;

using record_run = kvr::fast_hex_records::run;

record_run read_no_run(std::string_view /*lines*/) {
    return {0, 0, 0};
}

struct visited_records {
    std::vector<std::string> data;
    std::vector<std::string> lines;

    void operator()(const kvr::hex_record& record, std::string_view line) {
        data.emplace_back(record.data());
        lines.emplace_back(line);
    }
};

const std::string first_record = hex_record_line(0, 0, "AA");
const std::string second_record = hex_record_line(0, 1, "BBCC");
const std::string third_record = hex_record_line(0, 3, "DD");
const std::string end_record = ":00000001FF";

TEST(HexRecordWalkRun, VisitsEachPlainDataRecordWithItsLine) {
    const std::string text = first_record + "\n" + second_record + "\r\n" + end_record + "\n";
    kvr::line_source source(text, hex_record_walk::longest_line);
    hex_record_walk walk(source);
    visited_records visited;
    walk.each_plain_data_record(read_no_run,
                                [&](const auto& record, std::string_view line) { visited(record, line); });
    EXPECT_EQ(visited.data, (std::vector<std::string>{"AA", "BBCC"}));
    EXPECT_EQ(visited.lines, (std::vector<std::string>{first_record + "\n", second_record + "\r\n"}));
    EXPECT_EQ(walk.line(), 2U);
    EXPECT_EQ(walk.text(), second_record);
    EXPECT_EQ(walk.record().data(), "BBCC");
    EXPECT_EQ(walk.next(), hex_record_walk::step::record);
    EXPECT_EQ(walk.record().kind, kvr::hex_record_type::end_of_file);
    EXPECT_EQ(walk.line(), 3U);
    walk.each_plain_data_record(read_no_run,
                                [&](const auto& record, std::string_view line) { visited(record, line); });
    EXPECT_EQ(visited.data.size(), 2U);
    EXPECT_EQ(walk.next(), hex_record_walk::step::end);
}

TEST(HexRecordWalkRun, PassesOverTheRecordsOfARun) {
    const std::string text = first_record + "\n" + first_record + "\n" + third_record + "\n" + first_record +
                             "\n" + end_record + "\n";
    kvr::line_source source(text, hex_record_walk::longest_line);
    hex_record_walk walk(source);
    const auto read_firsts = [](std::string_view lines) {
        record_run run{0, 0, first_record.size() + 1};
        while (lines.substr(run.count * run.line_size).starts_with(first_record)) {
            ++run.count;
        }
        return run;
    };
    visited_records visited;
    walk.each_plain_data_record(read_firsts,
                                [&](const auto& record, std::string_view line) { visited(record, line); });
    EXPECT_EQ(visited.data, (std::vector<std::string>{"DD"}));
    EXPECT_EQ(walk.line(), 4U);
    EXPECT_EQ(walk.text(), first_record);
    EXPECT_EQ(walk.record().data(), "AA");
    EXPECT_EQ(walk.next(), hex_record_walk::step::record);
    EXPECT_EQ(walk.record().kind, kvr::hex_record_type::end_of_file);
}

TEST(HexRecordWalkRun, LastRecordOfARunMayBeShorterThanTheOneBeforeTheRun) {
    const std::string text = second_record + "\n" + first_record + "\n" + end_record + "\n";
    kvr::line_source source(text, hex_record_walk::longest_line);
    hex_record_walk walk(source);
    visited_records visited;
    walk.each_plain_data_record(
        [](std::string_view lines) {
            return record_run{0, lines.starts_with(first_record) ? 1U : 0U, first_record.size() + 1};
        },
        [&](const auto& record, std::string_view line) { visited(record, line); });
    EXPECT_EQ(visited.data, (std::vector<std::string>{"BBCC"}));
    EXPECT_EQ(walk.text(), first_record);
    EXPECT_EQ(walk.record().data(), "AA");
}

TEST(HexRecordWalkRun, StopsBeforeAnythingButAPlainDataRecord) {
    const std::string text = first_record + "\n" + hex_record_line(4, 0, "0001") + "\n" + third_record + "\n";
    kvr::line_source source(text, hex_record_walk::longest_line);
    hex_record_walk walk(source, 5);
    visited_records visited;
    const auto visit = [&](const auto& record, std::string_view line) { visited(record, line); };
    walk.each_plain_data_record(read_no_run, visit);
    EXPECT_EQ(visited.data, (std::vector<std::string>{"AA"}));
    EXPECT_EQ(walk.address_offset(), 5U);
    EXPECT_EQ(walk.next(), hex_record_walk::step::record);
    EXPECT_EQ(walk.address_offset(), 0x10000U);
    walk.each_plain_data_record(read_no_run, visit);
    EXPECT_EQ(visited.data, (std::vector<std::string>{"AA", "DD"}));
    EXPECT_EQ(walk.next(), hex_record_walk::step::fault);
    EXPECT_EQ(walk.fault().code, kvr::fault_code::missing_end_record);
}

TEST(HexRecordWalkRun, WithoutPlainDataRecordsTheLastStepStays) {
    const std::string other_record = hex_record_line(4, 0, "0001");
    const std::string text = first_record + "\n" + other_record + "\n" + end_record + "\n";
    kvr::line_source source(text, hex_record_walk::longest_line);
    hex_record_walk walk(source);
    EXPECT_EQ(walk.next(), hex_record_walk::step::record);
    walk.each_plain_data_record(read_no_run, [](const auto& /*record*/, std::string_view /*line*/) {
        ADD_FAILURE() << "there is no data record";
    });
    EXPECT_EQ(walk.text(), first_record);
    EXPECT_EQ(walk.record().data(), "AA");
    EXPECT_EQ(walk.line(), 1U);
    EXPECT_EQ(walk.next(), hex_record_walk::step::record);
    EXPECT_EQ(walk.text(), other_record);
}

TEST(HexRecordWalkRun, AWalkBeginsAtOffsetZero) {
    kvr::line_source source(first_record, hex_record_walk::longest_line);
    EXPECT_EQ(hex_record_walk(source).address_offset(), 0U);
}

} // namespace
