#pragma once

#include "kvr/memory/store/address_set.h"
#include "kvr/memory/store/word_store.h"
#include "kvrimage/diagnostics/diagnostic_list.h"
#include "kvrimage/formats/mif/mif_cause.h"
#include "kvrimage/formats/mif/mif_words.h"
#include "kvrimage/image/address_range.h"

namespace kvrimage {

/// Finds the statements of a file that set words which an earlier one has set. A single address after a range
/// that holds it is meant so; every other one is found when it sets another value, and a single address that
/// is set twice in any case.
class mif_overlaps {
public:
    mif_overlaps(std::string_view contents, const mif_number_form& numbers, bool wants_repairs);

    /// Takes a statement of which the addresses are below the depth.
    void take(const mif_statement& found, const mif_addresses& addresses);
    /// @param width of the words, at which values are compared; 0: as texts
    void compare_at(std::uint32_t bits) { width = bits; }

    void report(diagnostic_list& list);
    /// Single addresses that are set to two values.
    [[nodiscard]] const std::vector<address_range>& in_doubt() const noexcept { return doubtful; }

private:
    void add_single(const mif_statement& found, std::uint32_t address);
    void add_list(const mif_statement& found, std::uint32_t first, std::uint32_t last);
    void add_range(const mif_statement& found, std::uint32_t first, std::uint32_t last);
    [[nodiscard]] bool differ(std::string_view left, std::string_view right) const;
    [[nodiscard]] std::optional<std::uint32_t> first_difference(std::uint32_t first,
                                                                std::uint32_t last) const;
    void find_overlap(const mif_statement& found, std::uint32_t first, std::uint32_t address);

    std::string_view text;
    mif_number_form form;
    bool all_repairs;
    std::uint32_t width = 0;
    kvr::word_store words;
    kvr::address_set singles;
    kvr::address_set lists;
    std::vector<std::string_view> values;
    mif_cause twice, again, over;
    std::string twice_address, twice_earlier, twice_value, again_address, over_address, over_earlier,
        over_value;
    std::vector<address_range> doubtful;
};

} // namespace kvrimage
