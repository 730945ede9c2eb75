#pragma once

#include "kvrimage/diagnostics/diagnostic_id.h"
#include "kvrimage/export.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kvrimage {

/// What a diagnostic means for those who use the file.
enum class diagnostic_class : std::uint8_t {
    broken,   ///< the meaning is wrong or in doubt: no command takes the file
    consumer, ///< the meaning is clear, but a named consumer refuses the file or reads other words
    suspect   ///< the file is read, and is probably not meant so
};

/// What diagnostics of one kind have in common; from the tables diagnostics.txt.
struct diagnostic_kind {
    std::string_view code;          ///< "too-wide": stays the same from version to version
    diagnostic_class level;         ///< what each of the kind means
    std::string_view documentation; ///< one sentence
    std::string_view example;       ///< what a file with it may hold
};

[[nodiscard]] KVRIMAGE_API const diagnostic_kind& about(diagnostic_id id) noexcept;

/// Where something is in a file. All 0: the file as a whole.
struct place {
    std::uint64_t line = 0;   ///< from 1
    std::uint64_t column = 0; ///< byte in the line, from 1
    std::uint64_t offset = 0; ///< bytes before it in the file
    std::uint64_t length = 0; ///< bytes

    /// The same in all four.
    friend bool operator==(const place&, const place&) = default;
};

/// New text for `length` bytes of a file from `offset` on.
struct text_edit {
    std::uint64_t offset = 0; ///< bytes before what goes
    std::uint64_t length = 0; ///< bytes that go; 0: nothing does
    std::string replacement;  ///< what stands there instead; "": nothing

    /// The same in all three.
    friend bool operator==(const text_edit&, const text_edit&) = default;
};

/// Something that is wrong with a file, or that its author hardly meant.
struct diagnostic {
    diagnostic_id id = {};                ///< its kind; about() says more
    place where;                          ///< the first place of this cause
    std::vector<place> more;              ///< further ones, up to ten with the first
    std::uint64_t count = 1;              ///< of all places
    std::optional<std::uint64_t> address; ///< of a word of an image that cannot be written; else nothing
    /// Quotes the file's bytes as they are, also control characters; long quotes are cut.
    std::string message;
    std::string hint;           ///< what to write instead, or what a consumer makes of it; may be ""
    std::string option;         ///< of the tool, "--endian little", where giving it is a way out; else ""
    std::string consumer;       ///< of class `consumer`: its name ("kvr"); else ""
    std::string repair;         ///< what `fix` does ("checksum E9 is now E8"); "" without a fix
    std::vector<text_edit> fix; ///< in order, not overlapping; empty unless the repair is certain
};

} // namespace kvrimage
