#pragma once

#include "kvrimage/diagnostics/diagnostic_id.h"
#include "kvrimage/export.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kvrimage {

/// The effect of a diagnostic on the use of the file.
enum class diagnostic_class : std::uint8_t {
    broken,   ///< the meaning is wrong or ambiguous; no command accepts the file
    consumer, ///< the meaning is clear, but the named consumer rejects the file or reads other words
    suspect   ///< the file is readable, but probably not as its author intended
};

/// The properties of a kind of diagnostic, from the tables in diagnostics.txt.
struct diagnostic_kind {
    std::string_view code;          ///< stable across versions, for example "too-wide"
    diagnostic_class level;         ///< the class of each diagnostic of this kind
    std::string_view documentation; ///< one sentence
    std::string_view example;       ///< contents that cause the diagnostic
};

[[nodiscard]] KVRIMAGE_API const diagnostic_kind& about(diagnostic_id id) noexcept;

/// A place in a file. All members are 0 for the file as a whole.
struct place {
    std::uint64_t line = 0;   ///< from 1
    std::uint64_t column = 0; ///< byte within the line, from 1
    std::uint64_t offset = 0; ///< of the first byte, from the start of the file
    std::uint64_t length = 0; ///< in bytes

    /// Compares all members.
    friend bool operator==(const place&, const place&) = default;
};

/// Replaces `length` bytes of a file from `offset` on.
struct text_edit {
    std::uint64_t offset = 0; ///< of the first replaced byte
    std::uint64_t length = 0; ///< bytes to replace; 0 inserts
    std::string replacement;  ///< the new text; "" deletes

    /// Compares all members.
    friend bool operator==(const text_edit&, const text_edit&) = default;
};

/// A fault in a file, or contents that its author probably did not intend.
struct diagnostic {
    diagnostic_id id = {};                ///< see about()
    place where;                          ///< the first place with this fault
    std::vector<place> more;              ///< further places; with `where` at most ten
    std::uint64_t count = 1;              ///< number of places, including those not listed
    std::optional<std::uint64_t> address; ///< of the image word that cannot be written
    /// Quotes bytes of the file unescaped, including control characters. Long quotes are cut.
    std::string message;
    std::string hint;     ///< what to write instead, or what a consumer does with the text; may be ""
    std::string option;   ///< tool option that resolves the fault, for example "--endian little"; else ""
    std::string consumer; ///< name of the consumer ("kvr") for class `consumer`; else ""
    std::string repair;   ///< describes `fix` ("checksum E9 is now E8"); "" without a fix
    std::vector<text_edit> fix; ///< in order, without overlaps; empty unless the repair is certain
};

} // namespace kvrimage
