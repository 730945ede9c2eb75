#include "fuzz/library_targets.h"

#include "fuzz/target.h"

#include <array>

namespace kvr_fuzz {

namespace {

// If an input reaches thousands of features, weighing them takes longer than running it: such targets have no
// entropic scheduling.
constexpr std::array targets = {
    target{"mif_reader", try_mif_reader, "-max_len=1024 -entropic=0"},
    target{"hex_reader", try_hex_reader, "-max_len=1024 -entropic=0"},
    target{"rif_reader", try_rif_reader, "-max_len=1024 -entropic=0"},
    target{"radix_conversion", try_radix_conversion, "-max_len=1500 -len_control=1000"},
    target{"fixed_point", try_fixed_point, "-max_len=80"},
    target{"tokenizer", try_tokenizer, "-max_len=120"},
    target{"list_file", try_list_file, "-max_len=1000"},
    target{"generated_file", try_generated_file, "-max_len=9000 -len_control=1000"},
    target{"word_store", try_word_store, "-max_len=2000 -entropic=0"},
    target{"comment_store", try_comment_store, "-max_len=2000 -entropic=0"},
};

} // namespace

std::span<const target> all_targets() noexcept {
    return targets;
}

} // namespace kvr_fuzz
