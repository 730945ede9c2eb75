#pragma once

#include "kvrimage/formats/format.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace kvrimage {

/// The functions format::read and format::find_word of a format, for file addresses without a base. Reading
/// gets a depth that includes the base, and subtracts the base in its messages.
struct reading_from_zero {
    read_result (*read)(std::string_view contents, const read_options& options);
    std::optional<place> (*find_word)(std::string_view contents, const read_options& options,
                                      std::uint64_t address);
};

/// Implements format::read with the base of @p options: the word at the base becomes word 0. A depth in the
/// options counts from the base; a depth stated in the file is reduced by the base. Words below the base are
/// broken.
[[nodiscard]] read_result read_from_base(std::string_view contents, const read_options& options,
                                         const reading_from_zero& as);

/// Implements format::find_word with the base of @p options.
[[nodiscard]] std::optional<place> find_from_base(std::string_view contents, const read_options& options,
                                                  std::uint64_t address, const reading_from_zero& as);

} // namespace kvrimage
