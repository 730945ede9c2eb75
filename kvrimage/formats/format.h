#pragma once

#include "kvrimage/diagnostics/diagnostic.h"
#include "kvrimage/diagnostics/span.h"
#include "kvrimage/exchange/assignment.h"
#include "kvrimage/exchange/choice.h"
#include "kvrimage/exchange/read_options.h"
#include "kvrimage/exchange/read_result.h"
#include "kvrimage/exchange/text_piece.h"
#include "kvrimage/exchange/text_sink.h"
#include "kvrimage/exchange/write_options.h"
#include "kvrimage/image/memory_image.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kvrimage {

/// Number of bytes at the start of a file that are examined to identify its format.
inline constexpr std::size_t sniffed_bytes = std::size_t{64} << 10U;

/// A program or library that reads files of a format in its own way.
struct consumer {
    std::string_view name;  ///< "kvr": --for kvr
    std::string_view title; ///< "the library kvr"
    /// Returns what the consumer rejects or reads differently in @p contents. @p ours is our reading: it has
    /// an image, and its `consumer` diagnostics must not be repeated.
    std::vector<diagnostic> (*check)(std::string_view contents, const read_options& options,
                                     const read_result& ours);
    /// The consumer's treatment of unset words ("holds 0 there"); "" if they stay unset.
    std::string_view unset_words = "";
    bool takes_broken = false; ///< check() also handles files with broken diagnostics
};

/// A file format: its properties and functions. Unsupported functions are null.
struct format {
    std::string_view id;    ///< "mif": --from mif
    std::string_view title; ///< "MIF"
    /// In lower case, without the dot. `id` is also accepted by --from.
    std::span<const std::string_view> extensions;

    bool states_width = false;                ///< the file states the word width
    bool states_depth = false;                ///< the file states the number of words
    bool states_radix = false;                ///< the file states the radix of its numbers
    address_unit counts = address_unit::word; ///< the unit of its addresses
    /// A word may be unset. If false, all words must be set; if the file does not state the depth, only those
    /// up to the last set word. Other images cannot be written.
    bool holds_unset = true;
    bool holds_dont_care = false; ///< a bit may be "don't care"
    bool has_lines = true;        ///< false: a binary file; it may have lines of any length
    bool fits_anything = false;   ///< accepts any contents: chosen only by name, never by contents
    bool holds_ranges = false;    ///< neighboring equal words may share a line (write_options::runs)

    /// Returns the confidence that a file is of this format. @p head has its first bytes, at most
    /// sniffed_bytes.
    certainty (*sniff)(std::string_view head) = nullptr;
    /// Reads a whole file.
    read_result (*read)(std::string_view contents, const read_options& options) = nullptr;
    /// Returns the line that sets the word at @p address last, or nothing. Requires contents that read()
    /// accepts.
    std::optional<place> (*find_word)(std::string_view contents, const read_options& options,
                                      std::uint64_t address) = nullptr;
    /// Calls @p take with the place of each comment, in order, except comments that write() generates.
    /// Accepts any @p contents.
    void (*find_comments)(std::string_view contents, const std::function<void(const span&)>& take) = nullptr;
    /// Passes the pieces of @p contents to @p take in order, as far as they can be parsed. @p contents may be
    /// broken.
    /// @param ours the result of read() for @p contents and @p options
    void (*find_pieces)(std::string_view contents, const read_options& options, const read_result& ours,
                        const piece_taker& take) = nullptr;
    /// Returns the edits that set the words of @p assignments in @p contents and keep comments and layout.
    /// Addresses are those of the image; of several assignments to one address the last one counts.
    /// @param ours the result of read() for @p contents and @p options
    edit_result (*edit)(std::string_view contents, const read_options& options, const read_result& ours,
                        std::span<const assignment> assignments) = nullptr;
    /// Returns @p contents in the canonical layout, with the same words and comments. Contents in that
    /// layout, such as the output of write(), stay unchanged. @p ours is the result of read() for @p contents
    /// and @p options.
    std::string (*lay_out)(std::string_view contents, const read_options& options,
                           const read_result& ours) = nullptr;
    /// Returns why @p image cannot be written, as broken diagnostics without a place; empty if it can.
    std::vector<diagnostic> (*can_write)(const memory_image& image, const write_options& options) = nullptr;
    /// Writes @p image. Requires that can_write() returns no diagnostics.
    void (*write)(const memory_image& image, const write_options& options, text_sink& output) = nullptr;
    /// Returns an upper bound of the output size in bytes, a few percent too large at most. Takes time
    /// proportional to the stored words, not to the depth.
    std::uint64_t (*written_size)(const memory_image& image, const write_options& options) = nullptr;
    std::span<const consumer> consumers = {}; ///< whose reading check() can compare with ours
    /// The options for reading, in addition to read_options.
    std::span<const choice_kind> read_choices = {};
    std::span<const choice_kind> write_choices = {}; ///< likewise for writing
    /// The radixes of words and addresses that write() supports, the default first. Empty: all, if the format
    /// has a choice. Another radix is replaced by the default.
    ///@{
    std::span<const radix> data_radixes = {};
    std::span<const radix> address_radixes = {};
    ///@}
    std::uint64_t largest_start = 0; ///< largest supported start address of a program; 0: none
};

} // namespace kvrimage
