#include "kvrimage/formats/memory_file.h"
#include "kvrimage/formats/registry.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace kvrimage {

namespace {

/// By how much written_size() may be wrong, beside the lines around the words: in hexadecimal, and in radixes
/// in which numbers of one memory have different numbers of digits.
constexpr double in_hexadecimal = 0.01;
constexpr double in_any_radix = 0.06;
constexpr double frame = 200;

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

struct image_kind {
    const char* name;
    memory_image (*make)(std::uint32_t width);
};

constexpr image_kind kinds[] = {{"different words", different_words},
                                {"scattered words", scattered_words},
                                {"runs", runs_of_words},
                                {"cycles", cycles_of_words}};

void expect_close_estimates(const write_options& options, double tolerance) {
    for (const image_kind& kind : kinds) {
        for (const std::uint32_t width : {1U, 8U, 13U, 32U}) {
            const memory_image image = kind.make(width);
            const auto written = static_cast<double>(to_text(image, options).size());
            const auto estimated = static_cast<double>(options.as->written_size(image, options));
            ASSERT_GT(written, 10 * frame);
            EXPECT_GE(estimated + frame, written) << options.as->title << ", " << kind.name;
            EXPECT_NEAR(estimated, written, written * tolerance + frame)
                << options.as->title << ", " << kind.name << " of " << width << " bits";
        }
    }
}

constexpr const char* ids[] = {"mif", "hex", "rif"};

TEST(WrittenSize, IsCloseToWhatIsWrittenInEveryFormat) {
    for (const char* id : ids) {
        expect_close_estimates({.as = format_of_name(id)}, in_hexadecimal);
    }
}

TEST(WrittenSize, IsCloseInEveryRadix) {
    for (const char* id : ids) {
        for (const radix digits : {radix::bin, radix::oct, radix::dec, radix::uns, radix::hex}) {
            SCOPED_TRACE(title_of(digits));
            expect_close_estimates({.as = format_of_name(id), .address_radix = digits, .data_radix = digits},
                                   in_any_radix);
        }
    }
}

TEST(WrittenSize, IsCloseWithoutRuns) {
    for (const char* id : ids) {
        expect_close_estimates({.as = format_of_name(id), .data_radix = radix::uns, .runs = false},
                               in_hexadecimal);
    }
}

} // namespace

} // namespace kvrimage
