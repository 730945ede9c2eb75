#pragma once

#include "kvrimage/image/address_range.h"
#include "kvrimage/operations/reshape.h"

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace kvrmem {

// The operations of the command line, with one type each. Texts are as given by the user: their meaning
// depends on the words that they apply to.

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
    std::optional<kvrimage::bit_order> order = std::nullopt; ///< default: low_first
    std::optional<std::string> pad = std::nullopt;
};
struct protect_words {
    std::string scheme;
};
struct strip_protection {
    std::string scheme;
};

/// An operation on a memory.
struct operation {
    std::string title; ///< "--only 0..7", for messages
    std::variant<only_words, except_words, move_words, fill_rest, change_depth, mask_words, reverse_bits,
                 swap_bytes, invert_words, reshape_words, protect_words, strip_protection>
        what;
};

/// Returns the operation that a following --order or --pad modifies: the last --reshape of @p operations;
/// null if there is none.
[[nodiscard]] reshape_words* last_reshape(std::vector<operation>& operations);

/// Returns whether @p operations has anything but --fill. A following --depth is an operation then; otherwise
/// it is an option for reading.
[[nodiscard]] bool change_words(const std::vector<operation>& operations);

/// Returns whether @p operations may change the address of a byte.
[[nodiscard]] bool move_addresses(const std::vector<operation>& operations);

} // namespace kvrmem
