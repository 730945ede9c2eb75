#pragma once

#include "kvr/memory/store/word_batch.h"
#include "kvrimage/diagnostics/diagnostic.h"
#include "kvrimage/diagnostics/diagnostic_list.h"
#include "kvrimage/diagnostics/places.h"
#include "kvrimage/diagnostics/span.h"
#include "kvrimage/formats/format.h"
#include "kvrimage/image/address_range.h"
#include "kvrimage/image/image_words.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kvrimage {

/// The sizes stated in the file.
struct stated_sizes {
    std::optional<std::uint32_t> width = std::nullopt; ///< in bits
    std::optional<std::uint64_t> depth = std::nullopt; ///< in words
    std::string_view width_setting = "--width";        ///< name of the width setting, for messages
    std::uint64_t address_step = 1;                    ///< address increment of one word, for messages
};

/// Format-specific treatment of a word list.
struct list_habits {
    bool may_begin_high = false; ///< a high first address needs no base
    /// Returns the line that first sets the word at a file address. If set, words set twice to the same value
    /// are also reported, with that line.
    std::function<std::uint64_t(std::uint64_t address)> first_line = {};
};

/// Words of equal length, separated by single blanks.
struct spaced_words {
    const char* first; ///< the first word; 16 bytes after the last word must be readable
    std::size_t length;
    std::size_t count;
    bool has_lower_case;

    [[nodiscard]] std::string_view operator[](std::size_t index) const noexcept {
        return {first + index * (length + 1), length};
    }
};

/// Collects the words of a word-list file for its reader. Determines the width and finds words that are too
/// wide, out of range or set twice. The width is that of the options, else the stated width, else that of the
/// longest word: 4, 3 or 1 bits per digit, in decimal the bits of the largest value. The depth is that of the
/// options, else the stated depth, else up to the highest address. Addresses count words from the base of the
/// options on.
class word_list {
public:
    /// @p contents and @p given are kept alive by the caller
    word_list(std::string_view contents, const read_options& given, radix digits_radix,
              const stated_sizes& stated = {}, list_habits of_format = {});
    word_list(const word_list&) = delete;
    word_list& operator=(const word_list&) = delete;
    ~word_list() = default;

    /// Adds a word with valid digits in the radix of the list, in either case ("X" and "x" are don't care).
    /// In `dec` a "-" may precede them.
    /// @param address word address in the file
    /// @param where place of the word in the file
    void add(std::uint64_t address, std::string_view digits, const span& where) {
        add(address_range{address, address}, digits, where);
    }
    /// Sets all @p addresses to one word, in the time of one add().
    void add(const address_range& addresses, std::string_view digits, const span& where);
    /// Adds a word with unchecked digits. An invalid digit, including a don't-care digit or a sign, is
    /// reported and makes the word unreadable.
    /// @param where the place that other faults quote: the digits, or more
    void add_unchecked(const address_range& addresses, const span& digits, const span& where);
    /// Adds words of a hexadecimal or binary list from @p address on, if none can be faulty. Otherwise
    /// returns false and adds nothing; the caller then uses add() for each word.
    bool add_spaced(std::uint64_t address, const spaced_words& all);
    /// Records an unreadable word.
    void add_unreadable(std::uint64_t address, const span& where) {
        add_raw({address, address}, unreadable_text, where);
    }

    [[nodiscard]] bool empty() const noexcept { return set_end == 0; }

    /// Reports the faults of the words and sets the image and the facts of @p result. A list without words
    /// has no image unless width and depth are known.
    void finish(diagnostic_list& diagnostics, read_result& result);

private:
    /// Marks an unreadable word in the list.
    static constexpr std::string_view unreadable_text = "?";

    void add_raw(const address_range& addresses, std::string_view raw, const span& where);
    [[nodiscard]] bool is_within(const address_range& addresses, const span& where);
    [[nodiscard]] bool fits(std::string_view digits, const span& where);
    void note_set_twice(const address_range& offsets, std::string_view raw, const span& where);
    void copy_spaced(std::uint32_t offset, const spaced_words& all);
    void set(const address_range& offsets, std::string_view raw);
    [[nodiscard]] std::string_view in_upper_case(std::string_view digits);
    [[nodiscard]] std::uint32_t width() const;
    void report(diagnostic_list& diagnostics) const;
    void report_addresses(diagnostic_list& diagnostics) const;
    [[nodiscard]] std::string in_file(std::uint64_t address) const;
    [[nodiscard]] bool is_in_proportion(diagnostic_list& diagnostics) const;
    memory_image make_image(std::vector<address_range>& unreadable);

    std::string_view text;
    const read_options& options;
    radix digits_are;
    std::optional<std::uint32_t> known_width;
    std::optional<std::uint64_t> known_depth;
    std::string_view width_setting;
    list_habits habits;
    std::uint64_t base;
    std::uint64_t step;
    std::unique_ptr<image_words> words;
    kvr::word_batch batch;
    std::uint64_t set_end = 0;      ///< offset after the highest set word
    std::uint32_t longest_bits = 0; ///< of a word, by its digits
    std::uint64_t lowest;           ///< lowest address set
    bool has_unreadable = false;
    std::string scratch;
    places bad_digits;
    numbered_places too_wide; ///< with the bits that they need
    numbered_places beyond;   ///< with their addresses; the largest is an offset
    numbered_places below;
    numbered_places set_twice;
};

/// Describes words at @p where in @p contents that have invalid digits for @p digits_radix.
[[nodiscard]] diagnostic describe_bad_digits(std::string_view contents, const places& where,
                                             radix digits_radix);

} // namespace kvrimage
