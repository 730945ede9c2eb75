#include "kvrimage/formats/registry.h"
#include "tools/kvrmem/lsp/settings.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using kvrmem::lsp::changed_settings;
using kvrmem::lsp::json;
using kvrmem::lsp::matches_pattern;
using kvrmem::lsp::settings;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(LanguageServerSettings, AreTakenOver) {
    std::vector<std::string> faults;
    const settings made = changed_settings(
        {},
        json::parse(
            R"({"format": "hex", "width": 32, "depth": "0x100", "address-unit": "byte", "endian": "little",
                        "base": "0x80000000", "pad": 255, "for": ["icarus"], "radix": "fixed:8.8",
                        "diagnostics": 7, "choices": {"value-column": "2"}})"),
        faults);
    EXPECT_THAT(faults, IsEmpty());
    const kvrimage::read_options& read = made.of_all.check.read;
    EXPECT_EQ(read.as, kvrimage::format_of_name("hex"));
    EXPECT_EQ(read.width, 32U);
    EXPECT_EQ(read.depth, 256U);
    EXPECT_EQ(read.unit, kvrimage::address_unit::byte);
    EXPECT_EQ(read.order, kvrimage::byte_order::little);
    EXPECT_EQ(read.base, 0x80000000U);
    EXPECT_EQ(read.pad, 255U);
    EXPECT_EQ(read.most_diagnostics, 7U);
    ASSERT_EQ(read.choices.size(), 1U);
    EXPECT_EQ(read.choices[0].name, "value-column");
    EXPECT_EQ(read.choices[0].value, "2");
    EXPECT_THAT(made.of_all.check.consumers, ElementsAre("icarus"));
    EXPECT_EQ(made.of_all.shown_radix->fraction_bits, 8U);
}

TEST(LanguageServerSettings, TheLongestPatternOfANameCounts) {
    std::vector<std::string> faults;
    settings made = changed_settings(
        {}, json::parse(R"({"files": {"*.hex": {"width": 16}, "boot.hex": {"width": 32}}})"), faults);
    EXPECT_EQ(made.of("boot.hex").check.read.width, 32U);
    EXPECT_EQ(made.of("other.hex").check.read.width, 16U);
}

TEST(LanguageServerSettings, PatternsStayWhereOthersChange) {
    std::vector<std::string> faults;
    settings made = changed_settings({}, json::parse(R"({"files": {"*.hex": {"width": 16}}})"), faults);
    made = changed_settings(std::move(made), json::parse(R"({"pad": 7})"), faults);
    EXPECT_EQ(made.of("a.hex").check.read.width, 16U);
    EXPECT_EQ(made.of("a.hex").check.read.pad, 7U);
    made = changed_settings(std::move(made), json::parse(R"({"files": null})"), faults);
    EXPECT_FALSE(made.of("a.hex").check.read.width);
    EXPECT_THAT(faults, IsEmpty());
}

TEST(LanguageServerSettings, AreTakenBackByNull) {
    std::vector<std::string> faults;
    settings made = changed_settings(
        {},
        json::parse(
            R"({"format": "hex", "width": 32, "depth": 5, "address-unit": "word", "endian": "big", "base": 1,
                            "pad": 1, "for": [], "radix": "dec", "diagnostics": 7, "choices": {"a": "b"}})"),
        faults);
    made = changed_settings(
        std::move(made),
        json::parse(
            R"({"format": null, "width": null, "depth": null, "address-unit": null, "endian": null, "base": null,
                        "pad": null, "for": null, "radix": null, "diagnostics": null, "choices": null})"),
        faults);
    EXPECT_THAT(faults, IsEmpty());
    const kvrimage::read_options& read = made.of_all.check.read;
    EXPECT_FALSE(read.as || read.width || read.depth || read.unit || read.order || read.base || read.pad);
    EXPECT_THAT(made.of_all.check.consumers, ElementsAre("kvr"));
    EXPECT_FALSE(made.of_all.shown_radix);
    EXPECT_EQ(read.most_diagnostics, 100U);
    EXPECT_THAT(read.choices, IsEmpty());
}

TEST(LanguageServerSettings, ReportWhatIsWrong) {
    std::vector<std::string> faults;
    const settings made = changed_settings(
        {},
        json::parse(
            R"({"format": "nothing", "width": 0, "depth": "x", "address-unit": "bit", "endian": 1, "base": -1,
                        "pad": 256, "for": "kvr", "radix": "fixed", "diagnostics": 0, "choices": [], "other": 1})"),
        faults);
    EXPECT_THAT(
        faults,
        ElementsAre("kvrmem.address-unit: expected word or byte",
                    "kvrmem.base: expected a number from 0 to 18446744073709551615",
                    "kvrmem.choices: expected an object of texts, as in {\"value-column\": \"2\"}",
                    "kvrmem.depth: expected a number from 1 to 4294967296",
                    "kvrmem.diagnostics: expected a number from 1 to 100000",
                    "kvrmem.endian: expected little or big",
                    "kvrmem.for: expected a list of names, as in [\"kvr\", \"icarus\"]",
                    "kvrmem.format: expected a name listed by kvrmem formats",
                    "kvrmem.other: there is no such setting", "kvrmem.pad: expected a number from 0 to 255",
                    "kvrmem.radix: expected bin, oct, dec, uns, hex, or fixed:I.F with I integer and F "
                    "fraction bits",
                    "kvrmem.width: expected a number from 1 to 1048576"));
    EXPECT_FALSE(made.of_all.check.read.width);
}

TEST(LanguageServerSettings, ReportWhatIsNoText) {
    std::vector<std::string> faults;
    static_cast<void>(changed_settings(
        {}, json::parse(R"({"format": 1, "for": [1], "radix": 2, "choices": {"a": 1}, "files": 1})"),
        faults));
    EXPECT_THAT(faults,
                ElementsAre("kvrmem.choices: expected an object of texts, as in {\"value-column\": \"2\"}",
                            "kvrmem.for: expected a list of names, as in [\"kvr\", \"icarus\"]",
                            "kvrmem.format: expected the name of a format",
                            "kvrmem.radix: expected a radix, as fixed:8.8",
                            "kvrmem.files: expected an object"));
    faults.clear();
    static_cast<void>(changed_settings({}, 5, faults));
    EXPECT_THAT(faults, ElementsAre("kvrmem: expected an object"));
}

TEST(LanguageServerSettings, ForFilesByTheirNames) {
    std::vector<std::string> faults;
    const settings made = changed_settings(
        {},
        json::parse(
            R"({"width": 8, "for": [], "files": {"*.hex": {"width": 32}, "b*": {"address-unit": "byt"}}})"),
        faults);
    EXPECT_THAT(faults, ElementsAre("kvrmem.files.b*.address-unit: expected word or byte"));
    EXPECT_EQ(made.of("boot.hex").check.read.width, 32U);
    EXPECT_THAT(made.of("boot.hex").check.consumers, IsEmpty());
    EXPECT_EQ(made.of("boot.mif").check.read.width, 8U);
    EXPECT_EQ(made.of("a.mif").check.read.width, 8U);
}

TEST(LanguageServerSettings, PatternsOfNames) {
    EXPECT_TRUE(matches_pattern("boot.hex", "*.hex"));
    EXPECT_TRUE(matches_pattern("boot.hex", "b?ot*"));
    EXPECT_TRUE(matches_pattern("aXbXc", "a*b*c"));
    EXPECT_TRUE(matches_pattern("", "*"));
    EXPECT_TRUE(matches_pattern("", ""));
    EXPECT_TRUE(matches_pattern("a*b", "a*b"));
    EXPECT_FALSE(matches_pattern("boot.hex", "*.mif"));
    EXPECT_FALSE(matches_pattern("boot.hex", "boot"));
    EXPECT_FALSE(matches_pattern("boot", "boot.hex"));
    EXPECT_FALSE(matches_pattern("", "?"));
}

} // namespace
