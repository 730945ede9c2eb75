// Writes memories to files of every registered format, and of every two of them in sequence, and reads the
// same words again. A registered format is included automatically.

#include "kvrimage/formats/memory_file.h"
#include "kvrimage/formats/registry.h"
#include "tests/kvrimage/formats/random_images.h"
#include "tests/kvrimage/rounds.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <optional>
#include <random>
#include <string>
#include <vector>

namespace kvrimage_tests {

namespace {

using namespace kvrimage;

constexpr std::uint32_t widest = 300;
constexpr std::uint64_t most_words = 40;

/// The formats of the library, without formats that tests add.
const std::vector<const format*>& formats_both_ways() {
    static const std::vector<const format*> found = [] {
        std::vector<const format*> both;
        std::ranges::copy_if(formats(), std::back_inserter(both),
                             [](const format* as) { return as->read != nullptr && as->write != nullptr; });
        return both;
    }();
    return found;
}

[[maybe_unused]] const bool listed_before_any_test = !formats_both_ways().empty();

/// True if @p as declares that it cannot hold a feature of @p image.
bool is_beyond(const format& as, const memory_image& image, const image_traits& traits) {
    return (traits.dont_care && !as.holds_dont_care) || traits.base ||
           (traits.gaps && !as.holds_unset && image.count_set() != image.depth());
}

/// A form in which @p image can be written: the random one, otherwise the usual one. No value if the format
/// cannot hold the memory.
std::optional<file_form> writable_form(std::mt19937& random, const format& as, const memory_image& image,
                                       const image_traits& traits) {
    file_form form = random_form(random, as, image);
    if (can_write(image, form.to).empty()) {
        return form;
    }
    form = usual_form(random, as, image);
    const std::vector<diagnostic> obstacles = can_write(image, form.to);
    if (obstacles.empty()) {
        return form;
    }
    EXPECT_TRUE(is_beyond(as, image, traits))
        << as.title << " refuses words of " << image.width() << " bits: " << obstacles.front().message;
    return std::nullopt;
}

/// Writes @p image to a file of @p as and reads it; no value if the format cannot hold it.
std::optional<memory_image> through_file(std::mt19937& random, const format& as, const memory_image& image,
                                         const image_traits& traits) {
    const auto form = writable_form(random, as, image, traits);
    if (!form) {
        return std::nullopt;
    }
    const std::string text = to_text(image, form->to);
    read_result again = parse(text, form->back);
    EXPECT_TRUE(again.image.has_value()) << as.title << ": " << reasons_of(again) << text.substr(0, 2000);
    if (again.image) {
        EXPECT_TRUE(*again.image == moved_to_zero(image))
            << as.title << ", words of " << image.width() << " bits\n"
            << text.substr(0, 2000);
    }
    return std::move(again.image);
}

/// Counts for each format how often it held a kind of memory.
struct trips {
    std::vector<int> single = std::vector<int>(formats_both_ways().size());
    std::vector<int> pairs = std::vector<int>(single.size() * single.size());
};

void go_through_all_pairs(std::mt19937& random, const memory_image& image, const image_traits& traits,
                          trips& done) {
    const std::vector<const format*>& all = formats_both_ways();
    const memory_image moved = moved_to_zero(image);
    image_traits at_zero = traits;
    at_zero.base = false;
    for (std::size_t first = 0; first < all.size() && !testing::Test::HasFailure(); ++first) {
        const auto between = through_file(random, *all[first], image, traits);
        done.single[first] += between ? 1 : 0;
        for (std::size_t second = 0; between && second < all.size(); ++second) {
            SCOPED_TRACE(std::string(all[first]->title) + " before");
            const auto last = through_file(random, *all[second], *between, at_zero);
            done.pairs[first * all.size() + second] += last ? 1 : 0;
            EXPECT_TRUE(!last || *last == moved);
        }
    }
}

trips rounds_of(const image_traits& traits, unsigned seed, int count) {
    std::mt19937 random(seed);
    trips done;
    for (int round = 0; round < count && !testing::Test::HasFailure(); ++round) {
        // Many rounds cover every width; a few rounds cover odd widths and whole bytes.
        const std::uint32_t width = 1 + (static_cast<std::uint32_t>(round) * 77 + seed) % widest;
        go_through_all_pairs(random, random_image(random, width, most_words, traits), traits, done);
    }
    return done;
}

TEST(RoundTrips, FullMemoriesGoThroughEveryTwoFormats) {
    const int count = rounds(12);
    const trips done = rounds_of({}, 1, count);
    EXPECT_EQ(done.pairs, std::vector<int>(done.pairs.size(), count));
}

TEST(RoundTrips, SparseMemoriesGoThroughFormatsThatHoldThem) {
    const trips done = rounds_of({.gaps = true}, 2, rounds(12));
    for (std::size_t index = 0; index < done.single.size(); ++index) {
        EXPECT_EQ(done.single[index] == rounds(12), formats_both_ways()[index]->holds_unset)
            << formats_both_ways()[index]->title;
    }
}

TEST(RoundTrips, DontCareDigitsGoThroughFormatsThatHoldThem) {
    const trips done = rounds_of({.gaps = true, .dont_care = true}, 3, rounds(12));
    for (std::size_t index = 0; index < done.single.size(); ++index) {
        EXPECT_EQ(done.single[index] == rounds(12), formats_both_ways()[index]->holds_dont_care)
            << formats_both_ways()[index]->title;
    }
}

TEST(RoundTrips, AFirstAddressBecomesWordZero) {
    const trips done = rounds_of({.gaps = true, .base = true}, 4, rounds(12));
    EXPECT_GE(std::ranges::count(done.single, rounds(12)), 7);
}

} // namespace

} // namespace kvrimage_tests
