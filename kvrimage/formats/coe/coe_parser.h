#pragma once

#include "kvrimage/diagnostics/span.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kvrimage {

/// A piece of a COE file. Blanks and line ends between pieces are not pieces.
struct coe_piece {
    enum class kind : std::uint8_t {
        comment,      ///< from ";" to the end of the line
        radix_name,   ///< memory_initialization_radix
        radix,        ///< the value of memory_initialization_radix
        vector,       ///< the name memory_initialization_vector
        word,         ///< a value of the vector
        comma,        ///< a comma in the vector
        end,          ///< the ";" after the vector
        no_semicolon, ///< last value of a statement without ";", or its name if it has no value
        stray,        ///< a line that does not begin a statement
        after_end     ///< the same after the vector
    } what = kind::comment;
    span where;
};

/// Receives the pieces of a file in order.
class coe_sink {
public:
    coe_sink() = default;
    coe_sink(const coe_sink&) = delete;
    coe_sink& operator=(const coe_sink&) = delete;
    virtual ~coe_sink() = default;
    virtual void take(const coe_piece& piece) = 0;
};

/// Splits COE text into its pieces. Every text can be split.
class coe_parser {
public:
    /// Both arguments are kept alive by the caller.
    coe_parser(std::string_view contents, coe_sink& target);

    void parse();

private:
    void parse_statement();
    void parse_radix(const span& name);
    void parse_vector(const span& name);
    void parse_stray(std::size_t begin);
    void skip_blanks();
    [[nodiscard]] bool at_end() const noexcept { return next == text.size(); }
    [[nodiscard]] bool is_at(char character) const noexcept {
        return next < text.size() && text[next] == character;
    }
    [[nodiscard]] std::size_t end_of_line() const noexcept;
    span parse_value();
    void hand_out(coe_piece::kind what, std::size_t end);

    std::string_view text;
    coe_sink& sink;
    std::size_t next = 0;
    bool has_ended = false; ///< the vector is complete
};

/// Calls @p take with each coe_piece.
template <class Take>
void for_each_coe_piece(std::string_view contents, Take&& take) {
    class function_sink final : public coe_sink {
    public:
        explicit function_sink(Take& function) : called(function) {}
        void take(const coe_piece& piece) override { called(piece); }

    private:
        Take& called;
    } sink(take);
    coe_parser(contents, sink).parse();
}

} // namespace kvrimage
