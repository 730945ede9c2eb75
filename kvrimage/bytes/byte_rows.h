#pragma once

#include "kvrimage/diagnostics/diagnostic.h"
#include "kvrimage/exchange/write_options.h"
#include "kvrimage/image/memory_image.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

namespace kvrimage {

inline constexpr std::uint64_t byte_page_size = std::uint64_t{1} << 16U;

/// Returns the end of the row that contains @p address. Rows of @p length bytes begin at each multiple of
/// byte_page_size; the last row of a page may be shorter.
[[nodiscard]] constexpr std::uint64_t end_of_byte_row(std::uint64_t address, std::uint32_t length) {
    const auto within = static_cast<std::uint32_t>(address % byte_page_size);
    return address - within + std::min<std::uint64_t>((within / length + 1) * length, byte_page_size);
}

/// Cuts blocks of bytes of any size into rows and passes each with its address to a function. Rows are short
/// at gaps.
template <class Take>
class byte_row_cutter {
public:
    byte_row_cutter(std::uint32_t bytes_a_row, Take to) : length(bytes_a_row), take(std::move(to)) {}

    /// @param address ascends from call to call
    void add(std::uint64_t address, std::string_view bytes) {
        if (address != part_address + part.size()) {
            finish();
        }
        while (!bytes.empty()) {
            const std::uint64_t end = end_of_byte_row(address, length);
            const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(end - address, bytes.size()));
            add_to_row(address, bytes.substr(0, count), address + count == end);
            address += count;
            bytes.remove_prefix(count);
            add_whole_rows(address, bytes);
        }
    }
    /// Passes the last row on.
    void finish() {
        if (!part.empty()) {
            take(part_address, std::string_view(part));
            part.clear();
        }
    }

private:
    /// Passes whole rows from @p address on, if a row begins there, up to the end of the page. Advances both
    /// arguments.
    void add_whole_rows(std::uint64_t& address, std::string_view& bytes) {
        const std::uint64_t in_page = (byte_page_size - address % byte_page_size) % byte_page_size;
        const auto end = static_cast<std::size_t>(std::min<std::uint64_t>(in_page, bytes.size()));
        std::size_t done = 0;
        for (; part.empty() && end - done >= length; done += length) {
            take(address + done, bytes.substr(done, length));
        }
        address += done;
        bytes.remove_prefix(done);
    }
    void add_to_row(std::uint64_t address, std::string_view bytes, bool ends) {
        if (part.empty() && ends) {
            take(address, bytes);
            return;
        }
        part_address = part.empty() ? address : part_address;
        part += bytes;
        if (ends) {
            finish();
        }
    }

    std::uint32_t length;
    Take take;
    std::string part; ///< the start of a row
    std::uint64_t part_address = 0;
};

/// Numbers of bytes, rows and pages of a memory.
struct byte_row_counts {
    std::uint64_t bytes = 0;
    std::uint64_t rows = 0;      ///< rows of the given length
    std::uint64_t pages = 0;     ///< pages of byte_page_size that have bytes
    std::uint64_t stretches = 0; ///< stretches without a gap
};

/// Counts what byte_row_cutter will make of the words of @p image.
[[nodiscard]] byte_row_counts count_byte_rows(const memory_image& image, std::uint32_t length);

/// Returns the address of the last byte of the words of @p image that are set, saturated at 2^64 - 1, or
/// nothing if none is set.
[[nodiscard]] std::optional<std::uint64_t> last_byte_address(const memory_image& image);

/// Implements format::can_write: returns the diagnostic for bytes of @p image beyond @p largest, the largest
/// address.
[[nodiscard]] std::optional<diagnostic> byte_address_obstacle(const memory_image& image,
                                                              std::uint64_t largest, std::string_view title);

/// The choice of formats with records: the number of data bytes in each.
inline constexpr choice_kind record_length_choice = {"record-length", "BYTES", "",
                                                     "put BYTES data bytes into each record"};

/// Returns the record length in @p options, or @p usual if they have none. Returns nothing if it is not 1 to
/// @p most.
[[nodiscard]] std::optional<std::uint32_t> chosen_record_length(const write_options& options,
                                                                std::uint32_t usual, std::uint32_t most);
/// Returns the diagnostic for an invalid record length.
[[nodiscard]] diagnostic improper_record_length(const write_options& options, std::uint32_t most);

} // namespace kvrimage
