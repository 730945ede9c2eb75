#include "kvr/memory/store/word_store.h"
#include "tests/allocation.h"
#include "tests/memory/random_numbers.h"
#include "tests/memory/store/word_store_model.h"
#include "tests/sanitized.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <memory>
#include <new>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using kvr::word_run;
using kvr::word_store;
using namespace std::string_literals;

constexpr std::uint32_t largest_size = 4294967295;

word_store store_of(std::uint32_t size, std::string_view fill) {
    word_store words;
    words.resize(size, fill);
    return words;
}

std::vector<std::string> words_of(const word_store& words) {
    std::vector<std::string> copy;
    for (std::uint32_t address = 0; address < words.size(); ++address) {
        copy.emplace_back(words[address]);
    }
    return copy;
}

void expect_run(const word_run& run, std::uint32_t first, std::uint32_t last, std::string_view text) {
    EXPECT_EQ(run.first, first);
    EXPECT_EQ(run.last, last);
    EXPECT_EQ(run.text, text);
}

TEST(WordStore, NewStoreIsEmpty) {
    const word_store words;
    EXPECT_EQ(words.size(), 0U);
    EXPECT_TRUE(words.empty());
}

TEST(WordStore, NewWordsHoldTheFillText) {
    EXPECT_EQ(words_of(store_of(3, "0")), (std::vector<std::string>{"0", "0", "0"}));
}

TEST(WordStore, GrowingKeepsWordsAndFillsOnlyTheNewOnes) {
    word_store words = store_of(2, "0");
    words.set(1, "A");
    words.resize(4, "1");
    EXPECT_EQ(words_of(words), (std::vector<std::string>{"0", "A", "1", "1"}));
}

TEST(WordStore, ShrinkingDropsTheWordsAtTheHighEnd) {
    word_store words = store_of(4, "0");
    words.set(1, "A");
    words.set(2, "B");
    words.resize(2, "9");
    EXPECT_EQ(words_of(words), (std::vector<std::string>{"0", "A"}));
}

TEST(WordStore, WordsThatWereDroppedDoNotComeBack) {
    for (const std::uint32_t size : {10U, 1024U, 40000U, 3000000U}) {
        for (const std::uint32_t rest : {0U, 5U, size / 2, size - 1}) {
            word_store words = store_of(size, "0");
            words.fill(0, size - 1, {"A", "B"});
            words.set(size - 1, "last");
            words.resize(rest, "");
            words.resize(size, "new");
            expect_run(words.run_at(rest), rest, size - 1, "new");
            EXPECT_TRUE(rest == 0 || words[rest - 1] == (rest % 2 == 0 ? "B" : "A"));
        }
    }
}

TEST(WordStore, ResizingToTheSameSizeChangesNothing) {
    word_store words = store_of(2, "0");
    words.set(1, "A");
    words.resize(2, "9");
    EXPECT_EQ(words_of(words), (std::vector<std::string>{"0", "A"}));
}

void expect_cycle(const kvr::word_cycle& cycle, std::uint32_t first, std::uint32_t last,
                  std::uint32_t period) {
    EXPECT_EQ(cycle.first, first);
    EXPECT_EQ(cycle.last, last);
    EXPECT_EQ(cycle.period, period);
}

TEST(WordStore, AFillOfSeveralValuesIsACycleToItsEnd) {
    word_store words = store_of(4294967295U, "0");
    words.fill(0, 4294967294U, {"A", "B", "C"});
    expect_cycle(words.cycle_at(0), 0, 4294967294U, 3);
    expect_cycle(words.cycle_at(4000000001U), 4000000001U, 4294967294U, 3);
}

TEST(WordStore, ACycleEndsBeforeThePageOfAWordThatWasSet) {
    word_store words = store_of(10000000, "0");
    words.fill(0, 9999999, {"A", "B", "C"});
    words.set(5000000, "D");
    expect_cycle(words.cycle_at(1), 1, 5000000 / 1024 * 1024 - 1, 3);
    EXPECT_EQ(words.cycle_at(5000000).period, 0U);
    expect_cycle(words.cycle_at((5000000 / 1024 + 1) * 1024), (5000000 / 1024 + 1) * 1024, 9999999, 3);
}

TEST(WordStore, EqualWordsAreACycleOfOne) {
    const word_store words = store_of(10000000, "0");
    expect_cycle(words.cycle_at(7), 7, 9999999, 1);
}

TEST(WordStore, AConvertedCycleStaysOne) {
    word_store words = store_of(100000000, "0");
    words.fill(0, 99999999, {"A", "B", "C"});
    ASSERT_TRUE(words.transform([](std::string_view word, std::string& made) {
        made.assign("0").append(word);
        return true;
    }));
    expect_cycle(words.cycle_at(0), 0, 99999999, 3);
    EXPECT_EQ(words[99999998], "0C");
}

TEST(WordStore, KeepsLettersLengthsAndEveryByte) {
    word_store words = store_of(5, "0");
    const std::array<std::string, 5> texts = {"", "aBc", "x\0y"s, "\xFF\x80", " "};
    for (std::uint32_t address = 0; address < 5; ++address) {
        words.set(address, texts[address]);
    }
    EXPECT_EQ(words_of(words), std::vector<std::string>(texts.begin(), texts.end()));
}

TEST(WordStore, TakesAnEmptyViewWithoutCharacters) {
    word_store words = store_of(3000, "0");
    words.set(1, std::string_view());
    words.fill(1000, 2999, {std::string_view()});
    EXPECT_EQ(words[1], "");
    EXPECT_EQ(words[1000], "");
    EXPECT_EQ(words[999], "0");
}

TEST(WordStore, HoldsVeryLongTextsAmidShortOnes) {
    compared_stores stores;
    stores.resize(2000, "0");
    const std::string long_text(1000000, 'x');
    for (std::uint32_t address = 0; address < 2000; ++address) {
        stores.set(address, address % 500 == 7 ? long_text : std::to_string(address));
    }
    stores.set(7, "short now");
    stores.set(8, long_text + "y");
    stores.fill(600, 604, {long_text, "z"});
    expect_same_words(stores, 0, 1999);
}

TEST(WordStore, HighestAddressOfTheLargestStoreCanBeSet) {
    word_store words = store_of(largest_size, "0");
    words.set(largest_size - 1, "F");
    EXPECT_EQ(words[largest_size - 1], "F");
    EXPECT_EQ(words[largest_size - 2], "0");
    expect_run(words.run_at(0), 0, largest_size - 2, "0");
    expect_run(words.run_at(largest_size - 1), largest_size - 1, largest_size - 1, "F");
}

TEST(WordStore, HighestAddressesOfTheLargestStoreCanBeFilled) {
    word_store words = store_of(largest_size, "0");
    words.fill(largest_size - 5000, largest_size - 1, {"A", "B"});
    EXPECT_EQ(words[largest_size - 5001], "0");
    EXPECT_EQ(words[largest_size - 5000], "A");
    EXPECT_EQ(words[largest_size - 1], "B");
    words.fill(largest_size - 2, largest_size - 1, {"C"});
    expect_run(words.run_at(largest_size - 2), largest_size - 2, largest_size - 1, "C");
}

TEST(WordStore, WholeAddressRangeIsOneRun) {
    word_store words = store_of(largest_size, "0");
    expect_run(words.run_at(0), 0, largest_size - 1, "0");
    words.fill(0, largest_size - 1, {"1", "1", "1"});
    expect_run(words.run_at(4000000000), 4000000000, largest_size - 1, "1");
}

TEST(WordStore, FillRepeatsItsValuesFromTheFirstAddressOn) {
    word_store words = store_of(8, "0");
    words.fill(0, 7, {"1", "2"});
    EXPECT_EQ(words_of(words), (std::vector<std::string>{"1", "2", "1", "2", "1", "2", "1", "2"}));
    words.fill(1, 5, {"a", "b", "c"});
    EXPECT_EQ(words_of(words), (std::vector<std::string>{"1", "a", "b", "c", "a", "b", "1", "2"}));
}

TEST(WordStore, FillIgnoresValuesBeyondItsAddresses) {
    word_store words = store_of(4, "0");
    words.fill(1, 2, {"a", "b", "c", "d"});
    EXPECT_EQ(words_of(words), (std::vector<std::string>{"0", "a", "b", "0"}));
    words.fill(3, 3, {"x", "y"});
    EXPECT_EQ(words[3], "x");
}

TEST(WordStore, FillOverManyPagesKeepsThePhaseOfItsValues) {
    compared_stores stores;
    stores.resize(10000, "0");
    stores.fill(1000, 9000, {"1", "22", "333"});
    expect_same_words(stores, 0, 9999);
}

TEST(WordStore, FillUpToTheLastWordLeavesNothingForLaterGrowth) {
    compared_stores stores;
    stores.resize(1500, "0");
    stores.fill(100, 1499, {"1", "2"});
    stores.resize(5000, "3");
    expect_same_words(stores, 0, 4999);
}

TEST(WordStore, EditingOneWordOfASharedPatternLeavesTheOthers) {
    word_store words = store_of(2147483647, "0");
    words.fill(0, 2147483646, {"1", "2", "3"});
    words.set(1500000000, "x");
    EXPECT_EQ(words[1500000000], "x");
    EXPECT_EQ(words[1499999999], "3");
    EXPECT_EQ(words[1500000001], "2");
    EXPECT_EQ(words[1500000000 - 1536], "1");
    EXPECT_EQ(words[0], "1");
    EXPECT_EQ(words[2147483646], "1");
}

TEST(WordStore, RunsStopAtAWordOfAnotherText) {
    word_store words = store_of(100, "0");
    words.set(50, "1");
    expect_run(words.run_at(10), 10, 49, "0");
    expect_run(words.run_at(50), 50, 50, "1");
    expect_run(words.run_at(51), 51, 99, "0");
}

TEST(WordStore, RunsDistinguishTextsOfDifferentLength) {
    word_store words = store_of(3, "0");
    words.set(1, "00");
    expect_run(words.run_at(0), 0, 0, "0");
}

TEST(WordStore, RunsGoOnOverEqualTextsFromDifferentSources) {
    word_store words = store_of(5000000, "7");
    words.fill(1000, 3000, {"7"});
    words.set(4000, "7");
    for (std::uint32_t address = 5000; address < 8000; ++address) {
        words.set(address, "8");
    }
    for (std::uint32_t address = 8000; address-- > 5000;) {
        words.set(address, "7");
    }
    words.fill(3000000, 4999999, {"7", "7"});
    expect_run(words.run_at(0), 0, 4999999, "7");
}

TEST(WordStore, RunsInsideRepeatedValuesEndWhereTheValuesChange) {
    word_store words = store_of(3000000, "0");
    words.fill(1, 2999999, {"a", "a", "b"});
    expect_run(words.run_at(1), 1, 2, "a");
    expect_run(words.run_at(2), 2, 2, "a");
    expect_run(words.run_at(3), 3, 3, "b");
    expect_run(words.run_at(2999998), 2999998, 2999999, "a");
}

TEST(WordStore, MovedStoreTakesTheWordsAlong) {
    word_store words = store_of(3000, "0");
    words.set(1, "A");
    word_store taken = std::move(words);
    EXPECT_EQ(taken.size(), 3000U);
    EXPECT_EQ(taken[1], "A");
    taken.set(2, "B");
    word_store assigned = store_of(5, "x");
    assigned = std::move(taken);
    EXPECT_EQ(assigned.size(), 3000U);
    EXPECT_EQ(assigned[2], "B");
}

TEST(WordStore, StoreThatWasMovedFromIsEmptyAndCanBeUsedAgain) {
    word_store words = store_of(3000, "0");
    words.set(1, "A");
    const word_store taken = std::move(words);
    EXPECT_EQ(words.size(), 0U); // NOLINT(bugprone-use-after-move): tests the moved store
    words.resize(3000, "1");
    EXPECT_EQ(words[1], "1");
    EXPECT_EQ(taken[1], "A");
}

#if SIZE_MAX > UINT32_MAX // else no text has that length
TEST(WordStore, TextOfFourGibibytesIsRefusedAndChangesNothing) {
    constexpr std::size_t length = 4294967296;
    const std::unique_ptr<char, decltype(&std::free)> text(static_cast<char*>(std::calloc(length, 1)),
                                                           &std::free);
    if (text == nullptr) {
        GTEST_SKIP() << "no address space for the text";
    }
    const std::string_view too_long(text.get(), length);
    word_store words = store_of(5000, "0");
    EXPECT_THROW(words.set(1, too_long), std::length_error);
    EXPECT_THROW(words.resize(5001, too_long), std::length_error);
    EXPECT_THROW(words.fill(0, 4999, {too_long, "1"}), std::length_error);
    expect_run(words.run_at(0), 0, 4999, "0");
    for (std::uint32_t address = 0; address < 20; ++address) {
        words.set(address, std::string(address, 'x'));
    }
    EXPECT_THROW(words.set(1, too_long), std::length_error);
    EXPECT_EQ(words[1], "x");
}
#endif

/// Texts of one kind. The order of the kinds determines the forms of storage.
class random_texts {
public:
    explicit random_texts(std::mt19937& generator) : random(generator) {}

    std::string operator()() {
        if (random() % 200 == 0) {
            kind = random() % 6;
        }
        switch (kind) {
        case 0:
            return digits(2);
        case 1:
            return digits(1 + random() % 4);
        case 2:
            return digits(20);
        case 3:
            return random() % 50 == 0 ? digits(2000) : digits(random() % 40);
        case 4:
            return random() % 10 == 0 ? "1" : "0";
        default:
            return {"\0\xFF", random() % 3};
        }
    }

private:
    std::string digits(std::size_t length) {
        std::string text(length, '0');
        for (char& digit : text) {
            digit = static_cast<char>('0' + random() % 2);
        }
        return text;
    }

    std::mt19937& random;
    unsigned long kind = 0;
};

class random_changes {
public:
    random_changes(unsigned seed, std::vector<std::uint32_t> places_to_change)
        : random(seed),
          texts(random),
          places(std::move(places_to_change)) {}

    void change(compared_stores& stores) {
        const unsigned long kind = random() % 100;
        if (stores.model.size() == 0 || kind == 0) {
            stores.resize(random() % 4 == 0 ? near_a_place() : largest(), texts());
        } else if (kind < 12) {
            fill(stores);
        } else if (kind < 50) {
            stores.set(inside(stores, near_a_place()), texts());
        } else {
            set_some(stores);
        }
    }

    /// An address, usually near one of the places.
    std::uint32_t inside(const compared_stores& stores, std::uint32_t address) {
        return std::min(address, stores.model.size() - 1);
    }
    std::uint32_t near_a_place() {
        const std::uint64_t place = places[random() % places.size()] + std::uint64_t{random() % 1400};
        return static_cast<std::uint32_t>(std::min<std::uint64_t>(place, largest()));
    }

private:
    [[nodiscard]] std::uint32_t largest() const { return places.back(); }

    void fill(compared_stores& stores) {
        const std::uint32_t one = inside(stores, near_a_place());
        const std::uint64_t beyond = random() % 2 == 0 ? near_a_place() : std::uint64_t{one} + random() % 40;
        const std::uint32_t other =
            inside(stores, static_cast<std::uint32_t>(std::min<std::uint64_t>(beyond, largest())));
        std::vector<std::string> values(random() % 3 == 0 ? 1 + random() % 5 : 1);
        std::generate(values.begin(), values.end(), [this] { return texts(); });
        stores.fill(std::min(one, other), std::max(one, other), values);
    }

    void set_some(compared_stores& stores) {
        const std::uint32_t first = inside(stores, near_a_place());
        const std::uint64_t count = std::min<std::uint64_t>(random() % 300, stores.model.size() - first);
        for (std::uint32_t i = 0; i < count; ++i) {
            stores.set(first + i, texts());
        }
    }

    std::mt19937 random;
    random_texts texts;
    std::vector<std::uint32_t> places; ///< ascending; the last one is the largest size
};

TEST(WordStoreModel, HugeStoresBehaveLikeTheModel) {
    const unsigned last_seed = 20 + kvr_test::fewer(kvr_test::is_sanitized ? 3U : 12U);
    for (unsigned seed = 21; seed <= last_seed; ++seed) {
        random_changes changes(
            seed, {0, 1000, 32000, 65000, 2096000, 2097000, 134217000, 2147483000, 4294965000, 4294967295});
        compared_stores stores;
        for (int step = 0; step < 1500; ++step) {
            changes.change(stores);
            if (stores.model.size() == 0) {
                continue;
            }
            for (int probe = 0; probe < 5; ++probe) {
                const std::uint32_t address = changes.inside(stores, changes.near_a_place());
                ASSERT_NO_FATAL_FAILURE(expect_same_words(stores, address, address))
                    << "seed " << seed << " step " << step;
            }
        }
        for (const std::uint32_t place : {0U, 1000U, 32000U, 65000U, 2096000U, 134217000U, 2147483000U}) {
            for (std::uint32_t i = 0; i < 2500 && place + i < stores.model.size(); ++i) {
                ASSERT_EQ(stores.words[place + i], stores.model[place + i]);
            }
        }
    }
}

TEST(WordStore, TransformConvertsWhatStandsForManyWordsOnce) {
    kvr::word_store words;
    words.resize(4294967295U, "0");
    words.fill(10, 2000000009, {"1", "22", "333"});
    words.set(4000000000U, "4444");
    int conversions = 0;
    ASSERT_TRUE(words.transform([&conversions](std::string_view text, std::string& made) {
        ++conversions;
        made = "<" + std::string(text) + ">";
        return true;
    }));
    EXPECT_LT(conversions, 100000);
    EXPECT_EQ(words.size(), 4294967295U);
    EXPECT_EQ(words[9], "<0>");
    EXPECT_EQ(words[10], "<1>");
    EXPECT_EQ(words[11], "<22>");
    EXPECT_EQ(words[2000000009], "<22>");
    EXPECT_EQ(words[2000000010], "<0>");
    EXPECT_EQ(words[4000000000U], "<4444>");
    EXPECT_EQ(words[4294967294U], "<0>");
}

/// A store of words of all kinds: rows, lists, patterns, pieces.
void set_words_of_all_kinds(kvr::word_store& words, kvr_test::random_numbers& numbers, bool is_plain) {
    words.resize(20000, numbers() % 2 == 0 ? "" : "0A");
    words.fill(9000, 15000, {"11", "22"});
    for (std::uint32_t address = 3; address < 5000; ++address) {
        const bool is_odd = !is_plain && numbers() % 500 == 0;
        words.set(address, is_odd ? "b" : std::to_string(10 + numbers() % 90));
    }
    for (std::uint32_t address = 6000; address < 8000; ++address) {
        words.set(address, std::string(1 + numbers() % 40, 'C'));
    }
    words.set(17000, "D");
}

TEST(WordStore, TransformThatMayKeepRowsGivesTheSameWords) {
    const auto conversion = [](std::string_view text, std::string& made) {
        made = text == "b" ? "bb" : std::string(text);
        return true;
    };
    kvr_test::random_numbers numbers(7);
    int rows = 0;
    for (int i = 0; i < 20; ++i) {
        kvr::word_store words;
        set_words_of_all_kinds(words, numbers, i % 2 == 0);
        std::vector<std::string> expected;
        for (std::uint32_t address = 0; address < words.size(); ++address) {
            expected.emplace_back();
            conversion(words[address], expected.back());
        }
        ASSERT_TRUE(words.transform(conversion, [&rows](const kvr::word_row& row) {
            rows += row.length == 2 ? 1 : 0;
            return row.length == 2 && row.all().find('b') == std::string_view::npos;
        }));
        for (std::uint32_t address = 0; address < words.size(); ++address) {
            ASSERT_EQ(words[address], expected[address]) << address;
        }
    }
    EXPECT_GT(rows, 100);
}

TEST(WordStore, TransformWithoutARowTestConvertsEachWordOfARow) {
    kvr::word_store words;
    words.resize(1024, "");
    for (std::uint32_t address = 0; address < words.size(); ++address) {
        words.set(address, std::to_string(1000 + address));
    }
    ASSERT_EQ(words.row_at(0).count, 1024U);
    EXPECT_TRUE(words.transform([](std::string_view text, std::string& made) {
        made = text.substr(2);
        return true;
    }));
    EXPECT_EQ(words[0], "00");
    EXPECT_EQ(words[1023], "23");
}

TEST(WordStore, TransformThatMayKeepRowsAsksOnlyForTheOtherWords) {
    kvr::word_store words;
    words.resize(1024 * 100 + 50, "");
    for (std::uint32_t address = 0; address + 5 < words.size(); ++address) {
        words.set(address, std::to_string(10 + address % 90));
    }
    int conversions = 0;
    const auto conversion = [&conversions](std::string_view text, std::string& made) {
        ++conversions;
        made = text;
        return true;
    };
    EXPECT_TRUE(words.transform(conversion, [](const kvr::word_row& row) { return row.length == 2; }));
    EXPECT_LT(conversions, 100);
    EXPECT_EQ(words[1000], "20");
    EXPECT_EQ(words[words.size() - 1], "");
}

TEST(WordStore, TransformThatFailsWhileItKeepsRowsChangesNothing) {
    kvr::word_store words;
    words.resize(5000, "");
    for (std::uint32_t address = 0; address < 5000; ++address) {
        words.set(address, address == 4500 ? "bad" : std::to_string(10 + address % 90));
    }
    EXPECT_FALSE(words.transform(
        [](std::string_view text, std::string& made) {
            made = text;
            return text != "bad";
        },
        [](const kvr::word_row& row) { return row.length == 2; }));
    EXPECT_EQ(words[0], "10");
    EXPECT_EQ(words[4500], "bad");
    EXPECT_EQ(words[4999], std::to_string(10 + 4999 % 90));
}

TEST(WordStore, TransformThatFailsChangesNothing) {
    for (const char* refused : {"0", "22", "5"}) {
        kvr::word_store words;
        words.resize(100000, "0");
        words.fill(10, 90009, {"1", "22"});
        words.set(95000, "5");
        EXPECT_FALSE(words.transform([refused](std::string_view text, std::string& made) {
            made = "x";
            return text != refused;
        }));
        EXPECT_EQ(words[9], "0");
        EXPECT_EQ(words[10], "1");
        EXPECT_EQ(words[11], "22");
        EXPECT_EQ(words[95000], "5");
    }
}

TEST(WordStoreModel, SettingEveryWordInAnyOrderGivesTheSameWords) {
    std::mt19937 random(3);
    std::vector<std::uint32_t> addresses(70000);
    for (std::uint32_t i = 0; i < addresses.size(); ++i) {
        addresses[i] = i;
    }
    for (int order = 0; order < 3; ++order) {
        for (const std::uint32_t longest : {2U, 3U, 20U}) {
            word_store words = store_of(70000, "0");
            const auto text_of = [&](std::uint32_t address) {
                const std::string text = std::to_string(address * 2654435761U) + std::string(20, 'x');
                return text.substr(0, longest == 3 ? 1 + address % 3 : longest);
            };
            for (const std::uint32_t address : addresses) {
                words.set(address, text_of(address));
            }
            for (std::uint32_t address = 0; address < 70000; ++address) {
                ASSERT_EQ(words[address], text_of(address)) << address;
            }
        }
        if (order == 0) {
            std::reverse(addresses.begin(), addresses.end());
        } else {
            std::shuffle(addresses.begin(), addresses.end(), random);
        }
    }
}

std::deque<std::string> all_words(const word_store& words) {
    std::deque<std::string> copy;
    for (std::uint32_t address = 0; address < words.size(); ++address) {
        copy.emplace_back(words[address]);
    }
    return copy;
}

/// Makes the allocations of a call fail one after another and calls @p check after each failure. Finally,
/// makes the call without a failure. Returns the number of failures.
template <class Call, class Check>
std::size_t call_with_failures(const Call& call, const Check& check) {
    for (std::size_t number = 1;; ++number) {
        const failing_allocation failing(number);
        try {
            call();
        } catch (const std::bad_alloc&) {
            check();
            continue;
        }
        if (!failing_allocation::happened()) {
            return number - 1;
        }
        // The call has recovered from the failure and succeeded; no further allocation fails.
        return number;
    }
}

class WordStoreFailures : public testing::Test {
protected:
    void resize(std::uint32_t size, const std::string& fill) {
        failures += call_with_failures([&] { words.resize(size, fill); }, [&] { expect_as_before(); });
        model.resize(size, fill);
        expect_as_before();
    }

    void set(std::uint32_t address, const std::string& text) {
        failures += call_with_failures([&] { words.set(address, text); }, [&] { expect_as_before(); });
        model[address] = text;
        expect_as_before();
    }

    void fill(std::uint32_t first, std::uint32_t last, const std::vector<std::string>& values) {
        std::deque<std::string> after = model;
        for (std::uint32_t address = first; address <= last; ++address) {
            after[address] = values[(address - first) % values.size()];
        }
        failures += call_with_failures([&] { words.fill(first, last, views_of(values)); },
                                       [&] { expect_between(after); });
        model = after;
        expect_as_before();
    }

    void expect_as_before() { ASSERT_EQ(all_words(words), model); }

    /// Each word has the previous text or the text from @p after.
    void expect_between(const std::deque<std::string>& after) {
        ASSERT_EQ(words.size(), model.size());
        for (std::uint32_t address = 0; address < words.size(); ++address) {
            ASSERT_TRUE(words[address] == model[address] || words[address] == after[address]) << address;
        }
    }

    word_store words;
    std::deque<std::string> model;
    std::size_t failures = 0;
};

TEST_F(WordStoreFailures, LeaveTheWordsAsTheyWereWhileTheStoreIsResized) {
    resize(10, "0");
    resize(3000, "1");
    resize(500, "");
    resize(4000, "twelve chars");
    resize(0, "");
    resize(5, "2");
    EXPECT_GT(failures, 5U);
}

TEST_F(WordStoreFailures, LeaveTheWordsAsTheyWereWhileWordsOfOneLengthAreSet) {
    resize(1100, "0");
    for (std::uint32_t address = 0; address < 1100; ++address) {
        set(address, address % 7 == 0 ? "AB" : "CD");
    }
    EXPECT_GT(failures, 20U);
}

TEST_F(WordStoreFailures, LeaveTheWordsAsTheyWereWhileWordsOfManyLengthsAreSet) {
    resize(1100, "0");
    for (std::uint32_t address = 0; address < 900; ++address) {
        set(address, std::string(address % 5 + address / 150, 'x'));
    }
    for (std::uint32_t address = 0; address < 600; ++address) {
        set(address, std::string(address % 90, 'y'));
    }
    EXPECT_GT(failures, 40U);
}

TEST_F(WordStoreFailures, LeaveTheWordsAsTheyWereWhilePackedWordsAreReplaced) {
    resize(1024, "0");
    fill(0, 1023, {"A", "B"});
    for (std::uint32_t address = 0; address < 1024; ++address) {
        set(address, address % 3 == 0 ? "C" : "D");
    }
    for (const char* text : {"E", "", "long", "a text that is too long for its place"}) {
        set(500, text);
    }
    EXPECT_GT(failures, 20U);
}

TEST_F(WordStoreFailures, LeaveOldOrNewWordsWhileARangeIsFilled) {
    resize(5000, "0");
    fill(10, 4500, {"1"});
    fill(20, 4400, {"1", "2", "3"});
    for (std::uint32_t address = 100; address < 600; address += 20) {
        fill(address, address + 9, {std::to_string(address), "x"});
    }
    fill(90, 140, {"a long text that does not suit the others", ""});
    fill(0, 4999, {"9"});
    EXPECT_GT(failures, 40U);
}

TEST_F(WordStoreFailures, LeaveTheWordsAsTheyWereWhileAPageBecomesUniform) {
    resize(2048, "0");
    for (std::uint32_t address = 0; address < 1024; ++address) {
        set(address * 5 % 1024, "A");
    }
    EXPECT_GT(failures, 10U);
    expect_run(words.run_at(0), 0, 1023, "A");
}

TEST(WordStore, TransformThatFailsInACycleChangesNothing) {
    kvr::word_store words;
    words.resize(100000, "0");
    words.fill(10, 90000, {"1", "22"});
    const auto refuses_22 = [](std::string_view text, std::string& made) {
        made = "x";
        return text != "22";
    };
    EXPECT_FALSE(words.transform(refuses_22));
    EXPECT_FALSE(words.transform(refuses_22, [](const kvr::word_row& /*row*/) { return true; }));
    EXPECT_EQ(words[0], "0");
    EXPECT_EQ(words[10], "1");
    EXPECT_EQ(words[11], "22");
}

TEST(WordStore, TransformThatFailsForEveryWordChangesNothing) {
    kvr::word_store words;
    words.resize(100000, "0");
    EXPECT_FALSE(words.transform([](std::string_view /*text*/, std::string& /*made*/) { return false; },
                                 [](const kvr::word_row& /*row*/) { return true; }));
    EXPECT_EQ(words[99999], "0");
}

TEST(WordStore, APageOfLongWordsIsKeptAsTheyAre) {
    constexpr std::size_t length = 300;
    kvr::word_store words;
    words.resize(kvr::page_words, "0");
    auto texts = std::make_shared<char[]>(kvr::page_words * length);
    for (std::size_t at = 0; at < kvr::page_words * length; ++at) {
        texts.get()[at] = static_cast<char>('A' + at / length % 26);
    }
    words.set_page(0, texts, length);
    EXPECT_EQ(words[0], std::string(length, 'A'));
    EXPECT_EQ(words[27], std::string(length, 'B'));
    EXPECT_EQ(words[kvr::page_words - 1],
              std::string(length, static_cast<char>('A' + (kvr::page_words - 1) % 26)));
}

// The number of the far page is the address of the other page multiplied by the page size instead of divided.
TEST(WordStore, AWordFarAfterAPageThatWasSetGoesToAPageOfItsOwn) {
    constexpr std::size_t length = 4;
    kvr::word_store words;
    words.resize(4294967295, "0");
    auto texts = std::make_shared<char[]>(kvr::page_words * length);
    for (std::uint32_t word = 0; word < kvr::page_words; ++word) {
        std::memcpy(texts.get() + word * length, std::to_string(1000 + word).data(), length);
    }
    words.set_page(kvr::page_words, texts, length);
    const std::uint32_t far = kvr::page_words * kvr::page_words * kvr::page_words;
    words.set(far, "far");
    EXPECT_EQ(words[kvr::page_words], "1000");
    EXPECT_EQ(words[far], "far");
}

} // namespace
