#pragma once

#include "kvrimage/diagnostics/diagnostic.h"
#include "kvrimage/diagnostics/span.h"
#include "kvrimage/export.h"
#include "kvrimage/formats/text_piece.h"
#include "kvrimage/image/memory_image.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kvrimage {

struct format;

/// The unit that the addresses of a file count.
enum class address_unit : std::uint8_t {
    word,
    byte,
    either ///< the format does not define it, or its files differ
};

/// Number of bytes at the start of a file that are examined to identify its format.
inline constexpr std::size_t sniffed_bytes = std::size_t{64} << 10U;

/// The confidence of a guess from a file's contents.
enum class certainty : std::uint8_t { no, possible, likely, certain };

/// An option of one format: {"section", ".text"}.
struct choice {
    std::string name;  ///< name of a choice_kind of the format
    std::string value; ///< as the user wrote it; "" if the option has no value
};

/// Describes an option that one format offers.
struct choice_kind {
    std::string_view name;        ///< "section": --section
    std::string_view operand;     ///< "NAME", the placeholder in help texts; "" if the option has no value
    std::string_view values;      ///< the possible values, separated by blanks; "" for any value
    std::string_view description; ///< "read only the section NAME"
};

/// Information in a file besides its words.
struct named_fact {
    std::string name;  ///< "start address"
    std::string value; ///< "80000000"
};

/// Describes the file to read and what the caller wants from it.
struct read_options {
    const format* as = nullptr; ///< null: determined by the file name and the contents
    /// Word width in bits. Overrides the width of the file, or supplies a missing one.
    std::optional<std::uint32_t> width = std::nullopt;
    std::optional<std::uint64_t> depth = std::nullopt; ///< in words; higher addresses are broken
    std::optional<address_unit> unit = std::nullopt;   ///< word or byte
    std::optional<byte_order> order = std::nullopt;    ///< the byte order within a word
    /// The file address that becomes word 0, in the file's own unit.
    std::optional<std::uint64_t> base = std::nullopt;
    /// Fills the missing bytes of a word that a file of bytes sets only partly.
    std::optional<std::uint8_t> pad = std::nullopt;
    /// Further options of the format; see format::read_choices.
    std::vector<choice> choices = {};
    /// The extension helps to determine the format if `as` is null. "" if there is no name.
    std::string file_name = {};
    /// Also returns the readable part of a broken file; see read_result::unreadable.
    bool keep_going = false;
    /// Maximum number of diagnostics to keep of each class. The others are only counted.
    std::size_t most_diagnostics = 100;
    /// Keeps every diagnostic with a repair, regardless of the limit, with all of its edits.
    bool wants_repairs = false;
    /// Guarantees that the contents stay unchanged while a copy of it exists. The memory of a file of bytes
    /// then refers to the contents; if null, it gets a copy.
    std::shared_ptr<const void> keeper = nullptr;
};

/// Properties of a file.
struct file_facts {
    const format* as = nullptr;         ///< the format used for reading; null if none fits
    std::optional<radix> address_radix; ///< empty if the format has only one
    std::optional<radix> data_radix;    ///< as `address_radix`
    /// The address unit used for reading, word or byte; empty if the format has only one.
    std::optional<address_unit> unit;
    std::optional<byte_order> order; ///< of the bytes of a word, if addresses count bytes
    /// The origin of the width if the file does not state it ("the longest word"); else "".
    std::string width_source;
    std::uint64_t diagnostics_left_out = 0; ///< those beyond read_options::most_diagnostics
    bool has_comments = false;              ///< the file has at least one comment
    /// The confidence that the contents have this format, judged by the part examined.
    certainty how_sure = certainty::no;
    std::vector<named_fact> more; ///< further information of the format, to show to the user
    /// Byte address at which the program starts; empty if the file does not state it.
    std::optional<std::uint64_t> start_address = std::nullopt;
};

/// The contents of a file and its faults.
struct read_result {
    /// Empty if a diagnostic is of class broken, unless keep_going is set.
    std::optional<memory_image> image;
    file_facts facts;                    ///< as far as known; also set without an image
    std::vector<diagnostic> diagnostics; ///< in file order, those of the whole file last
    /// With keep_going: the addresses of ambiguous words, which are not set.
    std::vector<address_range> unreadable;
};

/// Describes the file to write.
struct write_options {
    const format* as = nullptr;                        ///< null: determined by the file name
    std::optional<radix> address_radix = std::nullopt; ///< default: hex, if the format has a choice
    std::optional<radix> data_radix = std::nullopt;    ///< as `address_radix`
    bool runs = true; ///< put neighboring equal words on one line if the format can
    std::optional<byte_order> order = std::nullopt; ///< the byte order within a word, for a file of bytes
    std::vector<choice> choices = {};               ///< see format::write_choices
    /// Source code formats name the memory after it if no name is given, and its extension may select the
    /// separator of a list. "" if there is no name.
    std::string file_name = {};
    /// Byte address at which the program starts. Requires a format with a `largest_start` at or above it.
    std::optional<std::uint64_t> start_address = std::nullopt;
};

/// Returns the last value for @p name in @p choices, or nothing.
[[nodiscard]] KVRIMAGE_API std::optional<std::string_view> chosen(std::span<const choice> choices,
                                                                  std::string_view name);

/// Receives the text of a file in pieces.
class text_sink {
public:
    virtual ~text_sink() = default;
    /// Receives the next piece. An exception ends the writing and reaches the caller.
    virtual void write(std::string_view text) = 0;
};

/// Assigns new words to addresses.
struct assignment {
    address_range addresses; ///< the addresses to set
    std::vector<word> words; ///< in address order; repeated if there are fewer words than addresses
};

/// The edits of a file, or the reasons why it cannot be edited.
struct edit_result {
    std::vector<text_edit> edits;        ///< in order, without overlaps; empty if there are diagnostics
    std::vector<diagnostic> diagnostics; ///< the reasons; empty if the file can be edited
};

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
