#pragma once

#include "kvrimage/diagnostics/diagnostic.h"
#include "kvrimage/formats/csv/csv_values.h"
#include "kvrimage/formats/format.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace kvrimage {

/// Which columns of a CSV file hold what. Columns count from 0.
struct csv_layout {
    bool has_header = false;            ///< the first row names the columns
    std::size_t columns = 0;            ///< fields of the first row
    std::optional<std::size_t> address; ///< nothing: values follow each other from address 0 on
    std::optional<std::size_t> value;   ///< nothing: all columns but that of the address, in order
};

/// The layout of @p contents, by its first rows and the choices of @p options. A diagnostic is set to @p
/// fault where it is not clear.
[[nodiscard]] csv_layout csv_layout_of(std::string_view contents, const read_options& options,
                                       const csv_value_rules& rules, std::optional<diagnostic>& fault);

/// Whether the first row of @p contents names an address and a value.
[[nodiscard]] bool names_csv_columns(std::string_view contents);

} // namespace kvrimage
