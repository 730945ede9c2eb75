#include "kvrimage/formats/memory_file.h"
#include "kvrimage/formats/readmem/readmem_consumers.h"
#include "kvrimage/formats/readmem/readmem_format.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

using namespace kvrimage;
using testing::ElementsAre;
using testing::IsEmpty;

check_options for_simulators(const format& as = readmemh_format) {
    check_options options;
    options.read.as = &as;
    options.consumers = {"icarus", "verilator", "yosys"};
    return options;
}

/// "verilator: Verilator 5.006 drops ..." for each diagnostic.
std::vector<std::string> other_readings(std::string_view contents, const check_options& options) {
    std::vector<std::string> found;
    for (const diagnostic& each : check(contents, options).diagnostics) {
        if (each.id == diagnostic_id::readmem_other_reading) {
            found.push_back(each.consumer + ": " + each.message);
        }
    }
    return found;
}

TEST(ReadmemConsumers, APlainListIsReadAlike) {
    EXPECT_THAT(other_readings("// words\n01 23\n@A 45 /* x */ 67\n", for_simulators()), IsEmpty());
}

TEST(ReadmemConsumers, SayWhatTheyDrop) {
    EXPECT_THAT(other_readings("01 23", for_simulators()),
                ElementsAre("verilator: Verilator 5.006 drops the last word, which no line end follows"));
}

TEST(ReadmemConsumers, SayWhatTheyMakeOfBrokenFiles) {
    EXPECT_THAT(other_readings("01 # 2\n", for_simulators()),
                ElementsAre("icarus: Icarus Verilog 11.0 refuses '#'",
                            "yosys: Yosys 0.23 reads the comment as words"));
}

TEST(ReadmemConsumers, RepairOnlyWhatTheyKnowEachPlaceOf) {
    std::string few = "01@1 ";
    std::string many;
    for (int joined = 0; joined < 11; ++joined) {
        many += few;
    }
    const auto has_fix = [](std::string_view contents, bool wants_repairs) {
        check_options options = for_simulators();
        options.read.wants_repairs = wants_repairs;
        const std::vector<diagnostic> found = check(contents, options).diagnostics;
        return std::ranges::any_of(found, [](const diagnostic& each) {
            return each.id == diagnostic_id::readmem_other_reading && !each.fix.empty();
        });
    };
    EXPECT_TRUE(has_fix(few, false));
    EXPECT_FALSE(has_fix(many, false));
    EXPECT_TRUE(has_fix(many, true));
}

TEST(ReadmemConsumers, OnlyThoseThatAreAskedForSaySomething) {
    check_options options = for_simulators();
    options.consumers = {"kvr"};
    EXPECT_THAT(other_readings("01 # 2", options), IsEmpty());
    options.consumers = {"yosys"};
    EXPECT_THAT(other_readings("01 # 2", options),
                ElementsAre("yosys: Yosys 0.23 reads the comment as words"));
}

TEST(ReadmemConsumers, AFileOfAnotherFormatIsNotJudged) {
    EXPECT_THAT(other_readings(":00000001FF\n", for_simulators()), IsEmpty());
}

TEST(ReadmemConsumers, TheirRepairsKeepTheWords) {
    const std::string text = "01//a\n02\f03@8 04\n@9//b\n05";
    const repaired done = repair(text, for_simulators());
    EXPECT_EQ(done.contents, "01 //a\n02 03 @8 04\n@9 //b\n05\n");
    EXPECT_THAT(other_readings(done.contents, for_simulators()), IsEmpty());
    check_options before = for_simulators();
    before.consumers = {};
    EXPECT_TRUE(*check(text, before).image == *done.left.image);
}

TEST(ReadmemConsumers, WhatIsWrittenIsReadAlike) {
    memory_image image(12, 40);
    image.fill({3, 20}, std::vector<word>{word::of(0xABC, 12), word::of(1, 12)});
    image.set(39, word::of(2, 12));
    for (const format* as : {&readmemh_format, &readmemb_format}) {
        for (const std::vector<choice>& choices :
             {std::vector<choice>{}, {{"banner", ""}, {"every-address", ""}, {"words-per-line", "1"}}}) {
            write_options options;
            options.as = as;
            options.choices = choices;
            EXPECT_THAT(other_readings(to_text(image, options), for_simulators(*as)), IsEmpty());
        }
    }
}

TEST(ReadmemConsumers, DontCareDigitsAreWrittenAndVerilatorReadsZero) {
    memory_image image(8, 1);
    image.set(0, *word::parse("X1", radix::hex, 8).value);
    write_options options;
    options.as = &readmemh_format;
    EXPECT_THAT(other_readings(to_text(image, options), for_simulators()),
                ElementsAre("verilator: Verilator 5.006 reads 0 for a digit x"));
}

} // namespace
