#pragma once

#include "kvrimage/diagnostics/diagnostic.h"
#include "kvrimage/exchange/read_options.h"
#include "kvrimage/image/address_range.h"
#include "kvrimage/image/memory_image.h"
#include "kvrimage/image/radix.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace kvrimage {

/// The confidence of a guess from a file's contents.
enum class certainty : std::uint8_t { no, possible, likely, certain };

/// Information in a file besides its words.
struct named_fact {
    std::string name;  ///< "start address"
    std::string value; ///< "80000000"
};

/// Properties of a file.
struct file_facts {
    const format* as = nullptr;         ///< the format used for reading; null if none fits
    std::optional<radix> address_radix; ///< empty if the format has only one
    std::optional<radix> data_radix;    ///< as `address_radix`
    /// The address unit used for reading, word or byte; empty if the format has only one.
    std::optional<address_unit> unit;
    std::optional<byte_order> order; ///< of the bytes of a word, if addresses count bytes
    /// The origin of the width if the file does not state it ("the longest word"); else "".
    std::string width_source;
    std::uint64_t diagnostics_left_out = 0; ///< those beyond read_options::most_diagnostics
    bool has_comments = false;              ///< the file has at least one comment
    /// The confidence that the contents have this format, judged by the part examined.
    certainty how_sure = certainty::no;
    std::vector<named_fact> more; ///< further information of the format, to show to the user
    /// Byte address at which the program starts; empty if the file does not state it.
    std::optional<std::uint64_t> start_address = std::nullopt;
};

/// The contents of a file and its faults.
struct read_result {
    /// Empty if a diagnostic is of class broken, unless keep_going is set.
    std::optional<memory_image> image;
    file_facts facts;                    ///< as far as known; also set without an image
    std::vector<diagnostic> diagnostics; ///< in file order, those of the whole file last
    /// With keep_going: the addresses of ambiguous words, which are not set.
    std::vector<address_range> unreadable;
};

} // namespace kvrimage
