#pragma once

#include "kvrimage/diagnostics/diagnostic.h"
#include "kvrimage/formats/csv/csv_values.h"
#include "kvrimage/formats/format.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace kvrimage {

/// The roles of the columns of a CSV file. Columns are counted from 0.
struct csv_layout {
    bool has_header = false;            ///< the first row has the column names
    std::size_t columns = 0;            ///< number of fields of the first row
    std::optional<std::size_t> address; ///< nothing: values are consecutive from address 0 on
    std::optional<std::size_t> value;   ///< nothing: all columns except the address, in order
};

/// Determines the layout of @p contents from its first rows and the options. Sets @p fault to a diagnostic if
/// the layout is ambiguous.
[[nodiscard]] csv_layout csv_layout_of(std::string_view contents, const read_options& options,
                                       const csv_value_rules& rules, std::optional<diagnostic>& fault);

/// Returns whether the first row of @p contents names an address and a value.
[[nodiscard]] bool names_csv_columns(std::string_view contents);

} // namespace kvrimage
