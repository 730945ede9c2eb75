#pragma once

#include "kvrimage/diagnostics/span.h"

#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>

namespace kvrimage {

/// The address of words after an unreadable address.
inline constexpr std::uint64_t no_rif_address = std::numeric_limits<std::uint64_t>::max();

inline constexpr std::uint64_t highest_rif_address = 0xFFFFFFFF;
inline constexpr std::string_view highest_rif_address_text = "FFFFFFFF";

/// The faults of an address.
enum class rif_address_fault : std::uint8_t {
    none,
    spelling, ///< "0x" or blanks before the digits; the meaning is clear
    syntax,   ///< not hexadecimal digits only
    outside   ///< more than 32 bits
};

/// A piece of a RIF file. The pieces cover every byte of the file.
struct rif_piece {
    enum class kind : std::uint8_t {
        byte_order_mark, ///< at the start of the file
        blanks,
        tabs,
        line_end,        ///< LF or CR LF
        carriage_return, ///< a CR without LF; also ends a line
        word,            ///< digits and letters, possibly with other characters
        address,         ///< "@" and the text after it
        comment,         ///< from "//", "#" or "--" to the end of the line
        stray            ///< characters without digits and letters
    } what;
    span where;
    /// For a word: its first characters that are neither hexadecimal nor don't-care digits; empty if there
    /// are none.
    span fault = {};
    /// For an address: its digits, without faulty characters.
    span digits = {};
    rif_address_fault address_fault = rif_address_fault::none;
    /// For a word or address: its address; no_rif_address if unknown.
    std::uint64_t address = no_rif_address;
};

/// Receives the pieces of a file in order.
class rif_sink {
public:
    rif_sink() = default;
    rif_sink(const rif_sink&) = delete;
    rif_sink& operator=(const rif_sink&) = delete;
    virtual ~rif_sink() = default;
    virtual void take(const rif_piece& piece) = 0;
};

/// Splits RIF text into its pieces. Every text can be split; each piece states its fault.
class rif_parser {
public:
    /// Both arguments are kept alive by the caller.
    rif_parser(std::string_view contents, rif_sink& target) : text(contents), sink(target) {}

    /// Parses the remaining text.
    void parse();
    /// Parses the line at position().
    void parse_line();

    [[nodiscard]] bool at_end() const noexcept { return next == text.size(); }
    [[nodiscard]] std::size_t position() const noexcept { return next; }
    [[nodiscard]] std::uint64_t next_address() const noexcept { return address; }
    /// Continues at @p offset, the start of a line whose first word has the address @p first_address. For
    /// callers that have read the lines before it themselves.
    void skip_to(std::size_t offset, std::uint64_t first_address) noexcept {
        next = offset;
        address = first_address;
    }

private:
    bool parse_line_end();
    void parse_blanks(char blank, rif_piece::kind what);
    void parse_comment();
    void parse_address();
    void parse_token();
    void check_address(rif_piece& piece);
    [[nodiscard]] std::size_t end_of_token(std::size_t begin) const noexcept;
    [[nodiscard]] std::size_t end_of_line(std::size_t begin) const noexcept;
    [[nodiscard]] std::size_t end_of_spaced_address(std::size_t begin) const noexcept;
    [[nodiscard]] bool comment_begins_at(std::size_t offset) const noexcept;
    void hand_out(rif_piece piece, std::size_t end);

    std::string_view text;
    rif_sink& sink;
    std::size_t next = 0;
    std::uint64_t address = 0; ///< of the next word
};

/// Calls @p take with each rif_piece.
template <class Take>
void for_each_rif_piece(std::string_view contents, Take&& take) {
    class function_sink final : public rif_sink {
    public:
        explicit function_sink(Take& function) : called(function) {}
        void take(const rif_piece& piece) override { called(piece); }

    private:
        Take& called;
    } sink(take);
    rif_parser(contents, sink).parse();
}

} // namespace kvrimage
