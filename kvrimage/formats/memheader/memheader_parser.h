#pragma once

#include "kvrimage/diagnostics/span.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace kvrimage {

/// A piece of a memory file with a header. Blanks and line ends between pieces are not pieces.
struct memheader_piece {
    enum class kind : std::uint8_t {
        setting,     ///< a line "#Name=Value" before the words, without "#"
        data,        ///< the line "#Data"
        address,     ///< of a row, without its ":"
        word,        ///< its digits are not checked
        bad_address, ///< other text in place of an address
        stray_word,  ///< a line without "#" before the words
        late_setting ///< a line with "#" after "#Data"
    } what = kind::setting;
    span where;
    span name = {}; ///< of a setting, and its value
    span value = {};
    /// For an address or word: its address. Nothing after an unreadable address.
    std::optional<std::uint64_t> address = std::nullopt;
};

/// Receives the pieces of a file in order.
class memheader_sink {
public:
    memheader_sink() = default;
    memheader_sink(const memheader_sink&) = delete;
    memheader_sink& operator=(const memheader_sink&) = delete;
    virtual ~memheader_sink() = default;
    virtual void take(const memheader_piece& piece) = 0;
};

/// Splits such a file into its pieces. Every text can be split.
class memheader_parser {
public:
    /// Both arguments are kept alive by the caller.
    memheader_parser(std::string_view contents, memheader_sink& target);

    void parse();

private:
    void parse_header_line(const span& line);
    void parse_row(const span& line);
    std::size_t parse_address(std::size_t begin, std::size_t line_end);
    [[nodiscard]] std::size_t end_of_token(std::size_t begin, std::size_t line_end) const noexcept;

    std::string_view text;
    memheader_sink& sink;
    std::size_t next = 0;
    bool in_data = false;
    bool is_addressed = false;
    std::optional<std::uint64_t> address = 0; ///< of the next word
};

/// Calls @p take with each memheader_piece.
template <class Take>
void for_each_memheader_piece(std::string_view contents, Take&& take) {
    class function_sink final : public memheader_sink {
    public:
        explicit function_sink(Take& function) : called(function) {}
        void take(const memheader_piece& piece) override { called(piece); }

    private:
        Take& called;
    } sink(take);
    memheader_parser(contents, sink).parse();
}

} // namespace kvrimage
