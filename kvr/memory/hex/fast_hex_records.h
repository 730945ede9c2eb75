#pragma once

#include "kvr/memory/hex/fast_hex_record.h"
#include "kvr/memory/hex/hex_word_storer.h"
#include "kvr/memory/io/predicted_address.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kvr {

/// Fast path of the hex_reader for consecutive data records of one word, each with the form of the previous
/// record and the next address. It compares the header of a record with the expected one and parses data and
/// checksum only.
class fast_hex_records {
public:
    /// @param fast_words receives the words; must outlive this object
    fast_hex_records(fast_hex_words& fast_words, std::uint32_t word_size) noexcept
        : fast(fast_words),
          word_digits(word_size % 8 == 0 ? word_size / 4 : 0) {}

    /// Consecutive records of `line_size` characters each. The first has the address `first`.
    struct run {
        std::uint32_t first;
        std::uint32_t count;
        std::size_t line_size;
    };

    /// Reads records at the front of @p lines, which are whole lines. Their addresses are relative to
    /// @p address_offset. Reads none if the first one does not have the form of the previous record.
    [[nodiscard]] run read(std::string_view lines, std::uint32_t address_offset);

    /// Reports a plain data record that read() has not accepted. @p line includes the line end.
    void learn(const hex_record& record, std::string_view line) noexcept {
        if (record.data_bytes * std::size_t{2} == word_digits && word_digits <= longest_word) {
            line_size = line.size();
            predicted.learn(line.substr(0, 9), record.address(), 16, record.word_address, 1);
        }
    }

private:
    static constexpr std::size_t longest_word = 64; ///< in digits

    fast_hex_words& fast;
    std::size_t word_digits; ///< 0 if the words are not whole bytes
    std::size_t line_size = 0;
    predicted_address predicted; ///< predicts the text before the data
};

} // namespace kvr
