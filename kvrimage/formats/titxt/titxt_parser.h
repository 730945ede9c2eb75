#pragma once

#include "kvrimage/diagnostics/span.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string_view>

namespace kvrimage {

/// A piece of a TI-TXT file.
struct titxt_piece {
    enum class kind : std::uint8_t {
        address,
        bytes,       ///< some that follow each other
        end,         ///< "q"
        bad_address, ///< what begins with "@" and is no address
        bad_byte,    ///< what is none of all these
    };
    kind what = kind::end;
    span where;
    std::uint32_t address = 0;
    std::string_view bytes; ///< valid until the parser goes on
};

/// Goes over the addresses, bytes and ends of a TI-TXT file. It reports what there is and decides nothing:
/// what follows the end is parsed like all else.
class titxt_parser {
public:
    /// @param of kept alive by the caller
    explicit titxt_parser(std::string_view of) : contents(of) {}

    /// Goes to the next piece; false at the end.
    bool next();
    [[nodiscard]] const titxt_piece& piece() const noexcept { return current; }

private:
    [[nodiscard]] bool parse_bytes();
    void parse_other();
    bool parse_address(std::string_view digits);

    std::string_view contents;
    std::size_t position = 0;
    titxt_piece current;
    std::array<char, 256> decoded{};
};

/// The address of each piece of bytes.
class titxt_address {
public:
    /// The address of @p piece, which is made known; nothing when it has none.
    std::optional<std::uint64_t> take(const titxt_piece& piece) {
        if (piece.what == titxt_piece::kind::address) {
            next = piece.address;
        } else if (piece.what == titxt_piece::kind::bad_address) {
            next = std::nullopt;
        }
        const std::optional<std::uint64_t> its = next;
        if (next) {
            *next += piece.what == titxt_piece::kind::bytes ? piece.bytes.size() : 0;
            *next += piece.what == titxt_piece::kind::bad_byte ? 1 : 0;
        }
        return its;
    }

private:
    std::optional<std::uint64_t> next;
};

/// Where byte number @p index of @p piece, which has it, is in @p contents.
[[nodiscard]] span span_of_titxt_byte(std::string_view contents, const titxt_piece& piece,
                                      std::uint64_t index);

} // namespace kvrimage
