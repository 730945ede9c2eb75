// Each allocation of the operations that generate, change, compare and count memories fails, one per trial.

#include "kvrimage/compare/compare.h"
#include "kvrimage/generate/numbers.h"
#include "kvrimage/generate/patterns.h"
#include "kvrimage/generate/picture_words.h"
#include "kvrimage/generate/sound_words.h"
#include "kvrimage/image/image_part.h"
#include "kvrimage/operations/bit_operations.h"
#include "kvrimage/operations/checksum/checksum.h"
#include "kvrimage/operations/reshape.h"
#include "kvrimage/operations/selection.h"
#include "kvrimage/operations/split.h"
#include "kvrimage/operations/statistics/needed_width.h"
#include "kvrimage/operations/statistics/period.h"
#include "kvrimage/operations/statistics/runs.h"
#include "kvrimage/operations/statistics/toggles.h"
#include "tests/kvrimage/faults/library_trial.h"
#include "tests/kvrimage/faults/sample_images.h"

#include <gtest/gtest.h>

#include <bit>

namespace kvrimage_tests {

namespace {

using namespace kvrimage;

constexpr image_kind plain_kinds[] = {{'w', "wide words", image_of_wide_words},
                                      {'b', "bytes", image_held_as_bytes},
                                      {'d', "the deepest", deepest_image}};

constexpr address_range some_ranges[] = {{9, 12}, {15, 40}};

constexpr image_call calls_of_operations[] = {
    {"masked", [](library_trial& trial) { trial.made = masked(*trial.image, word_for(trial, 0xF0F)); }},
    {"with_reversed_bits", [](library_trial& trial) { trial.made = with_reversed_bits(*trial.image); }},
    {"with_swapped_bytes", [](library_trial& trial) { trial.made = with_swapped_bytes(*trial.image); }},
    {"inverted", [](library_trial& trial) { trial.made = inverted(*trial.image); }},
    {"only", [](library_trial& trial) { trial.made = only(*trial.image, some_ranges); }},
    {"except", [](library_trial& trial) { trial.made = except(*trial.image, some_ranges); }},
    {"moved",
     [](library_trial& trial) {
         trial.made = moved(cut_out(*trial.image, {8, 31}), 8, 0x100);
     }},
    {"with_depth", [](library_trial& trial) { trial.made = with_depth(*trial.image, trial.image->depth()); }},
    {"reshaped to less bits",
     [](library_trial& trial) {
         trial.made = reshaped(cut_out(*trial.image, {8, 31}), 8, bit_order::low_first, word(8));
     }},
    {"reshaped to more bits",
     [](library_trial& trial) {
         trial.made = reshaped(cut_out(*trial.image, {8, 31}), 128, bit_order::high_first, word(128));
     }},
    {"split_lanes", [](library_trial& trial) { trial.parts = split_lanes(*trial.image, 8); }},
    {"split_banks", [](library_trial& trial) { trial.parts = split_banks(*trial.image, 4); }},
    {"split_blocks", [](library_trial& trial) { trial.parts = split_blocks(*trial.image, 4); }},
    {"count_words", [](library_trial& trial) { trial.statistics = count_words(*trial.image); }},
    {"histogram_of", [](library_trial& trial) { trial.histogram = histogram_of(*trial.image, 3); }},
    {"needed_width_of",
     [](library_trial& trial) {
         const needed_width found = needed_width_of(*trial.image);
         trial.figures[0] = found.as_unsigned;
         trial.figures[1] = found.as_signed;
     },
     "wd"},
    {"period_of", [](library_trial& trial) { trial.figures[0] = period_of(*trial.image).value_or(0); }, "d"},
    {"runs_of",
     [](library_trial& trial) {
         const run_statistics found = runs_of(*trial.image);
         trial.figures[0] = found.runs;
         trial.value = found.longest->value;
     },
     "d"},
    {"toggles_of",
     [](library_trial& trial) {
         const toggle_statistics found = toggles_of(*trial.image);
         trial.figures[0] = found.compared;
         trial.figures[1] = found.toggled;
     },
     "wd"},
    {"checksum_of, CRC",
     [](library_trial& trial) { trial.value = checksum_of(*trial.image, known_crcs().front().model); }},
    {"checksum_of, sum of words",
     [](library_trial& trial) {
         trial.value = checksum_of(*trial.image, additive_sum{32, true, true});
     },
     "b"},
    {"checksum_of ranges with unset words",
     [](library_trial& trial) {
         trial.value = checksum_of(*trial.image, known_crcs().front().model,
                                   {{{9, 12}, {15, 31}}, byte_order::big, word_for(trial, 3)});
     }},
    {"for_each_counted_block",
     [](library_trial& trial) {
         trial.figures[0] = 0;
         for_each_counted_block(*trial.image, {}, [&trial](std::string_view bytes) {
             for (const char byte : bytes) {
                 trial.figures[0] = 31 * trial.figures[0] + static_cast<unsigned char>(byte);
             }
         });
     },
     "b"},
};

/// The parts of a memory, which are to be joined.
template <memory_image (*Make)(), std::vector<memory_image> (*Split)(const memory_image&)>
void parts_of(library_trial& trial) {
    trial.parts = Split(Make());
}

std::vector<memory_image> lanes_of(const memory_image& image) {
    return split_lanes(image, 8);
}
std::vector<memory_image> banks_of(const memory_image& image) {
    return split_banks(image, 4);
}
std::vector<memory_image> blocks_of(const memory_image& image) {
    return split_blocks(image, 4);
}

void join_all_lanes(library_trial& trial) {
    trial.made = join_lanes(trial.parts);
}
void join_all_banks(library_trial& trial) {
    trial.made = join_banks(trial.parts);
}
void join_all_blocks(library_trial& trial) {
    trial.made = join_blocks(trial.parts);
}

/// Overlapping memories that have the same words in some places.
template <memory_image (*Make)()>
void parts_to_merge(library_trial& trial) {
    const memory_image whole = Make();
    trial.parts = {cut_out(whole, {8, 20}), cut_out(whole, {16, 30}), cut_out(whole, {31, 31})};
    trial.parts[1].set(17, word::of(0x77, whole.width()));
}

template <overlap_rule Rule>
void merge_all(library_trial& trial) {
    trial.merge = merged(trial.parts, Rule);
}

const library_call calls_of_parts[] = {
    {"join_lanes of wide words", parts_of<image_of_wide_words, lanes_of>, join_all_lanes},
    {"join_lanes of bytes", parts_of<image_held_as_bytes, lanes_of>, join_all_lanes},
    {"join_lanes of the deepest", parts_of<deepest_image, lanes_of>, join_all_lanes},
    {"join_banks of wide words", parts_of<image_of_wide_words, banks_of>, join_all_banks},
    {"join_banks of bytes", parts_of<image_held_as_bytes, banks_of>, join_all_banks},
    {"join_banks of the deepest", parts_of<deepest_image, banks_of>, join_all_banks},
    {"join_blocks of wide words", parts_of<image_of_wide_words, blocks_of>, join_all_blocks},
    {"join_blocks of bytes", parts_of<image_held_as_bytes, blocks_of>, join_all_blocks},
    {"join_blocks of the deepest", parts_of<deepest_image, blocks_of>, join_all_blocks},
    {"merged wide words, refused", parts_to_merge<image_of_wide_words>, merge_all<overlap_rule::refuse>},
    {"merged wide words", parts_to_merge<image_of_wide_words>, merge_all<overlap_rule::last>},
    {"merged bytes", parts_to_merge<image_held_as_bytes>, merge_all<overlap_rule::first>},
    {"merged bytes, not the same", parts_to_merge<image_held_as_bytes>, merge_all<overlap_rule::same>},
};

/// A memory with check bits in which one word has one wrong bit and another word two.
template <memory_image (*Make)()>
void protected_memory(library_trial& trial) {
    const memory_image whole = Make();
    trial.scheme = ecc_scheme::named("hamming", whole.width());
    trial.image = protected_by(cut_out(whole, {8, 31}), *trial.scheme);
    trial.image->set(12, word::of(16, trial.image->width()));
}

template <memory_image (*Make)()>
void memory_to_protect(library_trial& trial) {
    trial.image = Make();
    trial.scheme = ecc_scheme::named("hamming", trial.image->width());
}

const library_call calls_of_protection[] = {
    {"ecc_scheme::named", memory_to_protect<image_of_wide_words>,
     [](library_trial& trial) { trial.scheme = ecc_scheme::named("hamming", 96); }},
    {"ecc_scheme::of_protected", memory_to_protect<image_of_wide_words>,
     [](library_trial& trial) { trial.figures[0] = ecc_scheme::of_protected("hamming", 39).data_width(); }},
    {"ecc_scheme::of_masks", memory_to_protect<image_of_wide_words>,
     [](library_trial& trial) {
         trial.scheme = ecc_scheme::of_masks(std::vector{wide_word(5), wide_word(0xFFFF0000)}, 1);
         trial.figures[0] = trial.scheme->strength().finds_single ? 1 : 2;
     }},
    {"encoded", memory_to_protect<image_of_wide_words>,
     [](library_trial& trial) { trial.value = trial.scheme->encoded(wide_word(0x1234)); }},
    {"decoded", memory_to_protect<image_of_wide_words>,
     [](library_trial& trial) {
         trial.value = trial.scheme->decoded(word::of(16, trial.scheme->width())).data;
     }},
    {"protected_by, wide words", memory_to_protect<image_of_wide_words>,
     [](library_trial& trial) { trial.made = protected_by(*trial.image, *trial.scheme); }},
    {"protected_by, bytes", memory_to_protect<image_held_as_bytes>,
     [](library_trial& trial) { trial.made = protected_by(*trial.image, *trial.scheme); }},
    {"check_protection, wide words", protected_memory<image_of_wide_words>,
     [](library_trial& trial) { trial.report = check_protection(*trial.image, *trial.scheme); }},
    {"check_protection, bytes", protected_memory<image_held_as_bytes>,
     [](library_trial& trial) { trial.report = check_protection(*trial.image, *trial.scheme); }},
    {"unprotected, wide words", protected_memory<image_of_wide_words>,
     [](library_trial& trial) { trial.made = unprotected(*trial.image, *trial.scheme); }},
    {"unprotected, bytes", protected_memory<image_held_as_bytes>,
     [](library_trial& trial) { trial.made = unprotected(*trial.image, *trial.scheme); }},
};

/// A memory and another one that differs in single words, in runs and in which words are set.
template <memory_image (*Make)()>
void two_memories(library_trial& trial) {
    trial.image = Make();
    trial.other = *trial.image;
    trial.other->set(12, word_for(trial, 0x123));
    trial.other->fill({16, 19}, std::vector{word_for(trial, 0x55)});
    trial.other->unset({24, 26});
}

template <memory_image (*Make)()>
void memories_to_count(library_trial& trial) {
    two_memories<Make>(trial);
    trial.counter.emplace(*trial.image, *trial.other);
    trial.found = difference{{10, 60}, word_for(trial, 5), word_for(trial, 10)};
}

void hash(library_trial& trial, const difference& found) {
    trial.figures[0] = 31 * trial.figures[0] + found.addresses.first;
    trial.figures[1] = 31 * trial.figures[1] + found.addresses.last;
    trial.figures[2] = 2 * trial.figures[2] + (found.left ? 1 : 0);
    trial.figures[3] = 2 * trial.figures[3] + (found.right ? 1 : 0);
}

void walk_differences(library_trial& trial) {
    trial.figures = {};
    for_each_difference(*trial.image, *trial.other,
                        [&trial](const difference& found) { hash(trial, found); });
}

void walk_differences_in_ranges(library_trial& trial) {
    trial.figures = {};
    for_each_difference(*trial.image, *trial.other, some_ranges,
                        [&trial](const difference& found) { hash(trial, found); });
}

/// Counts the difference once.
void count_difference(library_trial& trial) {
    if (trial.figures[0] == 0) {
        trial.counter->take(*trial.found);
        trial.figures[0] = 1;
    }
}

/// A copy does not have the reserved capacity of the original.
void copy_counter(library_trial& trial) {
    difference_counter copy = *trial.counter;
    trial.counter = std::move(copy);
}

const library_call calls_of_comparison[] = {
    {"for_each_difference, wide words", two_memories<image_of_wide_words>, walk_differences},
    {"for_each_difference, bytes", two_memories<image_held_as_bytes>, walk_differences},
    {"for_each_difference, varied words", two_memories<image_of_varied_words>, walk_differences, false},
    {"for_each_difference, the deepest", two_memories<deepest_image>, walk_differences, false},
    {"for_each_difference in ranges", two_memories<image_of_wide_words>, walk_differences_in_ranges},
    {"difference_counter", two_memories<image_of_wide_words>,
     [](library_trial& trial) { trial.counter.emplace(*trial.image, *trial.other); }},
    {"difference_counter, copied", memories_to_count<image_of_wide_words>, copy_counter},
    {"difference_counter::take, wide words", memories_to_count<image_of_wide_words>, count_difference},
    {"difference_counter::take of a copy",
     [](library_trial& trial) {
         memories_to_count<image_of_varied_words>(trial);
         copy_counter(trial);
     },
     count_difference},
};

const library_call calls_of_names[] = {
    {"named_checksums and known_crcs", prepare_nothing,
     [](library_trial& trial) {
         trial.figures[0] = named_checksums().size();
         trial.figures[1] = known_crcs().size();
         trial.figures[2] = ecc_scheme::known().size();
     },
     false},
    {"checksum_of_name", prepare_nothing,
     [](library_trial& trial) { trial.figures[0] = checksum_of_name("word-balance-32") ? 1 : 2; }, false},
    {"crc", prepare_nothing,
     [](library_trial& trial) {
         crc check(known_crcs().front().model);
         check.add("123456789");
         trial.figures[0] = check.value();
     }},
};

/// 4 by 2 pixels in eight colors.
raster small_picture() {
    raster picture;
    picture.columns = 4;
    for (std::uint8_t number = 0; number < 8; ++number) {
        const auto level = static_cast<std::uint8_t>(30 * number);
        picture.pixels.push_back({level, static_cast<std::uint8_t>(255 - level), number});
    }
    return picture;
}

/// A RIFF file with @p count samples of @p bits bits in two channels.
std::string small_sound(std::uint32_t bits, std::uint32_t count) {
    const auto number = [](std::uint32_t value, unsigned bytes) {
        std::string text;
        for (; bytes > 0; --bytes, value >>= 8U) {
            text += static_cast<char>(value & 0xFFU);
        }
        return text;
    };
    std::string samples;
    for (std::uint32_t index = 0; index < 2 * count; ++index) {
        samples += number(index * 1299709U, bits / 8);
    }
    const std::uint32_t frame = 2 * bits / 8;
    const std::string head = "fmt " + number(16, 4) + number(1, 2) + number(2, 2) + number(8000, 4) +
                             number(8000 * frame, 4) + number(frame, 2) + number(bits, 2);
    const auto size = static_cast<std::uint32_t>(samples.size());
    return "RIFF" + number(size + 36, 4) + "WAVE" + head + "data" + number(size, 4) + samples;
}

const library_call calls_of_generators[] = {
    {"ramp", prepare_nothing,
     [](library_trial& trial) { trial.made = ramp(wide_word(5), wide_word(0xFFFFFFFF), 40); }},
    {"random_words", prepare_nothing, [](library_trial& trial) { trial.made = random_words(96, 40, 7); }},
    {"text_words", prepare_nothing,
     [](library_trial& trial) { trial.made = text_words("a text of which each byte is a word", 16); }},
    {"number_words", prepare_nothing,
     [](library_trial& trial) {
         static const generated_number numbers[] = {std::int64_t{-5}, 3.5, 1e30};
         trial.made = number_words(numbers, 96, {rounding::even, true, true});
     }},
    {"number_words of few bits", prepare_nothing,
     [](library_trial& trial) {
         static const generated_number numbers[] = {std::int64_t{5}, 3.5, 1e30};
         trial.made = number_words(numbers, 12, {rounding::down, true, false});
     }},
    {"picture_words", prepare_nothing,
     [](library_trial& trial) {
         trial.made = picture_words(small_picture(), {pixel_format::rgb444, true, 16});
     }},
    {"indexed_picture_words", prepare_nothing,
     [](library_trial& trial) {
         indexed_words words = indexed_picture_words(small_picture(), 4, {pixel_format::rgb888, true, {}});
         trial.made = std::move(words.indexes);
         trial.other = std::move(words.palette);
     }},
    {"read_wave", [](library_trial& trial) { trial.text = small_sound(16, 20); },
     [](library_trial& trial) { trial.figures[0] = read_wave(trial.text).frames; }},
    {"sound_words", [](library_trial& trial) { trial.text = small_sound(24, 20); },
     [](library_trial& trial) { trial.made = sound_words(read_wave(trial.text), 2, 12); }},
};

TEST(OperationAllocationFaults, OperationsSurviveThem) {
    kvr_test::expect_allocation_faults_survived(each_call_on_each(plain_kinds, calls_of_operations));
}

TEST(OperationAllocationFaults, JoinsAndMergesSurviveThem) {
    kvr_test::expect_allocation_faults_survived(calls_of_parts);
}

TEST(OperationAllocationFaults, CheckBitsSurviveThem) {
    kvr_test::expect_allocation_faults_survived(calls_of_protection);
}

TEST(OperationAllocationFaults, ComparisonsSurviveThem) {
    kvr_test::expect_allocation_faults_survived(calls_of_comparison);
}

TEST(OperationAllocationFaults, NamesSurviveThem) {
    kvr_test::expect_allocation_faults_survived(calls_of_names);
}

TEST(OperationAllocationFaults, GeneratorsSurviveThem) {
    kvr_test::expect_allocation_faults_survived(calls_of_generators);
}

} // namespace

} // namespace kvrimage_tests
