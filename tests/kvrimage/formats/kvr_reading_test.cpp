#include "kvrimage/diagnostics/diagnose.h"
#include "kvrimage/formats/kvr_reading.h"
#include "kvrimage/image/image_words.h"

#include <gtest/gtest.h>

#include <map>
#include <memory>
#include <random>

namespace {

using namespace kvrimage;

/// Finds the line of an address in a file of two-byte lines: it is the address + 1.
std::optional<place> line_of_address(std::string_view contents, const read_options&, std::uint64_t address) {
    if (address * 2 >= contents.size()) {
        return std::nullopt;
    }
    return place{address + 1, 1, address * 2, 1};
}

const format& line_format() {
    static const format made = {
        .id = "line", .title = "line", .extensions = {}, .find_word = line_of_address};
    return made;
}

constexpr std::string_view twelve_lines = "0\n1\n2\n3\n4\n5\n6\n7\n8\n9\nA\nB\n";

using words_by_address = std::map<std::uint32_t, std::string>;

read_result our_reading(const words_by_address& words, std::uint32_t depth, std::uint64_t base = 0,
                        std::uint32_t width = 8) {
    read_result ours;
    ours.image.emplace(width, std::make_unique<image_words>(depth), base);
    for (const auto& [address, text] : words) {
        ours.image->words().set(address - base, text);
    }
    return ours;
}

kvr_reading their_reading(const words_by_address& words, std::uint32_t depth,
                          radix texts_radix = radix::hex) {
    kvr_reading theirs;
    theirs.texts_radix = texts_radix;
    theirs.words.resize(depth, "");
    for (const auto& [address, text] : words) {
        theirs.words.set(address, text);
    }
    return theirs;
}

std::vector<diagnostic> compared(const read_result& ours, const kvr_reading& theirs) {
    return compare_with_kvr(line_format(), twelve_lines, {}, ours, theirs);
}

TEST(KvrReading, OfTheSameWordsIsFine) {
    EXPECT_TRUE(
        compared(our_reading({{0, "0A"}, {2, "FF"}}, 4), their_reading({{0, "0A"}, {2, "FF"}}, 4)).empty());
}

TEST(KvrReading, MayHaveTheWordsInOtherTexts) {
    const read_result ours = our_reading({{0, "0A"}, {2, "FF"}}, 4);
    EXPECT_TRUE(compared(ours, their_reading({{0, "A"}, {2, "ff"}}, 4)).empty());
    EXPECT_TRUE(compared(ours, their_reading({{0, "1010"}, {2, "11111111"}}, 4, radix::bin)).empty());
    EXPECT_TRUE(compared(ours, their_reading({{0, "10"}, {2, "-1"}}, 4, radix::dec)).empty());
    EXPECT_FALSE(compared(ours, their_reading({{0, "0A"}, {2, "FF"}}, 4, radix::uns)).empty());
}

TEST(KvrReading, MayHaveZerosWhereNoWordIsSet) {
    EXPECT_TRUE(
        compared(our_reading({{1, "0A"}}, 3), their_reading({{0, "0"}, {1, "0A"}, {2, "00"}}, 3)).empty());
    EXPECT_TRUE(compared(our_reading({{1, "0A"}}, 2), their_reading({{1, "0A"}, {5, "0"}}, 9)).empty());
    EXPECT_FALSE(compared(our_reading({{1, "0A"}}, 3), their_reading({{1, "0A"}, {2, "01"}}, 3)).empty());
}

TEST(KvrReading, OfOtherWordsHasTheFirstOfThem) {
    const auto found = compared(our_reading({{0, "0A"}, {3, "FF"}, {5, "01"}}, 6),
                                their_reading({{0, "0A"}, {3, "FE"}, {5, "02"}}, 6));
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(about(found[0].id).code, "kvr-reads-other-words");
    EXPECT_EQ(found[0].message, "the library kvr reads FE at address 3, but the file has FF");
    EXPECT_EQ(found[0].consumer, "kvr");
    EXPECT_EQ(found[0].count, 2U);
    EXPECT_EQ(found[0].where, (place{4, 1, 6, 1}));
    ASSERT_EQ(found[0].more.size(), 1U);
    EXPECT_EQ(found[0].more[0], (place{6, 1, 10, 1}));
}

TEST(KvrReading, OfOtherWordsAmidManyHasTheirPlaces) {
    words_by_address words;
    for (std::uint32_t address = 0; address < 1024; ++address) {
        words[address] = address % 2 == 0 ? "0A" : "0B";
    }
    words_by_address other_words = words;
    other_words[3] = "0C";
    other_words[700] = "0D";
    const auto found = compared(our_reading(words, 1024), their_reading(other_words, 1024));
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].message, "the library kvr reads 0C at address 3, but the file has 0B");
    EXPECT_EQ(found[0].count, 2U);
    EXPECT_EQ(found[0].where, (place{4, 1, 6, 1}));
}

TEST(KvrReading, ShowsWordsInTheRadixOfTheFile) {
    read_result ours = our_reading({{0, "0A"}}, 1);
    ours.facts.data_radix = radix::dec;
    EXPECT_EQ(compared(ours, their_reading({{0, "FF"}}, 1))[0].message,
              "the library kvr reads -1 at address 0, but the file has 10");
    EXPECT_EQ(compared(our_reading({{0, "XA"}}, 1), their_reading({}, 1))[0].message,
              "the library kvr reads no word at address 0, but the file has XA");
    EXPECT_EQ(compared(our_reading({}, 1), their_reading({{0, "1FF"}}, 1))[0].message,
              "the library kvr reads 1FF at address 0, but the file has no word");
    ours.image->words().set(0, "XA");
    EXPECT_EQ(compared(ours, their_reading({{0, "FF"}}, 1))[0].message,
              "the library kvr reads -1 at address 0, but the file has XA");
}

TEST(KvrReading, KeepsTenPlacesAndCountsAll) {
    kvr_reading theirs;
    theirs.words.resize(4000000000U, "");
    theirs.words.fill(0, 3999999999U, {"01"});
    const auto found = compared(our_reading({}, 12), theirs);
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].count, 4000000000U);
    EXPECT_EQ(found[0].more.size(), 9U);
}

TEST(KvrReading, NeedsNoPlaces) {
    const format without_places = {.id = "x", .title = "x", .extensions = {}};
    const auto found =
        compare_with_kvr(without_places, "", {}, our_reading({{0, "01"}}, 1), their_reading({}, 1));
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].where, place{});
}

TEST(KvrReading, LooksAtOneRoundOfHugePatterns) {
    constexpr std::uint32_t depth = 4000000000U;
    const auto filled = [](std::vector<std::string_view> pattern) {
        kvr::word_store words;
        words.resize(depth, "");
        words.fill(0, depth - 1, pattern);
        return words;
    };
    read_result ours;
    ours.image.emplace(8, std::make_unique<image_words>(depth));
    ours.image->words().fill(0, depth - 1, {"01", "02", "03"});
    kvr_reading same{filled({"1", "2", "3"}), radix::hex, false, {}, ""};
    EXPECT_TRUE(compared(ours, same).empty());
    kvr_reading other{filled({"1", "2", "3"}), radix::hex, false, {}, ""};
    other.words.set(depth - 2, "9");
    const auto found = compared(ours, other);
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(found[0].count, 1U);
}

TEST(KvrReading, OfARefusedFileHasTheReason) {
    kvr_reading theirs;
    theirs.refused = true;
    theirs.where = {4, 1};
    theirs.reason = "a line has more than 511 characters";
    const auto found = compared(our_reading({{0, "01"}}, 1), theirs);
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(about(found[0].id).code, "kvr-refuses");
    EXPECT_EQ(found[0].message, "the library kvr refuses the file: a line has more than 511 characters");
    EXPECT_EQ(found[0].where, (place{3, 1, 4, 1}));
    kvr_reading without_place;
    without_place.refused = true;
    EXPECT_EQ(compared(our_reading({{0, "01"}}, 1), without_place)[0].where, place{});
}

TEST(KvrReading, IsNotReportedWhereTheReasonIsKnown) {
    read_result ours = our_reading({{0, "01"}}, 1);
    ours.diagnostics = {diagnose::kvr_refuses(places(), "this")};
    EXPECT_TRUE(compared(ours, their_reading({}, 1)).empty());
    ours.diagnostics = {diagnose::bad_digit(places(), "G", "1G", "hexadecimal")};
    EXPECT_TRUE(compared(ours, their_reading({}, 1)).empty());
    ours.diagnostics = {diagnose::no_words(places())};
    EXPECT_EQ(compared(ours, their_reading({}, 1)).size(), 1U);
    ours.image.reset();
    EXPECT_TRUE(compared(ours, their_reading({}, 1)).empty());
}

TEST(KvrReading, DiffersWhereAModelDiffers) {
    std::mt19937 random(9);
    const auto below = [&random](std::uint32_t limit) {
        return static_cast<std::uint32_t>(random() % limit);
    };
    constexpr std::string_view hex[] = {"", "00", "01", "FF"};
    constexpr std::string_view short_hex[] = {"", "0", "1", "FF"};
    constexpr std::string_view decimal[] = {"", "0", "1", "-1"};
    for (int round = 0; round < 1500; ++round) {
        const std::uint32_t base = below(3) == 0 ? below(1500) : 0;
        const std::uint32_t depth = below(2500) + 1;
        const std::uint32_t their_depth = below(3) == 0 ? below(3000) + 1 : base + depth;
        const bool is_decimal = below(2) == 0;
        const auto text_of = [&](int word, bool is_short) {
            return is_decimal ? decimal[word] : is_short ? short_hex[word] : hex[word];
        };
        read_result ours = our_reading({}, depth, base);
        kvr_reading theirs = their_reading({}, their_depth, is_decimal ? radix::dec : radix::hex);
        std::vector<int> our_model(std::max(base + depth, their_depth));
        std::vector<int> their_model(our_model.size());
        const auto set_range = [&](std::uint32_t first, std::uint32_t last, int word, bool in_ours,
                                   bool in_theirs) {
            for (std::uint32_t address = first; address <= last && address < our_model.size(); ++address) {
                if (in_ours && address >= base && address < base + depth) {
                    ours.image->words().set(address - base, hex[word]);
                    our_model[address] = word;
                }
                if (in_theirs && address < their_depth) {
                    theirs.words.set(address, text_of(word, round % 2 == 0));
                    their_model[address] = word;
                }
            }
        };
        for (std::uint32_t step = below(5) + 1; step > 0; --step) {
            const std::uint32_t first = below(3000);
            set_range(first, first + below(900), static_cast<int>(below(4)), true, true);
        }
        for (std::uint32_t step = below(3); step > 0; --step) {
            const std::uint32_t first = below(3000);
            set_range(first, first + below(3), static_cast<int>(below(4)), below(2) == 0, true);
        }
        std::uint64_t count = 0;
        for (std::size_t address = 0; address < our_model.size(); ++address) {
            const bool same = our_model[address] == their_model[address] ||
                              (our_model[address] == 0 && their_model[address] == 1);
            count += same ? 0 : 1;
        }
        const auto found = compared(ours, theirs);
        ASSERT_EQ(found.size(), count == 0 ? 0U : 1U);
        if (count != 0) {
            ASSERT_EQ(found[0].count, count);
        }
    }
}

} // namespace
