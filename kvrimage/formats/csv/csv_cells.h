#pragma once

#include "kvrimage/diagnostics/span.h"
#include "kvrimage/formats/csv/csv_layout.h"
#include "kvrimage/formats/csv/csv_parser.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>
#include <vector>

namespace kvrimage {

/// A value of a CSV file, or a fault of a row.
struct csv_cell {
    enum class kind : std::uint8_t {
        value,       ///< not yet checked
        address,     ///< a valid address field
        bad_address, ///< an invalid address field
        empty,       ///< empty field for a value
        extra,       ///< the first surplus field; its row has no other cells
        after_quote, ///< see csv_piece
        open_quote
    } what = kind::value;
    span where;
    std::optional<std::uint64_t> address; ///< of a value or address cell; nothing after an unreadable address
    std::size_t number = 0;               ///< of the column, from 0; for `extra` the number of fields
};

/// Calls @p take with the cells of @p contents, in order.
void for_each_csv_cell(std::string_view contents, const csv_layout& layout,
                       const std::function<void(const csv_cell&)>& take);

} // namespace kvrimage
