#pragma once

#include "kvr/memory/mif/fast_mif_lines.h"
#include "kvr/memory/mif/mif_memory.h"
#include "kvr/memory/store/address_set.h"
#include "kvrimage/formats/mif/mif_parser.h"
#include "kvrimage/image/image_words.h"
#include "kvrimage/image/radix.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace kvrimage {

/// How to read the numbers of a MIF.
struct mif_number_form {
    radix addresses = radix::hex;
    radix data = radix::hex;
    std::uint64_t depth = 0;
    std::uint64_t base = 0;       ///< address from which messages count the depth
    bool has_given_depth = false; ///< the caller states the depth, overriding the file
};

/// The addresses that a statement sets.
struct mif_addresses {
    enum class fault : std::uint8_t { none, no_number, negative, beyond, goes_down };

    fault what = fault::none;
    bool at_last = false; ///< the fault is in the upper end
    std::uint64_t first = 0;
    std::uint64_t last = 0; ///< the last address set; valid if `fault` is none or `beyond`
};
[[nodiscard]] mif_addresses addresses_of(const mif_statement& statement, std::string_view contents,
                                         const mif_number_form& form);

/// Collects the words of a MIF as their texts in the file.
class mif_words {
public:
    mif_words(std::string_view contents, const mif_number_form& numbers);

    void set(const mif_statement& statement);
    /// Reads regular lines from @p offset, the start of a line, on. Returns the number of bytes read.
    std::size_t set_lines(std::size_t offset);

    /// Returns whether a statement was skipped because of invalid addresses.
    [[nodiscard]] bool has_bad_statement() const noexcept { return bad_statement; }
    /// Returns whether an address may have been set twice, except by a single address after a range.
    [[nodiscard]] bool has_overlap() const noexcept { return overlap; }
    [[nodiscard]] kvr::word_store take() { return std::move(memory.data_words); }

private:
    void note_single(std::uint32_t address);
    void note_list(std::uint32_t first, std::uint64_t count);
    void note_range(std::uint32_t first, std::uint32_t last);
    void note_lists_of(std::string_view lines);

    std::string_view text;
    mif_number_form form;
    kvr::mif_memory memory; ///< its address set contains addresses of single values
    kvr::fast_mif_lines fast_lines;
    kvr::address_set listed; ///< addresses set by lists
    bool has_lists = false;
    std::size_t whole_lines_end;
    std::vector<std::string_view> values;
    bool bad_statement = false;
    bool overlap = false;
};

} // namespace kvrimage
