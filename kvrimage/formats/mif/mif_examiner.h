#pragma once

#include "kvrimage/diagnostics/diagnostic_list.h"
#include "kvrimage/formats/mif/mif_cause.h"
#include "kvrimage/formats/mif/mif_header.h"
#include "kvrimage/formats/mif/mif_overlaps.h"
#include "kvrimage/formats/mif/mif_radix_trial.h"
#include "kvrimage/formats/mif/mif_words.h"
#include "kvrimage/image/address_range.h"
#include "kvrimage/image/word.h"

#include <optional>

namespace kvrimage {

/// Goes over a file of which it is known that something is wrong with its numbers, to say what and where.
class mif_examiner : public mif_sink {
public:
    /// @param bits width of the words; nothing: not known, values are not looked at
    mif_examiner(std::string_view contents, const mif_header& header, const mif_number_form& numbers,
                 std::optional<std::uint32_t> bits, bool wants_repairs);

    void content(const span& keyword) override;
    void statement(const mif_statement& found) override;

    void report(diagnostic_list& list);
    [[nodiscard]] bool has_negative() const noexcept { return values.has_negative; }
    /// Addresses whose values are none, or that are set to two values.
    [[nodiscard]] std::vector<address_range> in_doubt() && { return std::move(doubtful); }

private:
    struct quoted_cause {
        mif_cause found;
        std::string text;
    };
    /// A value of each kind of fault.
    struct value_causes {
        mif_cause bad_digit;
        mif_cause empty;
        mif_cause too_wide;
        mif_cause as_unsigned;
        std::string bad_value, bad_character, wide_value, unsigned_value;
        std::uint64_t wide_bits = 0;
        std::uint64_t signed_bits = 0; ///< that the unsigned values need as signed ones
        std::uint64_t most_bits = 0;
        bool has_negative = false;
    };

    void examine_addresses(const mif_statement& found, const mif_addresses& addresses);
    /// False when one of them is no word.
    bool examine_values(const mif_statement& found, const mif_addresses& addresses);
    /// False when @p value is no word.
    bool examine_value(const span& value);
    void note_unsigned(const span& where);
    void note_bad_value(const span& where, const word_fault& error);
    bool examine_prefixed(const span& number, radix stated);
    void examine_range(const mif_statement& found, const mif_addresses& addresses);
    void doubt(const mif_statement& found, const mif_addresses& addresses, std::size_t value,
               std::vector<address_range>& in) const;
    void report_addresses(diagnostic_list& list);
    void report_values(diagnostic_list& list);
    void report_unsigned(diagnostic_list& list);
    void report_prefixes(diagnostic_list& list);
    bool report_mismatch(mif_keyword keyword, const mif_radix_trial& trial, std::string_view numbers,
                         diagnostic_list& list);

    std::string_view text;
    span content_at;
    const mif_header& header;
    mif_number_form form;
    std::optional<std::uint32_t> width;
    bool all_repairs;

    mif_radix_trial address_trial;
    mif_radix_trial data_trial;
    quoted_cause no_number, negative, beyond;
    quoted_cause prefixed;       ///< numbers with a prefix
    quoted_cause maybe_prefixed; ///< those of them that are words with a don't-care digit, too
    std::string prefixed_advice;
    std::uint64_t beyond_address = 0; ///< the first one
    std::uint64_t needed_depth = 0;
    mif_cause goes_down, range_of_one, surplus;
    std::string down_first, down_last, one_first, one_last, surplus_first, surplus_last, surplus_value;
    std::uint64_t surplus_values = 0;
    std::uint64_t surplus_addresses = 0;
    value_causes values;
    mif_overlaps overlaps;
    std::vector<address_range> doubtful;
    std::vector<address_range> doubtful_if_prefixed;
    std::uint64_t value_count = 0;
    std::string word;
};

} // namespace kvrimage
