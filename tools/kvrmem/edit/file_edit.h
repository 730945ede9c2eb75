#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace kvrmem {

// What is to change in a memory, and what changes in the text of its file for that.

/// New words for the addresses from `first` to `last`, both included.
struct word_edit {
    std::uint32_t first;
    std::uint32_t last;
    std::vector<std::string> words; ///< in order, again from the first one when they are used up
};

/// Neighbouring addresses that one edit gives their words.
struct edit_piece {
    std::uint64_t first;
    std::uint64_t last; ///< inclusive
    const word_edit* edit;

    [[nodiscard]] std::uint64_t size() const noexcept { return last - first + 1; }
    [[nodiscard]] bool is_constant() const noexcept { return edit->words.size() == 1; }
    /// The word for @p address, which lies in the piece.
    [[nodiscard]] const std::string& word(std::uint64_t address) const {
        return is_constant() ? edit->words.front()
                             : edit->words[(address - edit->first) % edit->words.size()];
    }
};

/// Pieces that do not overlap, in the order of their addresses.
class edit_pieces {
public:
    /// The pieces of @p edits, which are kept alive by the caller. Where two edits are about one address, the
    /// later one counts; neighbours that hold one and the same word throughout are one piece.
    explicit edit_pieces(const std::vector<word_edit>& edits);

    [[nodiscard]] bool touch(std::uint64_t first, std::uint64_t last) const;
    /// Removes what lies between @p first and @p last, and hands it out.
    std::vector<edit_piece> take(std::uint64_t first, std::uint64_t last);
    /// What is left, in order.
    [[nodiscard]] std::vector<edit_piece> all() const;

private:
    void split_at(std::uint64_t address);
    void unite();

    std::map<std::uint64_t, edit_piece> pieces; ///< by their first addresses
};

/// A place of a file (a statement, a record, a line) that sets the words from `first` to `last`.
struct setting_place {
    std::uint64_t number; ///< counts the places of the file from 0
    std::uint64_t first;
    std::uint64_t last;
};

/// A place of a file and the pieces whose words stand there.
struct touched_place {
    std::uint64_t number;
    std::vector<edit_piece> pieces;
};

/// Finds for each piece the places of the file that determine its words: the last of @p places, which are in
/// the order of the file, that sets an address is the one that counts. What no place sets stays in @p pieces.
std::vector<touched_place> find_touched_places(const std::vector<setting_place>& places, edit_pieces& pieces);

/// New text for `length` bytes of a file from `offset` on.
struct text_change {
    std::size_t offset;
    std::size_t length;
    std::string text;
};

/// @p text with @p changes, which are in order and do not overlap.
[[nodiscard]] std::string with_changes(std::string_view text, const std::vector<text_change>& changes);

/// Tells where the lines of a text begin that are asked for in ascending order.
class line_starts {
public:
    explicit line_starts(std::string_view whole) : text(whole) {}
    /// The offset of the line @p number, from 1.
    std::size_t of(std::uint64_t number);

private:
    std::string_view text;
    std::uint64_t line = 1;
    std::size_t offset = 0;
};

/// The end of the line that @p offset lies in: where its LF or CR LF stands, or the end of @p text.
[[nodiscard]] std::size_t end_of_line(std::string_view text, std::size_t offset);

/// Where the line behind the one that @p offset lies in begins; the end of @p text when there is none.
[[nodiscard]] std::size_t next_line(std::string_view text, std::size_t offset);

/// "\n" or "\r\n", as the line before the one at @p line_start ends; that of the line itself when there is
/// none before it; "\n" in a text without line ends.
[[nodiscard]] std::string_view line_end_at(std::string_view text, std::size_t line_start);

/// How many digits a number has, and in which letter case.
struct digit_style {
    std::size_t digits = 1;
    bool lower_case = false;
};

/// The style of the number @p text: letters are upper-case unless all that it has are lower-case.
[[nodiscard]] digit_style style_of(std::string_view text);

/// Finds the style that many numbers have in common: the fewest digits, and small letters when there are no
/// others.
class style_finder {
public:
    void see(std::string_view number);
    [[nodiscard]] digit_style found() const { return {fewest_digits, lower && !upper}; }

private:
    std::size_t fewest_digits = static_cast<std::size_t>(-1);
    bool lower = false;
    bool upper = false;
};

/// @p number, upper-case digits with "-" before a negative one, in @p style: leading zeros are added or left
/// out as far as the value lets.
[[nodiscard]] std::string in_style(std::string_view number, const digit_style& style);

} // namespace kvrmem
