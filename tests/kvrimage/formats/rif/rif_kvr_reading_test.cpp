#include "kvrimage/formats/rif/rif_kvr_reading.h"
#include "kvrimage/formats/rif/rif_reader.h"
#include "tests/kvrimage/formats/rif/shown_diagnostics.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <string>

namespace {

using namespace kvrimage;
using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> found_for_kvr(std::string_view text, read_result ours) {
    return shown(check_rif_for_kvr(text, {}, ours));
}

std::vector<std::string> found_for_kvr(std::string_view text) {
    return found_for_kvr(text, read_rif(text, {}));
}

TEST(RifKvrReading, FindsNothingWhereTheLibraryReadsTheSame) {
    EXPECT_THAT(found_for_kvr("@0\r\n1 02 1X\n@10\nab"), IsEmpty());
    EXPECT_THAT(found_for_kvr("\t@1\t\n1"), IsEmpty());
}

TEST(RifKvrReading, SaysNothingOfAFileThatIsBroken) {
    EXPECT_THAT(found_for_kvr("1 2G"), IsEmpty());
}

TEST(RifKvrReading, FindsTheWordAtTheLastAddress) {
    EXPECT_THAT(found_for_kvr("@ffffffff\n1"), ElementsAre(testing::StartsWith("kvr-reads-other-words")));
}

/// The library does not accept tabs. Without the reader's diagnostic, the comparison would find them.
TEST(RifKvrReading, FindsWhereTheLibraryGivesUp) {
    const std::string_view text = "@0\n1\n22\t\t3\n";
    read_result ours = read_rif(text, {});
    EXPECT_THAT(found_for_kvr(text), IsEmpty());
    ours.diagnostics.clear();
    EXPECT_THAT(found_for_kvr(text, std::move(ours)), ElementsAre("kvr-refuses 3:3+2"));
}

TEST(RifKvrReading, FindsOtherWords) {
    const std::string_view text = "1\r@5\r2";
    read_result ours = read_rif(text, {});
    ours.diagnostics.clear();
    EXPECT_THAT(found_for_kvr(text, std::move(ours)), ElementsAre(testing::StartsWith("kvr-re")));
}

/// If the reader reports no broken and no consumer diagnostic, the library reads the same words. The library
/// accepts no tab that has a diagnostic.
TEST(RifKvrReading, AgreesWithTheReaderOnRandomFiles) {
    constexpr std::string_view characters = "0123456789abcdefABCDEFxXuUG@@  \t\n\n\r/-#,;";
    std::mt19937 random(23);
    int taken = 0;
    for (int round = 0; round < 2000; ++round) {
        std::string text;
        for (std::size_t left = random() % 24; left > 0; --left) {
            const std::size_t kinds = round % 2 == 0 ? characters.size() : 22;
            text += random() % 3 == 0 ? " \n@"[random() % 3] : characters[random() % kinds];
        }
        read_result ours = read_rif(text, {});
        if (!ours.image) {
            continue;
        }
        ++taken;
        const auto has = [&ours](diagnostic_id id) {
            return std::ranges::count(ours.diagnostics, id, &diagnostic::id) != 0;
        };
        const bool has_tab = has(diagnostic_id::rif_tab);
        const bool has_carriage_return = has(diagnostic_id::lone_carriage_return);
        ours.diagnostics.clear();
        const bool differs = !found_for_kvr(text, std::move(ours)).empty();
        ASSERT_TRUE(differs || !has_tab) << text;
        ASSERT_TRUE(!differs || has_tab || has_carriage_return) << text;
    }
    EXPECT_GT(taken, 250);
}

} // namespace
