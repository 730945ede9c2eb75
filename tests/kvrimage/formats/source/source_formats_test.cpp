#include "kvrimage/formats/memory_file.h"
#include "kvrimage/formats/registry.h"
#include "kvrimage/formats/source/c_format.h"
#include "kvrimage/formats/source/python_format.h"
#include "kvrimage/formats/source/verilog_format.h"
#include "kvrimage/formats/source/vhdl_format.h"
#include "tests/kvrimage/files/test_folder.h"
#include "tests/kvrimage/formats/list_format.h"
#include "tests/kvrimage/formats/source/source_test_images.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace {

using namespace kvrimage;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr const format* source_formats[] = {&c_format, &python_format, &verilog_format, &vhdl_format};

std::vector<std::string> messages_of(const std::vector<diagnostic>& found) {
    std::vector<std::string> texts;
    for (const diagnostic& each : found) {
        texts.push_back(each.message);
    }
    return texts;
}

TEST(SourceFormats, AreFoundByNameAndExtension) {
    for (const format* each : source_formats) {
        EXPECT_EQ(format_of_name(each->id), each);
        for (const std::string_view extension : each->extensions) {
            EXPECT_EQ(format_of_path("rom." + std::string(extension)), each);
        }
    }
}

TEST(SourceFormats, AreNotRead) {
    for (const format* each : source_formats) {
        EXPECT_THROW(static_cast<void>(parse("", {.as = each})), std::invalid_argument);
    }
}

TEST(SourceFormats, AreNotReadAsAnotherFormat) {
    const memory_image image = kvrimage_tests::image_of_hex(8, {"01", "23", "45"}, 16);
    for (const format* each : source_formats) {
        const std::string text = to_text(image, {.as = each});
        EXPECT_FALSE(parse(text).image) << each->title;
    }
}

TEST(SourceFormats, HoldNoMemoryWithGaps) {
    memory_image image(8, 4);
    image.set(1, word::of(1, 8));
    for (const format* each : source_formats) {
        EXPECT_THAT(messages_of(can_write(image, {.as = each})),
                    ElementsAre("3 words are not set, the first at address 0, but " +
                                std::string(each->title) + " cannot omit words"));
    }
}

TEST(SourceFormats, OfProgramsHoldNoDontCareBits) {
    const memory_image image = kvrimage_tests::image_of_hex(8, {"0X"});
    for (const format* each : {&c_format, &python_format}) {
        EXPECT_THAT(messages_of(can_write(image, {.as = each})),
                    ElementsAre("word 0X at address 0 has a don't-care bit, which " +
                                std::string(each->title) + " cannot hold"));
    }
}

TEST(SourceFormats, OfHardwareHoldUpTo2147483647Words) {
    memory_image image(8, 0x7FFFFFFF);
    image.fill_unset(word::of(1, 8));
    EXPECT_THAT(can_write(image, {.as = &verilog_format}), IsEmpty());
    EXPECT_THAT(can_write(image, {.as = &vhdl_format}), IsEmpty());
    image.resize(0x80000000);
    image.fill_unset(word::of(1, 8));
    EXPECT_THAT(messages_of(can_write(image, {.as = &verilog_format})),
                ElementsAre("Verilog has arrays of up to 2147483647 words, but the memory has 2147483648"));
    EXPECT_THAT(messages_of(can_write(image, {.as = &vhdl_format})),
                ElementsAre("VHDL has arrays of up to 2147483647 words, but the memory has 2147483648"));
    EXPECT_THAT(can_write(image, {.as = &c_format}), IsEmpty());
}

TEST(SourceFormats, RefuseTheirReservedWords) {
    const memory_image image = kvrimage_tests::image_of_hex(8, {"01"});
    const auto refusals = [&image](const format& as, const std::string& name) {
        return messages_of(can_write(image, {.as = &as, .choices = {{"name", name}}}));
    };
    for (const char* name : {"register", "nullptr", "uint8_t", "SIZE", "main", "gamma"}) {
        EXPECT_THAT(refusals(c_format, name),
                    ElementsAre("'" + std::string(name) + "' has another meaning in C"));
    }
    for (const char* name : {"lambda", "None", "WIDTH"}) {
        EXPECT_THAT(refusals(python_format, name),
                    ElementsAre("'" + std::string(name) + "' has another meaning in Python"));
    }
    for (const char* name : {"module", "logic", "xor", "accept_on", "data"}) {
        EXPECT_THAT(refusals(verilog_format, name),
                    ElementsAre("'" + std::string(name) + "' has another meaning in Verilog"));
    }
    for (const char* name : {"Signal", "abs", "XOR", "words"}) {
        EXPECT_THAT(refusals(vhdl_format, name),
                    ElementsAre("'" + std::string(name) + "' has another meaning in VHDL"));
    }
    EXPECT_THAT(refusals(vhdl_format, "a__b"), ElementsAre("'a__b' is not a valid name in VHDL"));
}

TEST(SourceFormats, AreNamedAfterTheirFile) {
    const test_folder folder;
    const memory_image image = kvrimage_tests::image_of_hex(8, {"01"});
    write(image, folder.path("my table.sv"));
    EXPECT_THAT(folder.read("my table.sv"), HasSubstr("module my_table ("));
    write(image, folder.path("a.vhd"), {.file_name = "b.vhd"});
    EXPECT_THAT(folder.read("a.vhd"), HasSubstr("entity b is"));
}

TEST(SourceFormats, KnowTheSizeOfWhatTheyWrite) {
    for (const format* each : source_formats) {
        kvrimage_tests::expect_close_size({.as = each}, false);
    }
    memory_image dont_cares(8, 5000);
    dont_cares.fill({0, 4999}, std::vector{word::of(1, 8), word::parse("0X", radix::hex, 8).value.value()});
    for (const format* each : {&verilog_format, &vhdl_format}) {
        const auto written = static_cast<double>(to_text(dont_cares, {.as = each}).size());
        const auto expected = static_cast<double>(each->written_size(dont_cares, {.as = each}));
        EXPECT_GE(expected, written) << each->title;
        EXPECT_LE(expected, written * 1.02) << each->title;
    }
}

/// The comments that @p as finds in @p contents.
std::vector<std::string> comments_of(const format& as, std::string_view contents) {
    std::vector<std::string> found;
    as.find_comments(contents, [&](const span& where) { found.emplace_back(where.in(contents)); });
    return found;
}

TEST(SourceFormats, FindTheCommentsOfTheirLanguage) {
    EXPECT_THAT(comments_of(c_format, "int a; // b\n/* c */ '\"' // d"),
                ElementsAre("// b", "/* c */", "// d"));
    EXPECT_THAT(comments_of(python_format, "'# a' # b\n"), ElementsAre("# b"));
    EXPECT_THAT(comments_of(verilog_format, "8'h00; // a\n/* b */"), ElementsAre("// a", "/* b */"));
    EXPECT_THAT(comments_of(vhdl_format, "\"--\" -- a\n"), ElementsAre("-- a"));
}

TEST(SourceFormats, HaveNoCommentsThatTheyWriteThemselves) {
    const memory_image wide = kvrimage_tests::image_of_hex(65, {"01"}, 16);
    for (const format* each : source_formats) {
        EXPECT_THAT(comments_of(*each, to_text(wide, {.as = each})), IsEmpty()) << each->title;
    }
}

} // namespace
