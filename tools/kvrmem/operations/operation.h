#pragma once

#include "kvrimage/image/address_range.h"
#include "kvrimage/operations/reshape.h"

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace kvrmem {

// What the command line asks for, one type each. Texts are as the user wrote them: what they mean depends on
// the words that the operation meets.

struct only_words {
    std::vector<kvrimage::address_range> ranges;
};
struct except_words {
    std::vector<kvrimage::address_range> ranges;
};
struct move_words {
    std::uint64_t to;
};
struct fill_rest {
    std::string value;
};
struct change_depth {
    std::uint64_t depth;
};
struct mask_words {
    std::string bits;
};
struct reverse_bits {};
struct swap_bytes {};
struct invert_words {};
struct reshape_words {
    std::uint32_t width;
    std::optional<kvrimage::bit_order> order = std::nullopt; ///< low_first where it was not given
    std::optional<std::string> pad = std::nullopt;
};
struct protect_words {
    std::string scheme;
};
struct strip_protection {
    std::string scheme;
};

/// One thing that is done to a memory.
struct operation {
    std::string title; ///< "--only 0..7", as messages name it
    std::variant<only_words, except_words, move_words, fill_rest, change_depth, mask_words, reverse_bits,
                 swap_bytes, invert_words, reshape_words, protect_words, strip_protection>
        what;
};

/// The operation that --order and --pad after it belong to: the last --reshape of @p operations; null when
/// there is none.
[[nodiscard]] reshape_words* last_reshape(std::vector<operation>& operations);

/// True when one of @p operations is anything but --fill, so that a --depth after it is an operation, too.
/// One after --fill alone says how the file is read.
[[nodiscard]] bool change_words(const std::vector<operation>& operations);

/// True when after @p operations a byte of the memory may have another address.
[[nodiscard]] bool move_addresses(const std::vector<operation>& operations);

} // namespace kvrmem
