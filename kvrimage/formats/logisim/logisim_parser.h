#pragma once

#include "kvrimage/diagnostics/span.h"
#include "kvrimage/formats/logisim/logisim_variant.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace kvrimage {

/// A piece of a Logisim file; blanks and line ends between the pieces are none.
struct logisim_piece {
    enum class kind : std::uint8_t {
        header,      ///< the first line
        comment,     ///< from "#" to the end of the line
        address,     ///< of a row, without its ":"
        word,        ///< or a byte; the digits were not looked at
        bad_run,     ///< a word with a "*" that is no run
        bad_address, ///< what stands where an address should be
    } what = kind::header;
    span where;
    span digits = {};        ///< of a word, without the count of a run
    std::uint64_t count = 1; ///< words of a run
    /// Of an address, and the first one of a word; nothing after an address that cannot be read.
    std::optional<std::uint64_t> address = std::nullopt;

    /// The last address of a word that has one.
    [[nodiscard]] std::uint64_t last_address() const noexcept {
        return *address > ~std::uint64_t{0} - (count - 1) ? ~std::uint64_t{0} : *address + (count - 1);
    }
};

/// Takes the pieces of a file, in order.
class logisim_sink {
public:
    logisim_sink() = default;
    logisim_sink(const logisim_sink&) = delete;
    logisim_sink& operator=(const logisim_sink&) = delete;
    virtual ~logisim_sink() = default;
    virtual void take(const logisim_piece& piece) = 0;
};

/// Splits the text of a Logisim file into its pieces. After a first line that is not known there are none.
class logisim_parser {
public:
    /// Both are kept alive by the caller.
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

/// The same for a function that takes each logisim_piece.
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
