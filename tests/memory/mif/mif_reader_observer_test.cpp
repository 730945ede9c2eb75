// The calls that an observer of the MIF reader receives, and the places of the reported faults.

#include "kvr/memory/mif/mif_reader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace {

using kvr::fault_code;
using event_list = std::vector<std::string>;

const std::string header_of_four_words = "WIDTH=8;\nDEPTH=4;\n";
const std::string begin_of_four_words = header_of_four_words + "CONTENT BEGIN\n";

std::string joined_place(std::uint64_t line, std::string_view text) {
    return std::to_string(line) + " " + std::string(text);
}

/// Continues after every fault.
class mif_event_recorder : public kvr::mif_observer {
public:
    bool fault(const kvr::read_fault& fault, std::string_view text) override {
        faults.push_back(fault);
        texts.emplace_back(text);
        return true;
    }
    void words(std::uint64_t first, std::uint64_t last, std::uint64_t line) override {
        events.push_back("words " + joined_place(line, std::to_string(first) + "-" + std::to_string(last)));
    }
    [[nodiscard]] bool wants_every_line() const override { return true; }
    void content_line(const kvr::mif_content& content) override {
        events.push_back("line " + joined_place(content.pieces.front().line, content.text));
        has_range.push_back(content.last_address.found());
    }
    void cut_at_percent(std::string_view rest, std::uint64_t line) override {
        events.push_back("percent " + joined_place(line, rest));
    }
    void behind_begin(std::string_view rest, std::uint64_t line) override {
        events.push_back("begin " + joined_place(line, rest));
    }
    void end_statement(const kvr::mif_content& statement) override {
        events.push_back("end " + joined_place(statement.pieces.front().line, statement.text));
    }
    void behind_end(std::string_view rest, std::uint64_t line) override {
        events.push_back("after " + joined_place(line, rest));
    }

    std::vector<kvr::read_fault> faults;
    event_list texts;
    event_list events;
    std::vector<bool> has_range; ///< for each content line
};

bool read_observed(const std::string& text, mif_event_recorder& recorder) {
    kvr::mif_memory memory(nullptr);
    kvr::fill_radix_names(memory);
    kvr::line_source lines(text, kvr::mif_reader::source_limit);
    const bool complete = kvr::mif_reader(memory, &recorder).read(lines);
    EXPECT_EQ(memory.error_occurred, !complete) << text;
    return complete;
}

void expect_one_fault(const std::string& text, const kvr::read_fault& expected) {
    SCOPED_TRACE(text);
    mif_event_recorder recorder;
    EXPECT_FALSE(read_observed(text, recorder));
    ASSERT_EQ(recorder.faults.size(), 1U);
    EXPECT_EQ(recorder.faults[0].code, expected.code);
    EXPECT_EQ(recorder.faults[0].line, expected.line);
    EXPECT_EQ(recorder.faults[0].column, expected.column);
    EXPECT_EQ(recorder.faults[0].length, expected.length);
}

class mif_recorder_without_fast_lines final : public mif_event_recorder {
public:
    [[nodiscard]] bool wants_every_line() const override { return false; }
};

TEST(MifReaderObserver, FastLinesAreReportedOnlyWhereEveryLineIsWanted) {
    const std::string text = begin_of_four_words + "0 : 1;\n[1..2] : 3;\nEND;\n";
    mif_event_recorder every;
    EXPECT_TRUE(read_observed(text, every));
    mif_recorder_without_fast_lines others;
    EXPECT_TRUE(read_observed(text, others));
    const auto has_line = [](const mif_event_recorder& recorder, std::string_view line) {
        return std::ranges::any_of(recorder.events,
                                   [line](const std::string& event) { return event.starts_with(line); });
    };
    EXPECT_TRUE(has_line(every, "line 4 "));
    EXPECT_TRUE(has_line(every, "line 5 "));
    EXPECT_FALSE(has_line(others, "line 4 "));
    EXPECT_TRUE(has_line(others, "line 5 "));
}

TEST(MifReaderFaultPlace, ALineTooLongIsAtFaultBeyondTheLimit) {
    const std::string long_line(512, ' ');
    expect_one_fault(long_line + "\n" + begin_of_four_words + "END;\n",
                     {fault_code::line_too_long, 1, 512, 1});
    expect_one_fault(begin_of_four_words + "0 :\n1" + long_line + ";\nEND;\n",
                     {fault_code::line_too_long, 5, 512, 1});
}

TEST(MifReaderFaultPlace, AHeaderLineIsAtFaultAsAWholeOrAtItsNumber) {
    const std::string rest = begin_of_four_words + "END;\n";
    expect_one_fault("\n WIDTH = none ;\n" + rest, {fault_code::width_syntax, 2, 2, 11});
    expect_one_fault("WIDTH = 0 ;\n" + rest, {fault_code::width_syntax, 1, 9, 1});
    expect_one_fault("DEPTH = 4 4\n" + rest, {fault_code::depth_syntax, 1, 9, 2});
    expect_one_fault(" DEPTH = none;\n" + rest, {fault_code::depth_syntax, 1, 2, 11});
    expect_one_fault(" DATA_RADIX=HEX\n" + rest, {fault_code::data_radix_syntax, 1, 2, 14});
}

TEST(MifReaderFaultPlace, AStatementIsAtFaultAsAWholeOrAtItsAddress) {
    const auto expect_fault_of = [](const std::string& statement, const kvr::read_fault& expected) {
        expect_one_fault(begin_of_four_words + statement + "\nEND;\n", expected);
    };
    expect_fault_of(" 0 1;", {fault_code::content_syntax, 4, 1, 5});
    expect_fault_of("0 : ;", {fault_code::content_syntax, 4, 1, 5});
    expect_fault_of(" 4 : 1;", {fault_code::address_out_of_range, 4, 2, 1});
    expect_fault_of(" 3 : 1 2;", {fault_code::address_out_of_range, 4, 2, 1});
    expect_fault_of(" [0..33] : 1;", {fault_code::address_out_of_range, 4, 6, 2});
    expect_fault_of(" [44..5] : 1;", {fault_code::address_out_of_range, 4, 3, 2});
    expect_fault_of(" [0..\n  9] : 1;", {fault_code::address_out_of_range, 5, 3, 1});
    expect_fault_of("[4..5] : 1;", {fault_code::address_out_of_range, 4, 2, 1});
    expect_fault_of("[0..4] : 1;", {fault_code::address_out_of_range, 4, 5, 1});
    expect_fault_of(" [3..1] : 1;", {fault_code::range_not_ascending, 4, 3, 4});
    expect_fault_of("[1.2 : 1;", {fault_code::range_syntax, 4, 1, 9});
    expect_fault_of("0 : 1;\n\n 0 : 1;", {fault_code::address_set_twice, 6, 1, 7});
}

TEST(MifReaderFaultPlace, EndBeforeBeginIsAtFaultWhereItStands) {
    expect_one_fault(header_of_four_words + "CONTENT\n  END;\n", {fault_code::end_before_begin, 4, 3, 3});
}

TEST(MifReaderFaultPlace, AMissingEndHasTheLastLineAndNoColumn) {
    expect_one_fault(begin_of_four_words + "0 : 1;\n", {fault_code::missing_end, 5, 0, 0});
}

TEST(MifReaderEvents, ReportWhatIsReadAndWhatIsSkipped) {
    mif_event_recorder recorder;
    EXPECT_TRUE(
        read_observed("% top\n" + header_of_four_words +
                          "CONTENT\nBEGIN tail -- note\n0 : 1;\n[1..2] :\n 3 4; % cut\n 3 : a;\nEND; more\n"
                          "-- comment\nlast % rest\nWIDTH\n",
                      recorder));
    EXPECT_TRUE(recorder.faults.empty());
    EXPECT_EQ(recorder.events, (event_list{"percent 1  top", "begin 5  TAIL ", "line 6 0 : 1;", "words 6 0-0",
                                           "percent 8  cut", "line 7 [1..2] : 3 4; ", "words 7 1-2",
                                           "line 9  3 : A;", "words 9 3-3", "end 10 END; MORE",
                                           "percent 12  rest", "after 12 last ", "after 13 WIDTH"}));
}

TEST(MifReaderEvents, OnlyALineWithARangeHasALastAddress) {
    mif_event_recorder recorder;
    EXPECT_TRUE(read_observed(begin_of_four_words + "0 : 1;\n[1..2] : 3;\n3 : 4;\nEND;\n", recorder));
    EXPECT_EQ(recorder.has_range, (std::vector<bool>{false, true, false}));
}

TEST(MifReaderEvents, AReadThatWentOnAfterAFaultHasFailed) {
    for (const char* text : {"WIDTH=x;\n", "DEPTH=0;\n", "9 : 1;\n", "9 : 1;\n8 : 1;\n"}) {
        mif_event_recorder recorder;
        const bool in_header = std::string_view(text).find('=') != std::string_view::npos;
        EXPECT_FALSE(read_observed(in_header ? text + begin_of_four_words + "END;\n"
                                             : begin_of_four_words + text + "END;\n",
                                   recorder));
        EXPECT_FALSE(recorder.faults.empty()) << text;
    }
}

TEST(MifReaderEvents, BeginInTheLineOfContentReportsWhatFollowsIt) {
    mif_event_recorder recorder;
    EXPECT_TRUE(read_observed(header_of_four_words + "CONTENT BEGIN 0 : 1;\nEND;\n", recorder));
    EXPECT_EQ(recorder.events, (event_list{"begin 3 0:1;", "end 4 END;"}));
}

TEST(MifReaderEvents, AFaultHasTheTextOfItsLine) {
    mif_event_recorder recorder;
    EXPECT_FALSE(read_observed("WIDTH = x ;\n" + begin_of_four_words + "9 :\n b;\nEND;\n", recorder));
    EXPECT_EQ(recorder.texts, (event_list{"WIDTH=X;", "9 : B;"}));
}

} // namespace
