#include "kvrimage/image/image_words.h"
#include "kvrimage/image/word_copy.h"
#include "kvrimage/image/word_stretch.h"
#include "kvrimage/image/word_text.h"
#include "kvrimage/image/work_position.h"
#include "kvrimage/operations/bit_block.h"
#include "kvrimage/operations/byte_parts.h"
#include "kvrimage/operations/split.h"

#include <fmt/format.h>

#include <algorithm>
#include <bit>
#include <cstddef>
#include <numeric>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kvrimage {

namespace {

using image_span = std::span<const memory_image>;

void require_alike(image_span joined, std::string_view name) {
    if (joined.empty()) {
        throw std::invalid_argument("nothing to join");
    }
    const memory_image& first = joined.front();
    for (std::size_t index = 1; index < joined.size(); ++index) {
        const memory_image& each = joined[index];
        if (each.width() != first.width()) {
            throw std::invalid_argument(fmt::format("{} {} has words of {} bits, {} 0 of {}", name, index,
                                                    each.width(), name, first.width()));
        }
        if (each.depth() != first.depth()) {
            throw std::invalid_argument(fmt::format("{} {} has {} words, {} 0 has {}", name, index,
                                                    each.depth(), name, first.depth()));
        }
        if (each.base() != first.base()) {
            throw std::invalid_argument(fmt::format("{} {} begins at address 0x{:X}, {} 0 at 0x{:X}", name,
                                                    index, each.base(), name, first.base()));
        }
    }
}

std::uint64_t joint_depth(image_span joined, std::string_view name) {
    require_alike(joined, name);
    const std::uint64_t depth = joined.front().depth();
    if (joined.size() > deepest_memory / depth) {
        throw std::invalid_argument(
            fmt::format("{} {}s of {} words are more than 2^32", joined.size(), name, depth));
    }
    return depth * joined.size();
}

std::vector<row_reader> readers_of(image_span joined) {
    std::vector<row_reader> readers;
    for (const memory_image& each : joined) {
        readers.emplace_back(each.words());
    }
    return readers;
}

/// Calls @p take with the first offset and the end of consecutive blocks, which cover @p count offsets from
/// @p offset on. @p width is the width of the joined words in bits. A block is small enough for the cache. It
/// has at most a power of two of words and never crosses a multiple of this power.
template <class Take>
void for_each_block(std::uint64_t offset, std::uint64_t count, std::uint64_t width, Take&& take) {
    constexpr std::uint64_t usual_bits = std::uint64_t{1} << 16U;
    const std::uint64_t block = std::bit_floor(std::max<std::uint64_t>(usual_bits / width, 1));
    for (const std::uint64_t end = offset + count; offset < end;) {
        const std::uint64_t block_end = std::min(end, (offset / block + 1) * block);
        take(offset, block_end);
        offset = block_end;
    }
}

/// What is known of the words of all parts from an offset on.
struct joint_stretch {
    std::uint64_t length; ///< number of words to which the rest applies
    std::uint64_t period; ///< period of all parts together; `length` if they do not repeat
    std::size_t set = 0;  ///< number of parts whose words are set
    std::optional<std::size_t> gap = std::nullopt; ///< the first part whose words are not set
};

joint_stretch joint_stretch_at(image_span joined, std::uint64_t offset) {
    joint_stretch all = {deepest_memory, 1};
    for (std::size_t index = 0; index < joined.size(); ++index) {
        const word_stretch one = stretch_at(joined[index].words(), offset);
        all.length = std::min(all.length, one.last - offset + 1);
        // A period above 2^32 is useless. Below this limit the product fits 64 bits.
        all.period = std::min(std::lcm(all.period, one.period), deepest_memory);
        all.set += one.is_set ? 1U : 0U;
        if (!one.is_set && !all.gap) {
            all.gap = index;
        }
    }
    all.period = std::min(all.period, all.length);
    return all;
}

/// True if fewer than half of the words determine all of @p stretch.
bool repeats(const joint_stretch& stretch) {
    return stretch.length / 2 >= stretch.period;
}

class lane_joiner {
public:
    lane_joiner(image_span joined, std::uint32_t joint_width)
        : lanes(joined),
          lane_width(joined.front().width()),
          width(joint_width),
          digits(most_characters_of_word(radix::hex, joint_width)),
          made(joint_width, joined.front().depth(), joined.front().base()),
          readers(readers_of(joined)) {}

    [[nodiscard]] memory_image result() {
        for (std::uint64_t offset = 0; offset < made.depth();) {
            note_work(offset, made.depth());
            const joint_stretch stretch = joint_stretch_at(lanes, offset);
            join_stretch(stretch, offset);
            offset += stretch.length;
        }
        if (incomplete != 0) {
            throw std::domain_error(
                fmt::format("{} set in some lanes only; the first one, at address 0x{:X}, not in lane {}",
                            incomplete == 1 ? "a word is" : fmt::format("{} words are", incomplete),
                            first_incomplete, gap));
        }
        return std::move(made);
    }

private:
    void join_stretch(const joint_stretch& stretch, std::uint64_t offset) {
        if (stretch.set == lanes.size()) {
            for_each_block(offset, repeats(stretch) ? stretch.period : stretch.length, width,
                           [this](std::uint64_t first, std::uint64_t end) { join_block(first, end); });
            if (repeats(stretch)) {
                repeat(offset, stretch);
            }
        } else if (stretch.set != 0) {
            if (incomplete == 0) {
                first_incomplete = made.base() + offset;
                gap = stretch.gap.value();
            }
            incomplete += stretch.length;
        }
    }
    void repeat(std::uint64_t offset, const joint_stretch& stretch) {
        std::vector<std::string> pattern;
        for (std::uint64_t each = offset; each < offset + stretch.period; ++each) {
            pattern.emplace_back(made.words()[each]);
        }
        made.words().fill(offset, offset + stretch.length - 1, {pattern.begin(), pattern.end()});
    }
    void join_block(std::uint64_t offset, std::uint64_t end) {
        if (!gather_numbers(offset, end)) {
            for (; offset < end; ++offset) {
                made.words().set(offset, word_at(offset));
            }
            return;
        }
        texts.resize((end - offset) * digits);
        for (std::uint64_t index = 0; index < end - offset; ++index) {
            numbers.write_to(texts.data() + index * digits, index * width, width);
        }
        made.words().set_side_by_side(offset, texts, digits);
    }
    /// Joins the words from @p offset to @p end - 1 in `numbers`. Returns false if a word is not set or has a
    /// don't-care digit; `numbers` is then unspecified.
    bool gather_numbers(std::uint64_t offset, std::uint64_t end) {
        const std::size_t length = most_characters_of_word(radix::hex, lane_width);
        numbers.clear((end - offset) * width);
        for (std::size_t lane = 0; lane < lanes.size(); ++lane) {
            for (std::uint64_t each = offset; each < end; ++each) {
                const std::string_view text = readers[lane][each];
                if (text.size() != length ||
                    !numbers.put((each - offset) * width + lane * lane_width, text)) {
                    return false;
                }
            }
        }
        return true;
    }
    [[nodiscard]] const std::string& word_at(std::uint64_t offset) {
        bits.clear();
        for (std::size_t lane = lanes.size(); lane-- > 0;) {
            static_cast<void>(show_word(lanes[lane].words()[offset], radix::bin, lane_width, lane_bits));
            bits += lane_bits;
        }
        static_cast<void>(make_word(bits, radix::bin, width, made_word));
        return made_word;
    }

    image_span lanes;
    std::uint32_t lane_width;
    std::uint32_t width;
    std::size_t digits; ///< digits of a joined word
    memory_image made;
    std::vector<row_reader> readers;
    bit_block numbers;
    std::string texts;
    std::string bits;
    std::string lane_bits;
    std::string made_word;
    std::uint64_t incomplete = 0; ///< number of words that some lanes lack
    std::uint64_t first_incomplete = 0;
    std::size_t gap = 0; ///< the lane that lacks the first such word
};

class bank_joiner {
public:
    bank_joiner(image_span joined, std::uint64_t depth)
        : banks(joined),
          digits(most_characters_of_word(radix::hex, joined.front().width())),
          made(joined.front().width(), depth, joined.front().base()),
          readers(readers_of(joined)) {}

    [[nodiscard]] memory_image result() {
        for (std::uint64_t offset = 0; offset < banks.front().depth();) {
            note_work(offset, banks.front().depth());
            const joint_stretch stretch = joint_stretch_at(banks, offset);
            join_stretch(stretch, offset);
            offset += stretch.length;
        }
        return std::move(made);
    }

private:
    void join_stretch(const joint_stretch& stretch, std::uint64_t offset) {
        if (stretch.set == banks.size() && repeats(stretch)) {
            repeat(stretch, offset);
        } else if (stretch.set != 0) {
            for_each_block(offset, stretch.length, made.width() * banks.size(),
                           [this](std::uint64_t first, std::uint64_t end) { join_block(first, end); });
        }
    }
    void repeat(const joint_stretch& stretch, std::uint64_t offset) {
        std::vector<std::string_view> pattern;
        for (std::uint64_t each = offset; each < offset + stretch.period; ++each) {
            for (const memory_image& bank : banks) {
                pattern.push_back(bank.words()[each]);
            }
        }
        made.words().fill(offset * banks.size(), (offset + stretch.length) * banks.size() - 1, pattern);
    }
    void join_block(std::uint64_t offset, std::uint64_t end) {
        const std::uint64_t first = offset * banks.size();
        const std::uint64_t last = end * banks.size() - 1;
        if (first / image_words::half() == last / image_words::half() && gather_texts(offset, end)) {
            made.words().set_side_by_side(first, texts, digits);
            return;
        }
        for (std::uint64_t place = first; place <= last; ++place) {
            const std::string_view text = readers[place % banks.size()][place / banks.size()];
            if (!text.empty()) {
                made.words().set(place, text);
            }
        }
    }
    /// Sets `texts` to the words of all banks. Returns false if a word is not set or has another length;
    /// `texts` is then unspecified.
    bool gather_texts(std::uint64_t offset, std::uint64_t end) {
        texts.clear();
        for (std::uint64_t each = offset; each < end; ++each) {
            for (row_reader& bank : readers) {
                const std::string_view text = bank[each];
                if (text.size() != digits) {
                    return false;
                }
                texts += text;
            }
        }
        return true;
    }

    image_span banks;
    std::size_t digits; ///< digits of most words
    memory_image made;
    std::vector<row_reader> readers;
    std::string texts;
};

} // namespace

memory_image join_lanes(image_span lanes) {
    require_alike(lanes, "lane");
    const std::uint32_t width = lanes.front().width();
    if (lanes.size() > widest_word / width) {
        throw std::invalid_argument(
            fmt::format("{} lanes of {} bits are wider than {}", lanes.size(), width, widest_word));
    }
    if (auto joined = join_lanes_of_bytes(lanes)) {
        return std::move(*joined);
    }
    return lane_joiner(lanes, static_cast<std::uint32_t>(lanes.size()) * width).result();
}

memory_image join_banks(image_span banks) {
    const std::uint64_t depth = joint_depth(banks, "bank");
    if (auto joined = join_banks_of_bytes(banks)) {
        return std::move(*joined);
    }
    return bank_joiner(banks, depth).result();
}

memory_image join_blocks(image_span blocks) {
    const std::uint64_t depth = joint_depth(blocks, "block");
    if (auto joined = join_blocks_of_bytes(blocks)) {
        return std::move(*joined);
    }
    memory_image made(blocks.front().width(), depth, blocks.front().base());
    for (std::size_t index = 0; index < blocks.size(); ++index) {
        const std::uint64_t length = blocks[index].depth();
        copy_words(blocks[index].words(), 0, length - 1, made.words(), index * length);
    }
    return made;
}

} // namespace kvrimage
