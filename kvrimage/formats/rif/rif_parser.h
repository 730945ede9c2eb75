#pragma once

#include "kvrimage/diagnostics/span.h"

#include <cstdint>
#include <limits>
#include <optional>
#include <string_view>

namespace kvrimage {

/// The address of words that follow an address that cannot be read.
inline constexpr std::uint64_t no_rif_address = std::numeric_limits<std::uint64_t>::max();

inline constexpr std::uint64_t highest_rif_address = 0xFFFFFFFF;
inline constexpr std::string_view highest_rif_address_text = "FFFFFFFF";

/// What is wrong with an address.
enum class rif_address_fault : std::uint8_t {
    none,
    spelling, ///< a "0x" or blanks before the digits: what is meant is clear
    syntax,   ///< no hexadecimal digits, or more than these
    outside   ///< more than 32 bits
};

/// A piece of a RIF file. The pieces cover every byte of it.
struct rif_piece {
    enum class kind : std::uint8_t {
        byte_order_mark, ///< at the very front
        blanks,
        tabs,
        line_end,        ///< LF or CR LF
        carriage_return, ///< a CR without LF; ends a line, too
        word,            ///< digits and letters, maybe among other characters
        address,         ///< "@" and what follows it
        comment,         ///< from "//", "#" or "--" to the end of the line
        stray            ///< characters without a digit or letter among them
    } what;
    span where;
    /// Word: the first characters that are no hexadecimal or don't-care digit. Empty: there are none.
    span fault = {};
    /// Address: its digits, without what is wrong with them.
    span digits = {};
    rif_address_fault address_fault = rif_address_fault::none;
    /// Of a word, and the value of an address line; no_rif_address when it is not known.
    std::uint64_t address = no_rif_address;
};

/// Takes the pieces of a file, in order.
class rif_sink {
public:
    rif_sink() = default;
    rif_sink(const rif_sink&) = delete;
    rif_sink& operator=(const rif_sink&) = delete;
    virtual ~rif_sink() = default;
    virtual void take(const rif_piece& piece) = 0;
};

/// Splits RIF text into its pieces. Every text can be split: what is wrong with a piece stands in it.
class rif_parser {
public:
    /// Both are kept alive by the caller.
    rif_parser(std::string_view contents, rif_sink& target) : text(contents), sink(target) {}

    /// Splits all that is left.
    void parse();
    /// Splits the line at position().
    void parse_line();

    [[nodiscard]] bool at_end() const noexcept { return next == text.size(); }
    [[nodiscard]] std::size_t position() const noexcept { return next; }
    [[nodiscard]] std::uint64_t next_address() const noexcept { return address; }
    /// Goes on at the line that begins at @p offset, whose first word has @p first_address: for who has read
    /// the lines before it in another way.
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

/// The same for a function that takes each rif_piece.
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
