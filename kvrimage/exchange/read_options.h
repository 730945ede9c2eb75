#pragma once

#include "kvrimage/exchange/choice.h"
#include "kvrimage/image/radix.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace kvrimage {

struct format;

/// The unit that the addresses of a file count.
enum class address_unit : std::uint8_t {
    word,
    byte,
    either ///< the format does not define it, or its files differ
};

/// Describes the file to read and what the caller wants from it.
struct read_options {
    const format* as = nullptr; ///< null: determined by the file name and the contents
    /// Word width in bits. Overrides the width of the file, or supplies a missing one.
    std::optional<std::uint32_t> width = std::nullopt;
    std::optional<std::uint64_t> depth = std::nullopt; ///< in words; higher addresses are broken
    std::optional<address_unit> unit = std::nullopt;   ///< word or byte
    std::optional<byte_order> order = std::nullopt;    ///< the byte order within a word
    /// The file address that becomes word 0, in the file's own unit.
    std::optional<std::uint64_t> base = std::nullopt;
    /// Fills the missing bytes of a word that a file of bytes sets only partly.
    std::optional<std::uint8_t> pad = std::nullopt;
    /// Further options of the format; see format::read_choices.
    std::vector<choice> choices = {};
    /// The extension helps to determine the format if `as` is null. "" if there is no name.
    std::string file_name = {};
    /// Also returns the readable part of a broken file; see read_result::unreadable.
    bool keep_going = false;
    /// Maximum number of diagnostics to keep of each class. The others are only counted.
    std::size_t most_diagnostics = 100;
    /// Keeps every diagnostic with a repair, regardless of the limit, with all of its edits.
    bool wants_repairs = false;
    /// Guarantees that the contents stay unchanged while a copy of it exists. The memory of a file of bytes
    /// then refers to the contents; if null, it gets a copy.
    std::shared_ptr<const void> keeper = nullptr;
};

} // namespace kvrimage
