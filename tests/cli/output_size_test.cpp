#include "kvr/memory/io/output_file.h"
#include "tools/kvrmem/memory/memory_output.h"
#include "tools/kvrmem/memory/output_size.h"
#include "tools/kvrmem/memory/word_text.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <random>
#include <string>
#include <string_view>
#include <unistd.h>
#include <vector>

namespace kvrmem {

namespace {

/// By how much estimated_output_size() may be wrong: one part in a hundred, and the lines around the words.
constexpr double tolerance = 0.01;
constexpr double frame = 200;

std::string random_word(std::mt19937& random, std::uint32_t width) {
    std::string word;
    const std::uint64_t value = random() % (std::uint64_t{1} << width);
    EXPECT_FALSE(make_word(std::to_string(value), RADIX_UNS, width, word));
    return word;
}

memory_image image_of(std::uint32_t width, std::uint32_t depth) {
    memory_image image;
    image.width = width;
    image.depth = depth;
    image.words.resize(depth, "");
    return image;
}

memory_image different_words(std::uint32_t width) {
    memory_image image = image_of(width, 3000);
    std::mt19937 random(width);
    for (std::uint32_t address = 0; address < image.depth; ++address) {
        image.words.fill(address, address, {random_word(random, width)});
    }
    return image;
}

memory_image scattered_words(std::uint32_t width) {
    memory_image image = image_of(width, 200000);
    std::mt19937 random(width);
    for (int count = 0; count < 1000; ++count) {
        const auto address = static_cast<std::uint32_t>(random() % image.depth);
        image.words.fill(address, address, {random_word(random, width)});
    }
    return image;
}

memory_image runs_of_words(std::uint32_t width) {
    memory_image image = image_of(width, 20000);
    std::mt19937 random(width);
    for (std::uint32_t first = 5; first + 70 <= image.depth; first += 80) {
        image.words.fill(first, first + 69, {random_word(random, width)});
    }
    return image;
}

memory_image cycles_of_words(std::uint32_t width) {
    memory_image image = image_of(width, 20000);
    std::mt19937 random(width);
    for (std::uint32_t first = 0; first + 900 <= image.depth; first += 1000) {
        std::vector<std::string> words;
        for (int count = 0; count < 6; ++count) {
            words.push_back(random_word(random, width));
        }
        image.words.fill(first, first + 899, std::vector<std::string_view>(words.begin(), words.end()));
    }
    return image;
}

std::uint64_t written_size(const memory_image& image, const output_layout& layout) {
    std::FILE* const file = std::tmpfile();
    EXPECT_NE(file, nullptr);
    kvr::output_file output(fdopen(dup(fileno(file)), "w"));
    write_memory(image, layout, output);
    EXPECT_TRUE(output.close());
    EXPECT_EQ(std::fseek(file, 0, SEEK_END), 0);
    const long size = std::ftell(file);
    EXPECT_EQ(std::fclose(file), 0);
    return static_cast<std::uint64_t>(size);
}

struct image_kind {
    const char* name;
    memory_image (*make)(std::uint32_t width);
};

constexpr image_kind kinds[] = {{"different words", different_words},
                                {"scattered words", scattered_words},
                                {"runs", runs_of_words},
                                {"cycles", cycles_of_words}};

void expect_close_estimates(const output_layout& layout) {
    for (const image_kind& kind : kinds) {
        for (const std::uint32_t width : {1U, 8U, 13U, 32U}) {
            const memory_image image = kind.make(width);
            const auto written = static_cast<double>(written_size(image, layout));
            const auto estimated = static_cast<double>(estimated_output_size(image, layout));
            ASSERT_GT(written, 10 * frame);
            EXPECT_NEAR(estimated, written, written * tolerance + frame)
                << kind.name << " of " << width << " bits";
        }
    }
}

TEST(EstimatedOutputSize, IsCloseToTheMifWritten) {
    for (const KVR_MEMORY_RADIXES radix : {RADIX_BIN, RADIX_HEX, RADIX_DEC, RADIX_UNS}) {
        SCOPED_TRACE(radix);
        expect_close_estimates({FILE_TYPE_MIF, radix, radix, true});
    }
}

TEST(EstimatedOutputSize, IsCloseToTheMifWithoutRunsWritten) {
    expect_close_estimates({FILE_TYPE_MIF, RADIX_HEX, RADIX_UNS, false});
}

TEST(EstimatedOutputSize, IsCloseToTheIntelHexWritten) {
    expect_close_estimates({FILE_TYPE_HEX});
}

TEST(EstimatedOutputSize, IsCloseToTheRifWritten) {
    expect_close_estimates({FILE_TYPE_RIF});
}

} // namespace

} // namespace kvrmem
