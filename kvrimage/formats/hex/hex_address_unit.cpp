#include "kvrimage/formats/hex/hex_address_unit.h"

#include "kvr/util/letter_case.h"
#include "kvrimage/diagnostics/diagnose.h"
#include "kvrimage/formats/hex/hex_layout.h"
#include "kvrimage/formats/hex/hex_records.h"
#include "kvrimage/image/address_range.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace kvrimage {

namespace {

/// Follows records that are readable with word addresses while their addresses can also count bytes.
class byte_reading_trial {
public:
    /// @param order_of_bytes nothing: unknown
    byte_reading_trial(std::uint32_t bytes_of_word, std::uint64_t first_address,
                       std::optional<byte_order> order_of_bytes)
        : bytes_per_word(bytes_of_word),
          base(first_address),
          order(order_of_bytes) {}

    /// Adds the data of a record with whole words.
    /// @return false if its address cannot count bytes
    bool take(std::uint64_t address, std::string_view digits) {
        if (digits.empty()) {
            return true;
        }
        const std::uint64_t first = address - base;
        const std::uint64_t last = first + digits.size() / 2 - 1;
        if (first % bytes_per_word != 0) {
            return false;
        }
        if (!taken.empty() && taken.back().last + 1 == first) {
            taken.back().last = last;
        } else {
            taken.push_back({first, last});
        }
        note_difference(first, digits);
        return true;
    }

    /// Returns whether all records can have byte addresses and give different words then. Ends the trial.
    [[nodiscard]] bool makes_other_words() {
        std::ranges::sort(taken, {}, &address_range::first);
        const auto overlap =
            std::ranges::adjacent_find(taken, [](const address_range& one, const address_range& next) {
                return next.first <= one.last;
            });
        return overlap == taken.end() && !first_digits.empty();
    }

    /// Returns "--address-unit word (word 8 is 00500113), --address-unit byte --endian little (word 2 is
    /// 13015000) or --address-unit byte --endian big (word 2 is 00500113)".
    [[nodiscard]] std::string readings() const {
        std::string text =
            fmt::format("add --address-unit word (word {} is {})", word_in_words, first_digits);
        for (const byte_order each : {byte_order::little, byte_order::big}) {
            if (order.value_or(each) == each) {
                text += fmt::format("{} --address-unit byte --endian {} (word {} is {})",
                                    each == byte_order::little && !order ? "," : " or",
                                    each == byte_order::little ? "little" : "big", word_in_bytes,
                                    in_byte_order(first_digits, each));
            }
        }
        return text;
    }

private:
    /// Records the first different word, if @p digits contain it.
    void note_difference(std::uint64_t first, std::string_view digits) {
        const std::size_t digits_per_word = 2 * std::size_t{bytes_per_word};
        for (std::uint64_t index = 0; !digits.empty(); ++index, digits.remove_prefix(digits_per_word)) {
            std::string word(digits.substr(0, digits_per_word));
            std::ranges::transform(word, word.begin(), kvr::upper_case_of);
            const std::uint64_t by_bytes = first / bytes_per_word + index;
            if (!first_digits.empty() && by_bytes >= word_in_bytes) {
                return;
            }
            if (first != 0 || (order != byte_order::big && in_byte_order(word, byte_order::little) != word)) {
                word_in_words = first + index;
                word_in_bytes = by_bytes;
                first_digits = std::move(word);
            }
        }
    }

    std::uint32_t bytes_per_word;
    std::uint64_t base;
    std::optional<byte_order> order;
    std::vector<address_range> taken; ///< byte ranges in file order
    std::uint64_t word_in_words = 0;  ///< address of the first different word if addresses count words
    std::uint64_t word_in_bytes = 0;  ///< the same if they count bytes
    std::string first_digits;         ///< of that word, as in the file; "" if there is none
};

/// Passes the data records before the end record to @p trial. Returns false if it rejects one.
bool takes_all_records(byte_reading_trial& trial, std::string_view contents) {
    hex_offset offset;
    for (hex_parser parser(contents); parser.next();) {
        const hex_line& line = parser.line();
        const hex_record& record = line.record;
        if (record.type == hex_record_type::end) {
            break;
        }
        if (sets_offset(record.type)) {
            offset.take(record.type, record.data());
        } else if (record.type == hex_record_type::data &&
                   !trial.take(offset.value() + record.address, record.data())) {
            return false;
        }
    }
    return true;
}

} // namespace

std::optional<diagnostic> doubt_of_address_unit(std::string_view contents, const read_options& options) {
    const std::uint32_t width = options.width.value_or(bits_per_byte);
    const bool is_of_bytes = width > bits_per_byte && width % bits_per_byte == 0;
    if (options.as != nullptr || options.unit || !is_of_bytes) {
        return std::nullopt;
    }
    byte_reading_trial trial(width / bits_per_byte, options.base.value_or(0), options.order);
    if (!takes_all_records(trial, contents) || !trial.makes_other_words()) {
        return std::nullopt;
    }
    diagnostic doubt = diagnose::address_unit_open({}, width);
    doubt.hint = trial.readings();
    return doubt;
}

} // namespace kvrimage
