#include "kvrimage/formats/memory_file.h"
#include "kvrimage/formats/registry.h"
#include "tests/kvrimage/rounds.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>
#include <random>
#include <string>
#include <vector>

namespace kvrimage {

namespace {

/// The permitted error of written_size(), without the lines around the words: in hexadecimal, and in radixes
/// in which numbers of one memory have different numbers of digits.
constexpr double in_hexadecimal = 0.01;
constexpr double in_any_radix = 0.08;
constexpr double frame = 250;

word random_word(std::mt19937& random, std::uint32_t width) {
    return word::of(random() % (std::uint64_t{1} << width), width);
}

memory_image different_words(std::uint32_t width) {
    memory_image image(width, 3000);
    std::mt19937 random(width);
    for (std::uint64_t address = 0; address < image.depth(); ++address) {
        image.set(address, random_word(random, width));
    }
    return image;
}

memory_image scattered_words(std::uint32_t width) {
    memory_image image(width, 200000);
    std::mt19937 random(width);
    for (int count = 0; count < 1000; ++count) {
        image.set(random() % image.depth(), random_word(random, width));
    }
    return image;
}

memory_image runs_of_words(std::uint32_t width) {
    memory_image image(width, 20000);
    std::mt19937 random(width);
    for (std::uint64_t first = 5; first + 70 <= image.depth(); first += 80) {
        image.fill({first, first + 69}, std::vector{random_word(random, width)});
    }
    return image;
}

memory_image cycles_of_words(std::uint32_t width) {
    memory_image image(width, 20000);
    std::mt19937 random(width);
    for (std::uint64_t first = 0; first + 900 <= image.depth(); first += 1000) {
        std::vector<word> words;
        for (int count = 0; count < 6; ++count) {
            words.push_back(random_word(random, width));
        }
        image.fill({first, first + 899}, words);
    }
    return image;
}

struct memory_of_kind {
    const char* kind;
    memory_image image;
};

/// Two of the widths suffice if code is counted; with sanitizers, the width that every format supports.
const std::vector<std::uint32_t> widths = [] {
    if (sweep_step > 1) {
        return std::vector<std::uint32_t>{8};
    }
    return rounds(4) == 4 ? std::vector<std::uint32_t>{1, 8, 13, 32} : std::vector<std::uint32_t>{8, 13};
}();

/// Memories of every kind and of several widths.
const std::vector<memory_of_kind>& memories() {
    static const std::vector<memory_of_kind> all = [] {
        std::vector<memory_of_kind> made;
        for (const std::uint32_t width : widths) {
            made.push_back({"different words", different_words(width)});
            made.push_back({"scattered words", scattered_words(width)});
            made.push_back({"runs", runs_of_words(width)});
            made.push_back({"cycles", cycles_of_words(width)});
        }
        return made;
    }();
    return all;
}

/// The writable formats of the library, without formats that tests add.
const std::vector<const format*>& written_formats() {
    static const std::vector<const format*> found = [] {
        std::vector<const format*> written;
        std::ranges::copy_if(formats(), std::back_inserter(written), [](const format* as) {
            return as->write != nullptr && as->written_size != nullptr;
        });
        return written;
    }();
    return found;
}

[[maybe_unused]] const bool known_before_any_test = !written_formats().empty();

void expect_close_estimate(const memory_image& image, const write_options& options, double tolerance,
                           const char* kind) {
    const auto written = static_cast<double>(to_text(image, options).size());
    const auto estimated = static_cast<double>(options.as->written_size(image, options));
    ASSERT_GT(written, 10 * frame) << options.as->title << ", " << kind;
    EXPECT_GE(estimated + frame, written) << options.as->title << ", " << kind;
    EXPECT_NEAR(estimated, written, written * tolerance + frame)
        << options.as->title << ", " << kind << " of " << image.width() << " bits";
}

/// Checks each kind of memory that the format can hold.
void expect_close_estimates(write_options options, double tolerance) {
    options.order =
        options.as->counts == address_unit::byte ? std::optional(byte_order::little) : std::nullopt;
    std::size_t held = 0;
    for (const auto& [kind, image] : memories()) {
        if (can_write(image, options).empty()) {
            ++held;
            expect_close_estimate(image, options, tolerance, kind);
        }
    }
    EXPECT_GE(held, widths.size()) << options.as->title;
}

TEST(WrittenSize, IsCloseToWhatIsWrittenInEveryFormat) {
    KVR_NOT_IN_A_SLOW_PROGRAM();
    for (const format* as : written_formats()) {
        expect_close_estimates({.as = as}, in_hexadecimal);
    }
}

TEST(WrittenSize, IsCloseInEveryRadix) {
    KVR_NOT_IN_A_SLOW_PROGRAM();
    const memory_image probe = different_words(8);
    for (const format* as : written_formats()) {
        for (const radix digits : {radix::bin, radix::oct, radix::dec, radix::uns, radix::hex}) {
            const write_options options{.as = as, .address_radix = digits, .data_radix = digits};
            if (as->states_radix && can_write(probe, options).empty()) {
                SCOPED_TRACE(title_of(digits));
                expect_close_estimates(options, in_any_radix);
            }
        }
    }
}

TEST(WrittenSize, IsCloseWithoutRuns) {
    for (const format* as : written_formats()) {
        if (as->holds_ranges) {
            expect_close_estimates({.as = as, .data_radix = radix::uns, .runs = false}, in_hexadecimal);
        }
    }
}

} // namespace

} // namespace kvrimage
