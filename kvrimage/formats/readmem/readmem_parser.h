#pragma once

#include "kvrimage/diagnostics/span.h"
#include "kvrimage/image/radix.h"

#include <cstdint>
#include <string_view>

namespace kvrimage {

/// What is wrong with an address.
enum class readmem_address_fault : std::uint8_t {
    none,
    blanks,      ///< between "@" and the digits
    prefix,      ///< "0x" before the digits
    underscores, ///< among the digits
    syntax,      ///< no hexadecimal digits, or more than these
    outside      ///< more than 64 bits
};

/// A piece of a list of words. The pieces cover every byte of the file.
struct readmem_piece {
    enum class kind : std::uint8_t {
        byte_order_mark, ///< at the very front
        blanks,          ///< blanks, tabs, form feeds and line ends
        word,            ///< digits and letters, maybe among other characters
        address,         ///< "@" and what follows it
        line_comment,    ///< from "//" to the end of the line
        block_comment,   ///< "/*" to "*/"
        open_comment,    ///< "/*" without an end
        other_comment,   ///< from "#" or "--" to the end of the line
        separator,       ///< "," or ";"
        stray            ///< characters without a digit or letter among them
    } what;
    span where;
    /// Word: the first characters that are no digits. Empty: there are none.
    span fault = {};
    /// Word, without a fault: characters before its digits that look like a prefix, 0 or 2. "0x" may be two
    /// digits as well, "0b" of a binary word may not.
    std::uint32_t prefix = 0;
    readmem_address_fault address_fault = readmem_address_fault::none;
    /// Address: its value, as the file counts, where the fault is none of syntax and outside.
    std::uint64_t address = 0;
};

/// Takes the pieces of a file, in order.
class readmem_sink {
public:
    readmem_sink() = default;
    readmem_sink(const readmem_sink&) = delete;
    readmem_sink& operator=(const readmem_sink&) = delete;
    virtual ~readmem_sink() = default;
    virtual void take(const readmem_piece& piece) = 0;
};

/// Splits a list of words into its pieces. Every text can be split: what is wrong with a piece stands in it.
class readmem_parser {
public:
    /// Text and sink are kept alive by the caller. @param digits_radix hex or bin
    readmem_parser(std::string_view contents, radix digits_radix, readmem_sink& target)
        : text(contents),
          digits_are(digits_radix),
          sink(target) {}

    /// Splits all that is left.
    void parse();
    /// Hands out the next piece; there must be one.
    void parse_piece();

    [[nodiscard]] bool at_end() const noexcept { return next == text.size(); }
    [[nodiscard]] std::size_t position() const noexcept { return next; }
    /// Goes on at @p offset, where a piece begins: for a caller that has read those before it in another way.
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

/// True for a digit of a word: of the radix, or "x" or "z" of either case.
[[nodiscard]] bool is_readmem_digit(char character, radix digits_radix) noexcept;

/// True for "z" and "Z".
[[nodiscard]] inline bool is_high_impedance(char character) noexcept {
    return character == 'z' || character == 'Z';
}

inline constexpr std::string_view readmem_blanks = " \t\r\n\f";

} // namespace kvrimage
