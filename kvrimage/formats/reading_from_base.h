#pragma once

#include "kvrimage/formats/format.h"

#include <cstdint>
#include <optional>
#include <string_view>

namespace kvrimage {

/// What a format does with addresses as they are in the file: its format::read and format::find_word but for
/// the base of the options. Reading gets the depth with the base, and takes it off in its messages.
struct reading_from_zero {
    read_result (*read)(std::string_view contents, const read_options& options);
    std::optional<place> (*find_word)(std::string_view contents, const read_options& options,
                                      std::uint64_t address);
};

/// format::read with the base of @p options: the word there becomes word 0. A depth in the options counts
/// from the base; one that the file states loses what is below it. Words below the base are broken.
[[nodiscard]] read_result read_from_base(std::string_view contents, const read_options& options,
                                         const reading_from_zero& as);

/// format::find_word with the base of @p options.
[[nodiscard]] std::optional<place> find_from_base(std::string_view contents, const read_options& options,
                                                  std::uint64_t address, const reading_from_zero& as);

} // namespace kvrimage
