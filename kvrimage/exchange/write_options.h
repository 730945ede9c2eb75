#pragma once

#include "kvrimage/exchange/choice.h"
#include "kvrimage/image/radix.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace kvrimage {

struct format;

/// Describes the file to write.
struct write_options {
    const format* as = nullptr;                        ///< null: determined by the file name
    std::optional<radix> address_radix = std::nullopt; ///< default: hex, if the format has a choice
    std::optional<radix> data_radix = std::nullopt;    ///< as `address_radix`
    bool runs = true; ///< put neighboring equal words on one line if the format can
    std::optional<byte_order> order = std::nullopt; ///< the byte order within a word, for a file of bytes
    std::vector<choice> choices = {};               ///< see format::write_choices
    /// Source code formats name the memory after it if no name is given, and its extension may select the
    /// separator of a list. "" if there is no name.
    std::string file_name = {};
    /// Byte address at which the program starts. Requires a format with a `largest_start` at or above it.
    std::optional<std::uint64_t> start_address = std::nullopt;
};

} // namespace kvrimage
