// Each allocation of words, memories, their bytes and their numbers fails, one per trial.

#include "kvrimage/bytes/image_bytes.h"
#include "kvrimage/image/fixed_point.h"
#include "kvrimage/image/image_part.h"
#include "kvrimage/image/numbers.h"
#include "tests/kvrimage/faults/library_trial.h"
#include "tests/kvrimage/faults/sample_images.h"

#include <gtest/gtest.h>

namespace kvrimage_tests {

namespace {

using namespace kvrimage;

constexpr std::string_view digits_of_a_wide_word = "0123456789ABCDEF01234567";

const library_call calls_of_words[] = {
    {"word", prepare_nothing, [](library_trial& trial) { trial.value = word(96); }},
    {"word of 64 bits", prepare_nothing, [](library_trial& trial) { trial.value = word(64); }, false},
    {"word::of", prepare_nothing, [](library_trial& trial) { trial.value = word::of(5, 96); }},
    {"word::of_signed", prepare_nothing, [](library_trial& trial) { trial.value = word::of_signed(-5, 96); }},
    {"word::parse", prepare_nothing,
     [](library_trial& trial) { trial.value = word::parse(digits_of_a_wide_word, radix::hex, 96).value; }},
    {"word::parse, decimal", prepare_nothing,
     [](library_trial& trial) {
         trial.value = word::parse("-1234567890123456789012345", radix::dec, 96).value;
     }},
    {"word::parse, too wide", prepare_nothing,
     [](library_trial& trial) {
         trial.figures[0] = word::parse(digits_of_a_wide_word, radix::hex, 70).fault->bits_needed;
     },
     false},
    {"word::of_bytes", prepare_nothing,
     [](library_trial& trial) { trial.value = word::of_bytes("0123456789ab", byte_order::big, 96); }},
    {"word::to_text", [](library_trial& trial) { trial.value = wide_word(5); },
     [](library_trial& trial) { trial.text = trial.value->to_text(radix::dec).value(); }},
    {"word::append_text",
     [](library_trial& trial) {
         trial.value = wide_word(5);
         trial.text = "before";
     },
     [](library_trial& trial) {
         if (trial.figures[0] == 0) {
             trial.figures[0] = trial.value->append_text(radix::oct, trial.text) ? 1 : 2;
         }
     }},
    {"word::to_bytes", [](library_trial& trial) { trial.value = word::of(5, 256); },
     [](library_trial& trial) { trial.text = trial.value->to_bytes(byte_order::little).value(); }},
    {"parse_fixed_point", prepare_nothing,
     [](library_trial& trial) {
         trial.value = parse_fixed_point("-3.1415926535897932384626433832795", {4, 92}).value;
     }},
    {"parse_fixed_point, saturated", prepare_nothing,
     [](library_trial& trial) {
         trial.value = parse_fixed_point("1e40", {4, 92}, rounding::even, true).value;
     }},
    {"fixed_point_of_name and radix_of_name", prepare_nothing,
     [](library_trial& trial) {
         trial.figures[0] = fixed_point_of_name("fixed:8.24")->bits();
         trial.figures[1] = radix_of_name("HEX") == radix::hex ? 1 : 0;
     },
     false},
};

constexpr image_kind all_kinds[] = {{'w', "wide words", image_of_wide_words},
                                    {'b', "bytes", image_held_as_bytes},
                                    {'v', "varied words", image_of_varied_words},
                                    {'x', "don't care", image_with_dont_care},
                                    {'d', "the deepest", deepest_image}};

constexpr image_call calls_of_images[] = {
    {"copy", [](library_trial& trial) { trial.made.emplace(*trial.image); }},
    {"[]", [](library_trial& trial) { trial.value = (*trial.image)[12]; }, "bvd"},
    {"set", [](library_trial& trial) { trial.image->set(12, word_for(trial, 0xABCD)); }, "v"},
    {"fill",
     [](library_trial& trial) {
         trial.image->fill({9, trial.image->last_address()},
                           std::vector{word_for(trial, 1), word_for(trial, 2), word_for(trial, 2)});
     }},
    {"unset",
     [](library_trial& trial) {
         trial.image->unset({12, 20});
     }},
    {"fill_unset", [](library_trial& trial) { trial.image->fill_unset(word_for(trial, 9)); }, "v"},
    {"resize, deeper", [](library_trial& trial) { trial.image->resize(deepest_memory); }, "d"},
    {"resize, less deep", [](library_trial& trial) { trial.image->resize(6); }, "wvxd"},
    {"bounds",
     [](library_trial& trial) {
         trial.figures[0] = trial.image->bounds()->first;
         trial.figures[1] = trial.image->bounds()->last;
     },
     "wvxd"},
    {"repetition_at",
     [](library_trial& trial) {
         trial.figures[0] = trial.image->repetition_at(11).last;
         trial.figures[1] = trial.image->repetition_at(11).period;
     },
     "wbvxd"},
    {"count_set", [](library_trial& trial) { trial.figures[0] = trial.image->count_set(); }, "wvxd"},
    {"count_set of a range",
     [](library_trial& trial) {
         trial.figures[0] = trial.image->count_set({10, 20});
     },
     "wvxd"},
    {"runs",
     [](library_trial& trial) {
         trial.figures[0] = 0;
         for (const run& each : trial.image->runs()) {
             trial.figures[0] = 5 * trial.figures[0] + each.addresses.last + (each.value ? 1 : 0);
         }
     },
     "bvd"},
    {"runs of a range",
     [](library_trial& trial) {
         trial.figures[0] = 0;
         for (const run& each : trial.image->runs({10, 20})) {
             trial.figures[0] = 5 * trial.figures[0] + each.addresses.last + (each.value ? 1 : 0);
         }
     },
     "bvd"},
    {"comparison",
     [](library_trial& trial) {
         const memory_image& same = *trial.image;
         trial.figures[0] = *trial.image == same ? 1 : 2;
     },
     "wvxd"},
    {"cut_out",
     [](library_trial& trial) {
         trial.made = cut_out(*trial.image, {10, 20});
     }},
    {"copy_is_set",
     [](library_trial& trial) {
         std::array<bool, 11> is_set{};
         copy_is_set(cut_out(*trial.image, {10, 20}), is_set);
         for (std::size_t index = 0; index < is_set.size(); ++index) {
             trial.figures[index] = is_set[index] ? 1 : 0;
         }
     }},
    {"numbers_in_place",
     [](library_trial& trial) { trial.figures[0] = numbers_in_place(*trial.image) ? 1 : 2; }, "wvxd"},
};

constexpr image_kind kinds_of_16_bits[] = {{'b', "bytes", image_held_as_bytes},
                                           {'v', "varied words", image_of_varied_words},
                                           {'d', "the deepest", deepest_image}};

constexpr image_call calls_of_numbers[] = {
    {"copy_to", [](library_trial& trial) { trial.image->copy_to(8, std::span(trial.figures).first(20), 7); },
     "bvd"},
    {"copy_numbers",
     [](library_trial& trial) {
         std::array<std::uint16_t, 20> numbers{};
         copy_numbers(*trial.image, 8, numbers, 7);
         std::ranges::copy(numbers, trial.figures.begin());
     },
     "bvd"},
};

/// The words of the second image overlap those of the first.
template <memory_image (*Make)()>
void overlaid_images(library_trial& trial) {
    trial.image = Make();
    trial.other = memory_image(trial.image->width(), 9, 12);
    trial.other->fill({13, 15}, std::vector{word_for(trial, 7)});
    trial.other->set(20, word_for(trial, 8));
}

void overlay_both(library_trial& trial) {
    overlay(*trial.image, *trial.other);
}

/// An iterator at the first of several runs.
template <memory_image (*Make)()>
void walk_over_runs(library_trial& trial) {
    trial.image = Make();
    trial.walk = trial.image->runs().begin();
    ++trial.walk;
}

/// Advances to the next run, unless it has already been read.
void next_run(library_trial& trial) {
    if (trial.figures[0] == 0) {
        ++trial.walk;
        trial.figures[0] = 1;
    }
}

template <memory_image (*Make)()>
void image_to_assign(library_trial& trial) {
    trial.image = image_of_wide_words();
    trial.other = Make();
}

void assign_other(library_trial& trial) {
    *trial.image = *trial.other;
}

const library_call calls_of_two_images[] = {
    {"memory_image", prepare_nothing,
     [](library_trial& trial) { trial.made = memory_image(96, deepest_memory); }},
    {"assignment of wide words", image_to_assign<image_of_varied_words>, assign_other},
    {"assignment of bytes", image_to_assign<image_held_as_bytes>, assign_other},
    {"assignment of the deepest", image_to_assign<deepest_image>, assign_other},
    {"overlay over wide words", overlaid_images<image_of_wide_words>, overlay_both},
    {"overlay over bytes", overlaid_images<image_held_as_bytes>, overlay_both},
    {"overlay over varied words", overlaid_images<image_of_varied_words>, overlay_both},
    {"next run of wide words", walk_over_runs<image_of_wide_words>, next_run},
    {"next run of words with don't-care bits", walk_over_runs<image_with_dont_care>, next_run},
};

std::string some_bytes() {
    std::string bytes;
    for (unsigned number = 0; number < 40; ++number) {
        bytes += static_cast<char>(number % 5 == 0 ? 0 : number * 37);
    }
    return bytes;
}

template <std::uint32_t Width, byte_order Order>
void take_bytes(library_trial& trial) {
    trial.made = image_of_bytes(trial.text, {Width, Order, 8, std::uint8_t{0xFF}});
}

template <memory_image (*Make)(), byte_order Order>
void give_bytes(library_trial& trial) {
    trial.text = bytes_of_image(*trial.image, Order, word_for(trial, 3));
}

void bytes_to_take(library_trial& trial) {
    trial.text = some_bytes();
}

template <memory_image (*Make)()>
void image_to_give(library_trial& trial) {
    trial.image = Make();
}

constexpr auto little = byte_order::little;
constexpr auto big = byte_order::big;

const library_call calls_of_bytes[] = {
    {"image_of_bytes, 96 bits", bytes_to_take, take_bytes<96, little>},
    {"image_of_bytes, 96 bits, big", bytes_to_take, take_bytes<96, big>},
    {"image_of_bytes, 16 bits", bytes_to_take, take_bytes<16, little>},
    {"bytes_of_image of wide words", image_to_give<image_of_wide_words>,
     give_bytes<image_of_wide_words, big>},
    {"bytes_of_image of bytes", image_to_give<image_held_as_bytes>, give_bytes<image_held_as_bytes, little>},
    {"bytes_of_image of bytes, the other order", image_to_give<image_held_as_bytes>,
     give_bytes<image_held_as_bytes, big>},
    {"bytes_of_image of varied words", image_to_give<image_of_varied_words>,
     give_bytes<image_of_varied_words, big>},
};

TEST(ImageAllocationFaults, WordsSurviveThem) {
    kvr_test::expect_allocation_faults_survived(calls_of_words);
}

TEST(ImageAllocationFaults, MembersOfMemoriesSurviveThem) {
    kvr_test::expect_allocation_faults_survived(each_call_on_each(all_kinds, calls_of_images));
}

TEST(ImageAllocationFaults, NumbersSurviveThem) {
    kvr_test::expect_allocation_faults_survived(each_call_on_each(kinds_of_16_bits, calls_of_numbers));
}

TEST(ImageAllocationFaults, TwoMemoriesSurviveThem) {
    kvr_test::expect_allocation_faults_survived(calls_of_two_images);
}

TEST(ImageAllocationFaults, BytesSurviveThem) {
    kvr_test::expect_allocation_faults_survived(calls_of_bytes);
}

} // namespace

} // namespace kvrimage_tests
