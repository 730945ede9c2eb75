#pragma once

#include "kvrimage/diagnostics/span.h"
#include "kvrimage/image/radix.h"

#include <cstdint>
#include <string_view>

namespace kvrimage {

/// The faults of an address.
enum class readmem_address_fault : std::uint8_t {
    none,
    blanks,      ///< between "@" and the digits
    prefix,      ///< "0x" before the digits
    underscores, ///< among the digits
    syntax,      ///< not hexadecimal digits only
    outside      ///< more than 64 bits
};

/// A piece of a word list. The pieces cover every byte of the file.
struct readmem_piece {
    enum class kind : std::uint8_t {
        byte_order_mark, ///< at the start of the file
        blanks,          ///< blanks, tabs, form feeds and line ends
        word,            ///< digits and letters, possibly with other characters
        address,         ///< "@" and the text after it
        line_comment,    ///< from "//" to the end of the line
        block_comment,   ///< "/*" to "*/"
        open_comment,    ///< "/*" without an end
        other_comment,   ///< from "#" or "--" to the end of the line
        separator,       ///< "," or ";"
        stray            ///< characters without digits and letters
    } what;
    span where;
    /// For a word: its first invalid characters; empty if there are none.
    span fault = {};
    /// For a valid word: length of an apparent prefix before its digits, 0 or 2. "0x" may also be two digits;
    /// "0b" of a binary word may not.
    std::uint32_t prefix = 0;
    readmem_address_fault address_fault = readmem_address_fault::none;
    /// For an address: its value in the file's unit, if the fault is neither syntax nor outside.
    std::uint64_t address = 0;
};

/// Receives the pieces of a file in order.
class readmem_sink {
public:
    readmem_sink() = default;
    readmem_sink(const readmem_sink&) = delete;
    readmem_sink& operator=(const readmem_sink&) = delete;
    virtual ~readmem_sink() = default;
    virtual void take(const readmem_piece& piece) = 0;
};

/// Splits a word list into its pieces. Every text can be split; each piece states its fault.
class readmem_parser {
public:
    /// Text and sink are kept alive by the caller. @param digits_radix hex or bin
    readmem_parser(std::string_view contents, radix digits_radix, readmem_sink& target)
        : text(contents),
          digits_are(digits_radix),
          sink(target) {}

    /// Parses the remaining text.
    void parse();
    /// Passes on the next piece. Requires that there is one.
    void parse_piece();

    [[nodiscard]] bool at_end() const noexcept { return next == text.size(); }
    [[nodiscard]] std::size_t position() const noexcept { return next; }
    /// Continues at @p offset, the start of a piece. For callers that have read the pieces before it
    /// themselves.
    void skip_to(std::size_t offset) noexcept { next = offset; }

private:
    void hand_out(readmem_piece piece, std::size_t end);
    void parse_slash_comment();
    void parse_address();
    void check_address(readmem_piece& piece, std::string_view digits) const;
    void parse_token();
    [[nodiscard]] std::size_t end_of_token(std::size_t begin) const noexcept;
    [[nodiscard]] std::size_t end_of_line(std::size_t begin) const noexcept;
    [[nodiscard]] bool comment_begins_at(std::size_t offset) const noexcept;

    std::string_view text;
    radix digits_are;
    readmem_sink& sink;
    std::size_t next = 0;
};

/// Calls @p take with each readmem_piece.
template <class Take>
void for_each_readmem_piece(std::string_view contents, radix digits_radix, Take&& take) {
    class calling_sink final : public readmem_sink {
    public:
        explicit calling_sink(Take& taker) : called(taker) {}
        void take(const readmem_piece& piece) override { called(piece); }

    private:
        Take& called;
    } sink(take);
    readmem_parser(contents, digits_radix, sink).parse();
}

/// Returns whether @p character is a digit of a word: one of the radix, or "x" or "z" in either case.
[[nodiscard]] bool is_readmem_digit(char character, radix digits_radix) noexcept;

/// Returns whether @p character is "z" or "Z".
[[nodiscard]] inline bool is_high_impedance(char character) noexcept {
    return character == 'z' || character == 'Z';
}

inline constexpr std::string_view readmem_blanks = " \t\r\n\f";

} // namespace kvrimage
