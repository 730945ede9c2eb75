#include "tests/models/transformation_operations.h"

#include "kvrimage/bytes/image_bytes.h"
#include "kvrimage/operations/error_correction/protection.h"
#include "kvrimage/operations/merge.h"
#include "kvrimage/operations/reshape.h"
#include "kvrimage/operations/selection.h"
#include "kvrimage/operations/split.h"
#include "tests/kvrimage/operations/plain_operations.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <optional>
#include <set>
#include <stdexcept>
#include <utility>
#include <vector>

namespace kvr_test {

namespace {

using kvrimage::address_range;
using kvrimage::bit_order;
using kvrimage::byte_order;
using kvrimage::ecc_report;
using kvrimage::ecc_scheme;
using kvrimage::memory_image;
using kvrimage::overlap_rule;
using kvrimage::word;

// Words of whole bytes have their own code, as do words of up to 64 bits and of up to 128 bits.
constexpr std::array<std::uint32_t, 20> tried_widths = {1,  2,  3,  4,  5,  7,  8,  12,  16,  24,
                                                        31, 32, 33, 64, 65, 72, 96, 128, 130, 300};
constexpr std::array<std::uint32_t, 8> lane_widths = {1, 3, 4, 8, 16, 31, 64, 65};
constexpr std::array<std::uint32_t, 17> data_widths = {1,  2,  3,  4,  5,  8,   11,  12, 16,
                                                       26, 27, 32, 57, 64, 120, 128, 200};
constexpr std::array merge_rules = {overlap_rule::refuse, overlap_rule::same, overlap_rule::first,
                                    overlap_rule::last};
constexpr unsigned some_dont_care = 30;

} // namespace

std::uint64_t transformation_operations::size_up_to(std::uint32_t most) {
    constexpr std::uint32_t few = 20;
    return chosen().between(1, chosen().once_in(8) ? most : std::min(most, few));
}

address_range transformation_operations::any_range(const memory_image& image) {
    const std::uint64_t first = image.base() + maker().below(image.depth());
    return {first, first + maker().below(image.last_address() - first + 1)};
}

memory_image transformation_operations::any_memory(std::uint32_t width, std::uint64_t depth,
                                                   unsigned dont_care_share, std::uint64_t base) {
    if (!chosen().once_in(3)) {
        return maker().memory(width, depth, dont_care_share, base);
    }
    const byte_order order = chosen().once_in(2) ? byte_order::little : byte_order::big;
    std::string bytes;
    for (std::uint64_t count = 0; count < depth; ++count) {
        bytes += word_of_digits(maker().bits(width)).to_bytes(order).value();
    }
    const memory_image image =
        kvrimage::image_of_bytes(bytes, {.width = width, .order = order, .base = base});
    return chosen().once_in(2) ? image : kvrimage::except(image, std::array{any_range(image)});
}

void transformation_operations::expect(bool holds, std::string_view what) const {
    if (!holds) {
        throw std::logic_error(fmt::format("{}: {}", title, what));
    }
}

void reshape_operations::step() {
    constexpr std::uint32_t most_bits = 40'000;
    const std::uint32_t old_width = chosen().one_of(tried_widths);
    const std::uint32_t width = chosen().one_of(tried_widths);
    const bit_order order = chosen().once_in(2) ? bit_order::low_first : bit_order::high_first;
    const std::uint64_t base = chosen().once_in(2) ? 0 : std::uint64_t{width} * chosen().below(9);
    const memory_image image = any_memory(old_width, size_up_to(most_bits / old_width),
                                          chosen().once_in(3) ? some_dont_care : 0, base);
    about() = fmt::format("{} words of {} bits as words of {}", image.depth(), old_width, width);

    const plain_words words = plain_words_of(image);
    const std::string pad = maker().bits(width);
    const plain_reshape expected = plainly_reshaped(words, old_width, width, order, pad);
    const memory_image made = reshaped(image, width, order, word_of_digits(pad));
    expect(plain_words_of(made) == expected.words, "the words");
    expect(made.base() * width == base * old_width, "the base");
    try {
        expect(reshaped(image, width, order) == made && !expected.lacks_bits, "words without a pad");
    } catch (const std::domain_error&) {
        expect(expected.lacks_bits, "a word that is said to lack bits");
    }
    plain_words back = plain_words_of(reshaped(made, old_width, order, word(old_width)));
    back.resize(words.size()); // removes words that consist of the pad
    for (std::size_t index = 0; index < words.size(); ++index) {
        expect(!words[index] || words[index] == back[index], "the words after the reverse");
    }
    expect(reshaped(image, old_width, order) == image, "words of the same width");
}

void split_operations::step() {
    switch (chosen().below(3)) {
    case 0:
        split_lanes();
        break;
    case 1:
        split_turns();
        break;
    default:
        join_parts();
    }
}

void split_operations::split_lanes() {
    const std::uint32_t bits = chosen().one_of(lane_widths);
    const std::uint32_t count = chosen().between(1, 4);
    const memory_image image = any_memory(bits * count, size_up_to(1500),
                                          chosen().once_in(3) ? some_dont_care : 0, chosen().below(100));
    about() = fmt::format("{} words as {} lanes of {} bits", image.depth(), count, bits);
    const auto lanes = kvrimage::split_lanes(image, bits);
    const plain_words words = plain_words_of(image);
    expect(lanes.size() == count, "how many lanes there are");
    for (std::uint32_t lane = 0; lane < count; ++lane) {
        expect(plain_words_of(lanes[lane]) == plain_lane(words, lane, bits), "the words of a lane");
    }
    expect(join_lanes(lanes) == image, "the joined lanes");
}

void split_operations::split_turns() {
    const std::uint64_t count = size_up_to(1500);
    const std::uint64_t depth = count * chosen().between(1, static_cast<std::uint32_t>(1500 / count));
    const memory_image image = any_memory(chosen().one_of(tried_widths), depth,
                                          chosen().once_in(3) ? some_dont_care : 0, chosen().below(100));
    about() = fmt::format("{} words of {} bits as {} parts", depth, image.width(), count);
    const auto banks = split_banks(image, count);
    const auto blocks = split_blocks(image, count);
    const plain_words words = plain_words_of(image);
    expect(banks.size() == count && blocks.size() == count, "how many parts there are");
    plain_words in_blocks;
    for (std::uint64_t index = 0; index < count; ++index) {
        expect(plain_words_of(banks[index]) == plain_bank(words, index, count), "the words of a bank");
        const plain_words block = plain_words_of(blocks[index]);
        in_blocks.insert(in_blocks.end(), block.begin(), block.end());
    }
    expect(in_blocks == words, "the words of the blocks");
    expect(join_banks(banks) == image, "the joined banks");
    expect(join_blocks(blocks) == image, "the joined blocks");
}

void split_operations::join_parts() {
    const std::uint32_t width = chosen().one_of(tried_widths);
    const std::uint64_t depth = size_up_to(1100);
    const std::uint64_t base = chosen().below(100);
    std::vector<memory_image> parts;
    for (std::uint32_t count = chosen().between(1, 4); count > 0; --count) {
        parts.push_back(any_memory(width, depth, chosen().once_in(3) ? some_dont_care : 0, base));
    }
    about() = fmt::format("{} parts of {} words of {} bits", parts.size(), depth, width);
    expect(split_banks(join_banks(parts), parts.size()) == parts, "the split of joined banks");
    expect(split_blocks(join_blocks(parts), parts.size()) == parts, "the split of joined blocks");
    const bool are_alike = std::ranges::all_of(parts, [&parts](const memory_image& each) {
        const plain_words words = plain_words_of(each);
        return std::ranges::equal(words, plain_words_of(parts.front()),
                                  [](const auto& one, const auto& other) { return !one == !other; });
    });
    try {
        const memory_image joined = join_lanes(parts);
        expect(are_alike && kvrimage::split_lanes(joined, width) == parts, "the split of joined lanes");
    } catch (const std::domain_error&) {
        expect(!are_alike, "a word that a lane is said to lack");
    }
}

void merge_operations::step() {
    if (chosen().once_in(3)) {
        merge_selections();
    } else {
        merge_memories();
    }
}

void merge_operations::merge_memories() {
    const std::uint32_t width = chosen().one_of(tried_widths);
    std::vector<memory_image> parts;
    for (std::uint32_t count = chosen().between(1, 4); count > 0; --count) {
        const std::uint64_t base = chosen().below(chosen().once_in(3) ? 2000 : 30);
        parts.push_back(any_memory(width, size_up_to(1500), chosen().once_in(3) ? some_dont_care : 0, base));
        parts.back().unset(any_range(parts.back()));
    }
    if (chosen().once_in(3)) {
        parts.push_back(chosen().one_of(parts));
    }
    const overlap_rule rule = chosen().one_of(merge_rules);
    about() = fmt::format("{} memories of {} bits, rule {}", parts.size(), width, static_cast<int>(rule));
    const plain_merge expected = plainly_merged(parts, rule);
    const kvrimage::merge_result result = merged(parts, rule);
    expect((result.overlap_count != 0) == expected.overlaps, "whether memories overlap");
    expect(!result.image == ((rule == overlap_rule::refuse && expected.overlaps) ||
                             (rule == overlap_rule::same && expected.differs)),
           "whether it is refused");
    for (std::size_t index = 0; index < parts.size(); ++index) {
        expect(result.parts[index].words == expected.taken[index], "how many words a memory gives");
    }
    if (result.image) {
        expect(result.image->base() == expected.base && plain_words_of(*result.image) == expected.words,
               "the words");
        const std::array again = {*result.image, *result.image};
        expect(merged(again, overlap_rule::same).image == result.image, "a memory merged with itself");
    }
}

/// Selects ranges of a memory and the rest, and merges both into the same memory.
void merge_operations::merge_selections() {
    const memory_image image = any_memory(chosen().one_of(tried_widths), size_up_to(1500),
                                          chosen().once_in(3) ? some_dont_care : 0, chosen().below(100));
    std::vector<address_range> ranges;
    for (std::uint32_t count = chosen().below(4); count > 0; --count) {
        ranges.push_back(any_range(image));
    }
    about() = fmt::format("{} ranges of {} words of {} bits", ranges.size(), image.depth(), image.width());
    const std::array parts = {only(image, ranges), except(image, ranges)};
    expect(merged(parts, overlap_rule::refuse).image == image, "the two selections merged");
}

void protection_operations::step() {
    const auto& name = chosen().one_of(ecc_scheme::known()).name;
    const std::uint32_t width = chosen().one_of(data_widths);
    std::optional<ecc_scheme> scheme;
    try {
        scheme = ecc_scheme::named(name, width);
    } catch (const std::invalid_argument&) {
        return; // the scheme does not support words of this width
    }
    const memory_image image = any_memory(width, size_up_to(1500), 0, chosen().below(100));
    about() = fmt::format("{} words of {} bits with {}", image.depth(), width, name);
    memory_image made = protected_by(image, *scheme);
    for (std::uint64_t address = image.base(); address <= image.last_address(); ++address) {
        const auto data = image[address];
        expect(made[address] == (data ? std::optional(scheme->encoded(*data)) : std::nullopt),
               "a protected word");
    }
    expect(unprotected(made, *scheme) == image, "the data again");

    std::set<std::uint64_t> wrong;
    for (std::uint32_t count = chosen().below(6); count > 0; --count) {
        const std::uint64_t address = image.base() + maker().below(image.depth());
        const auto value = made[address];
        if (value && wrong.insert(address).second) {
            std::string digits = value->to_text(kvrimage::radix::bin).value();
            char& digit = digits[chosen().below(scheme->width())];
            digit = digit == '0' ? '1' : '0';
            made.set(address, word_of_digits(digits));
        }
    }
    const bool corrects = scheme->strength().corrects_single;
    const ecc_report report = check_protection(made, *scheme);
    expect(report.checked == image.count_set(), "how many words were checked");
    expect((corrects ? report.corrected : report.damaged) == wrong.size(), "how many words are wrong");
    expect((corrects ? report.damaged : report.corrected) == 0, "words that are wrong otherwise");
    try {
        expect(unprotected(made, *scheme) == image && (corrects || wrong.empty()), "the corrected data");
    } catch (const std::domain_error&) {
        expect(!corrects && !wrong.empty(), "data that are said to be lost");
    }
}

} // namespace kvr_test
