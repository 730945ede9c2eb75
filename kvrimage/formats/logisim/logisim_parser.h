#pragma once

#include "kvrimage/diagnostics/span.h"
#include "kvrimage/formats/logisim/logisim_variant.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace kvrimage {

/// A piece of a Logisim file. Blanks and line ends between pieces are not pieces.
struct logisim_piece {
    enum class kind : std::uint8_t {
        header,      ///< the first line
        comment,     ///< from "#" to the end of the line
        address,     ///< of a row, without its ":"
        word,        ///< or a byte; its digits are not checked
        bad_run,     ///< a word with a "*" that is not a valid run
        bad_address, ///< other text in place of an address
    } what = kind::header;
    span where;
    span digits = {};        ///< of a word, without the count of a run
    std::uint64_t count = 1; ///< number of words of a run
    /// For an address: its value. For a word: its first address. Nothing after an unreadable address.
    std::optional<std::uint64_t> address = std::nullopt;

    /// Returns the last address of a word that has one.
    [[nodiscard]] std::uint64_t last_address() const noexcept {
        return *address > ~std::uint64_t{0} - (count - 1) ? ~std::uint64_t{0} : *address + (count - 1);
    }
};

/// Receives the pieces of a file in order.
class logisim_sink {
public:
    logisim_sink() = default;
    logisim_sink(const logisim_sink&) = delete;
    logisim_sink& operator=(const logisim_sink&) = delete;
    virtual ~logisim_sink() = default;
    virtual void take(const logisim_piece& piece) = 0;
};

/// Splits a Logisim file into its pieces. There are none after an unknown first line.
class logisim_parser {
public:
    /// Both arguments are kept alive by the caller.
    logisim_parser(std::string_view contents, logisim_sink& target) : text(contents), sink(target) {}

    void parse();

private:
    void parse_line();
    void parse_address();
    void parse_token();
    [[nodiscard]] bool parse_count(logisim_piece& piece, std::size_t star) const;
    void skip_blanks() noexcept;
    [[nodiscard]] bool at_line_end() const noexcept {
        return next == text.size() || text[next] == '\n' || text[next] == '\r';
    }
    [[nodiscard]] std::size_t end_of_token() const noexcept;
    [[nodiscard]] std::size_t end_of_line() const noexcept;

    std::string_view text;
    logisim_sink& sink;
    bool is_addressed = false;
    std::size_t next = 0;
    std::optional<std::uint64_t> address = 0; ///< of the next word
};

/// Calls @p take with each logisim_piece.
template <class Take>
void for_each_logisim_piece(std::string_view contents, Take&& take) {
    class function_sink final : public logisim_sink {
    public:
        explicit function_sink(Take& function) : called(function) {}
        void take(const logisim_piece& piece) override { called(piece); }

    private:
        Take& called;
    } sink(take);
    logisim_parser(contents, sink).parse();
}

} // namespace kvrimage
