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

/// What the file itself says of its words.
struct stated_sizes {
    std::optional<std::uint32_t> width = std::nullopt; ///< bits
    std::optional<std::uint64_t> depth = std::nullopt; ///< words
    std::string_view width_setting = "--width";        ///< what says the width, for messages
    std::uint64_t address_step = 1;                    ///< what the file counts for a word, for messages
};

/// What a format does in its own way with the words of a list.
struct list_habits {
    bool may_begin_high = false; ///< addresses that begin high need no base
    /// The line that sets the word at an address of the file first. With it a word that is set twice to the
    /// same is reported, too, and that line with it.
    std::function<std::uint64_t(std::uint64_t address)> first_line = {};
};

/// Words of one length in a text, with a blank between neighbours.
struct spaced_words {
    const char* first; ///< of the first word; 16 characters after the last one can be read
    std::size_t length;
    std::size_t count;
    bool has_lower_case;

    [[nodiscard]] std::string_view operator[](std::size_t index) const noexcept {
        return {first + index * (length + 1), length};
    }
};

/// Gathers the words of a file that is a list of them, for its reader: finds the width where nobody says it,
/// and words that are too wide, beyond the depth, or set twice. The width is that of the options, else the
/// stated one, else that of the longest word: 4, 3 or 1 bits a digit, in decimal the bits of the widest
/// value. The depth is that of the options, else the stated one, else up to the highest address. Addresses
/// count words, from the base of the options on.
class word_list {
public:
    /// @param contents and @p given are kept alive by the caller
    word_list(std::string_view contents, const read_options& given, radix digits_radix,
              const stated_sizes& stated = {}, list_habits of_format = {});
    word_list(const word_list&) = delete;
    word_list& operator=(const word_list&) = delete;
    ~word_list() = default;

    /// Adds the word whose digits, in the radix of the list and of either case, are @p digits: each was found
    /// to be one ("X" and "x" are don't care). In `dec` a "-" may come first.
    /// @param address as the file counts words
    /// @param where of the word in the file
    void add(std::uint64_t address, std::string_view digits, const span& where) {
        add(address_range{address, address}, digits, where);
    }
    /// The same for all addresses of a range, at the cost of one.
    void add(const address_range& addresses, std::string_view digits, const span& where);
    /// The same where nobody has looked at the digits: one that is none of the radix, as a don't-care digit
    /// and a sign are, is reported, and the word cannot be read.
    /// @param where of all that the message of another fault quotes: the digits, or more
    void add_unchecked(const address_range& addresses, const span& digits, const span& where);
    /// Adds words from @p address on of a hexadecimal or binary list, if nothing can be wrong with them;
    /// false, with nothing added, when each is for add(), which would do the same with them.
    bool add_spaced(std::uint64_t address, const spaced_words& all);
    /// Notes a word that cannot be read.
    void add_unreadable(std::uint64_t address, const span& where) {
        add_raw({address, address}, unreadable_text, where);
    }

    [[nodiscard]] bool empty() const noexcept { return set_end == 0; }

    /// Reports what is wrong with the words, and makes the image and the facts of @p result. There is no
    /// image for a list without words, unless width and depth are known.
    void finish(diagnostic_list& diagnostics, read_result& result);

private:
    /// Stands in the list for a word that cannot be read.
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
    std::uint64_t set_end = 0;      ///< offset after the highest word that was set
    std::uint32_t longest_bits = 0; ///< that a word needs by its digits
    std::uint64_t lowest;           ///< address
    bool has_unreadable = false;
    std::string scratch;
    places bad_digits;
    numbered_places too_wide; ///< by the bits that they need
    numbered_places beyond;   ///< by their addresses; the largest is an offset
    numbered_places below;
    numbered_places set_twice;
};

/// What is wrong with words at @p where in @p contents, which have characters that are no digits of @p
/// digits_radix.
[[nodiscard]] diagnostic describe_bad_digits(std::string_view contents, const places& where,
                                             radix digits_radix);

} // namespace kvrimage
