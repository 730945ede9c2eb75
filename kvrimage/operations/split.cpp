#include "kvrimage/operations/split.h"

#include "kvrimage/image/byte_words.h"
#include "kvrimage/image/image_words.h"
#include "kvrimage/image/word_copy.h"
#include "kvrimage/image/word_runs.h"
#include "kvrimage/image/word_text.h"
#include "kvrimage/operations/bit_block.h"
#include "kvrimage/operations/byte_parts.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <numeric>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

namespace kvrimage {

namespace {

using word_texts = std::vector<std::string>;

std::vector<std::string_view> views_of(const word_texts& texts) {
    return {texts.begin(), texts.end()};
}

void require_whole_parts(const memory_image& image, std::uint64_t count, std::string_view parts) {
    if (count == 0) {
        throw std::invalid_argument(fmt::format("0 {}", parts));
    }
    if (image.depth() % count != 0) {
        throw std::invalid_argument(fmt::format("{} words are not {} {} of one length: {} left over",
                                                image.depth(), count, parts, image.depth() % count));
    }
}

std::vector<memory_image> empty_parts(const memory_image& image, std::uint64_t count) {
    std::vector<memory_image> parts;
    std::fill_n(std::back_inserter(parts), count,
                memory_image(image.width(), image.depth() / count, image.base()));
    return parts;
}

class lane_splitter {
public:
    lane_splitter(const memory_image& split, std::uint32_t width_of_lane)
        : image(split),
          lane_width(width_of_lane),
          digits(most_characters_of_word(radix::hex, width_of_lane)),
          lanes(split.width() / width_of_lane, memory_image(width_of_lane, split.depth(), split.base())),
          texts(lanes.size()) {}

    std::uint64_t visit_row(const kvr::word_row& row, std::uint64_t offset) {
        const bool has_digits = row.length == most_characters_of_word(radix::hex, image.width());
        if (!has_digits || !cut_numbers(row)) {
            for (std::uint32_t index = 0; index < row.count; ++index) {
                visit_run({offset + index, offset + index, row[index]});
            }
            return row.count;
        }
        for (std::size_t lane = 0; lane < lanes.size(); ++lane) {
            lanes[lane].words().set_side_by_side(offset, texts[lane], digits);
        }
        return row.count;
    }
    std::uint64_t visit_cycle(const text_cycle& cycle) {
        std::vector<word_texts> patterns(lanes.size());
        for (std::uint64_t offset = cycle.first; offset < cycle.first + cycle.period; ++offset) {
            cut(image.words()[offset]);
            for (std::size_t lane = 0; lane < lanes.size(); ++lane) {
                patterns[lane].push_back(texts[lane]);
            }
        }
        for (std::size_t lane = 0; lane < lanes.size(); ++lane) {
            lanes[lane].words().fill(cycle.first, cycle.last, views_of(patterns[lane]));
        }
        return cycle.length();
    }
    void visit_run(const text_run& run) {
        cut(run.text);
        for (std::size_t lane = 0; lane < lanes.size(); ++lane) {
            lanes[lane].words().fill(run.first, run.last, {texts[lane]});
        }
    }

    [[nodiscard]] std::vector<memory_image> result() { return std::move(lanes); }

private:
    /// Sets `texts` to the words of each lane. Returns false if a word of @p row has a don't-care digit;
    /// `texts` is then unspecified.
    bool cut_numbers(const kvr::word_row& row) {
        numbers.clear(std::uint64_t{row.count} * image.width());
        for (std::uint32_t index = 0; index < row.count; ++index) {
            if (!numbers.put(std::uint64_t{index} * image.width(), row[index])) {
                return false;
            }
        }
        for (std::size_t lane = 0; lane < lanes.size(); ++lane) {
            texts[lane].resize(row.count * digits);
            for (std::uint32_t index = 0; index < row.count; ++index) {
                numbers.write_to(texts[lane].data() + index * digits,
                                 std::uint64_t{index} * image.width() + lane * lane_width, lane_width);
            }
        }
        return true;
    }
    /// Sets `texts` to the parts of @p word.
    void cut(std::string_view word) {
        static_cast<void>(show_word(word, radix::bin, image.width(), bits));
        for (std::size_t lane = 0; lane < lanes.size(); ++lane) {
            const std::string_view part =
                std::string_view(bits).substr(bits.size() - (lane + 1) * lane_width, lane_width);
            static_cast<void>(make_word(part, radix::bin, lane_width, texts[lane]));
        }
    }

    const memory_image& image;
    std::uint32_t lane_width;
    std::size_t digits; ///< digits of a word of a lane
    std::vector<memory_image> lanes;
    word_texts texts; ///< for each lane
    bit_block numbers;
    std::string bits;
};

class bank_splitter {
public:
    bank_splitter(const memory_image& split, std::uint64_t count)
        : image(split),
          banks(empty_parts(split, count)) {}

    std::uint64_t visit_row(const kvr::word_row& row, std::uint64_t offset) {
        for (std::uint64_t index = 0; index < std::min<std::uint64_t>(banks.size(), row.count); ++index) {
            texts.clear();
            for (std::uint64_t each = index; each < row.count; each += banks.size()) {
                texts += row[static_cast<std::uint32_t>(each)];
            }
            words_of(offset + index).set_side_by_side((offset + index) / banks.size(), texts, row.length);
        }
        return row.count;
    }
    std::uint64_t visit_cycle(const text_cycle& cycle) {
        const std::uint64_t period = cycle.period / std::gcd<std::uint64_t>(cycle.period, banks.size());
        fill_banks(cycle.first, cycle.last, period);
        return cycle.length();
    }
    void visit_run(const text_run& run) { fill_banks(run.first, run.last, 1); }

    [[nodiscard]] std::vector<memory_image> result() { return std::move(banks); }

private:
    [[nodiscard]] image_words& words_of(std::uint64_t offset) { return banks[offset % banks.size()].words(); }

    /// Fills the words from @p first to @p last in the banks. The words of each bank repeat after @p period
    /// words.
    void fill_banks(std::uint64_t first, std::uint64_t last, std::uint64_t period) {
        const std::uint64_t end = std::min(first + banks.size(), last + 1);
        for (std::uint64_t offset = first; offset < end; ++offset) {
            const std::uint64_t count = (last - offset) / banks.size() + 1;
            std::vector<std::string_view> pattern;
            for (std::uint64_t each = 0; each < std::min(period, count); ++each) {
                pattern.push_back(image.words()[offset + each * banks.size()]);
            }
            const std::uint64_t place = offset / banks.size();
            words_of(offset).fill(place, place + count - 1, pattern);
        }
    }

    const memory_image& image;
    std::vector<memory_image> banks;
    std::string texts;
};

template <class Splitter>
std::vector<memory_image> split_by(Splitter&& splitter, const memory_image& image) {
    for_each_row_cycle_or_run(
        image.words(),
        [&](const kvr::word_row& row, std::uint64_t offset) { return splitter.visit_row(row, offset); },
        [&](const text_cycle& cycle) { return splitter.visit_cycle(cycle); },
        [&](const text_run& run) { splitter.visit_run(run); });
    return splitter.result();
}

} // namespace

std::vector<memory_image> split_lanes(const memory_image& image, std::uint32_t bits) {
    if (bits == 0 || image.width() % bits != 0) {
        throw std::invalid_argument(
            fmt::format("words of {} bits cannot be split into lanes of {} bits", image.width(), bits));
    }
    if (auto lanes = lanes_of_bytes(image, bits)) {
        return std::move(*lanes);
    }
    return split_by(lane_splitter(image, bits), image);
}

std::vector<memory_image> split_banks(const memory_image& image, std::uint64_t count) {
    require_whole_parts(image, count, "banks");
    if (count == 1) {
        return {image};
    }
    if (auto banks = banks_of_bytes(image, count)) {
        return std::move(*banks);
    }
    return split_by(bank_splitter(image, count), image);
}

std::vector<memory_image> split_blocks(const memory_image& image, std::uint64_t count) {
    require_whole_parts(image, count, "blocks");
    std::vector<memory_image> blocks = empty_parts(image, count);
    const std::uint64_t length = image.depth() / count;
    for (std::uint64_t index = 0; index < count; ++index) {
        const std::uint64_t first = index * length;
        if (const byte_words* const bytes = image.words().bytes()) {
            blocks[index].words() = image_words(length, bytes->part(first, first + length - 1));
        } else {
            copy_words(image.words(), first, first + length - 1, blocks[index].words(), 0);
        }
    }
    return blocks;
}

} // namespace kvrimage
