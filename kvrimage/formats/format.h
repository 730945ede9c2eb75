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

/// What an address of a file counts.
enum class address_unit : std::uint8_t {
    word,
    byte,
    either ///< the format leaves it open, or its files differ
};

/// Bytes at the front of a file that tell its format.
inline constexpr std::size_t sniffed_bytes = std::size_t{64} << 10U;

/// How sure something is by a look at a file's contents.
enum class certainty : std::uint8_t { no, possible, likely, certain };

/// An answer to what a single format leaves open: {"section", ".text"}.
struct choice {
    std::string name;  ///< of a choice_kind of the format
    std::string value; ///< as its user wrote it; "" for one without a value
};

/// What a single format leaves open to its caller.
struct choice_kind {
    std::string_view name;        ///< "section": --section
    std::string_view operand;     ///< "NAME", as help shows it; "": it has no value
    std::string_view values;      ///< all that are possible, separated by blanks; "": any
    std::string_view description; ///< "read only the section NAME"
};

/// What a file says beside its words.
struct named_fact {
    std::string name;  ///< "start address"
    std::string value; ///< "80000000"
};

/// What a caller says of a file beyond its contents, and what is wanted of it.
struct read_options {
    const format* as = nullptr; ///< null: by the file's name, and its contents
    std::optional<std::uint32_t> width =
        std::nullopt; ///< bits a word, instead of the file's own or what it does not say
    std::optional<std::uint64_t> depth = std::nullopt; ///< words; addresses beyond it are broken
    std::optional<address_unit> unit = std::nullopt;   ///< word or byte
    std::optional<byte_order> order = std::nullopt;    ///< of the bytes of a word
    /// The address of the file that becomes word 0, in the file's own unit.
    std::optional<std::uint64_t> base = std::nullopt;
    /// For the missing bytes of a word, where a file of bytes has a part of it only.
    std::optional<std::uint8_t> pad = std::nullopt;
    /// What the format has in addition to choose from: see format::read_choices.
    std::vector<choice> choices = {};
    /// Its extension helps to tell the format where `as` is null; "" when there is none.
    std::string file_name = {};
    /// Hands out what can be read of a broken file, too; see read_result::unreadable.
    bool keep_going = false;
    /// Of each class; the others are counted.
    std::size_t most_diagnostics = 100;
    /// Every diagnostic with a repair is kept, whatever the limit, with all of its edits.
    bool wants_repairs = false;
    /// As long as a copy of it exists, the contents stay as they are: the memory of a file of bytes then
    /// refers to them. Null: it gets a copy.
    std::shared_ptr<const void> keeper = nullptr;
};

/// What a file says of itself.
struct file_facts {
    const format* as = nullptr;         ///< the format in which it was read; null: it fits none
    std::optional<radix> address_radix; ///< nothing where the format has no choice
    std::optional<radix> data_radix;    ///< as `address_radix`
    std::optional<address_unit>
        unit; ///< word or byte, as the addresses were taken; nothing where the format has no choice
    std::optional<byte_order> order; ///< of the bytes of a word, where the addresses count bytes
    std::string
        width_source; ///< where the width is from when the file does not say ("the longest word"); else ""
    std::uint64_t diagnostics_left_out = 0; ///< those beyond read_options::most_diagnostics
    bool has_comments = false;              ///< there is a comment in it
    certainty how_sure =
        certainty::no;            ///< that the contents are of this format, as far as they were looked at
    std::vector<named_fact> more; ///< what the format has in addition, for people
    /// Where a program starts, a byte address of the file; nothing where the file does not say it.
    std::optional<std::uint64_t> start_address = std::nullopt;
};

/// What a file holds, and what is wrong with it.
struct read_result {
    /// Nothing when a diagnostic is of class broken, unless keep_going.
    std::optional<memory_image> image;
    file_facts facts;                    ///< also of a file without an image, as far as they are known
    std::vector<diagnostic> diagnostics; ///< in file order, those of the file as a whole last
    std::vector<address_range>
        unreadable; ///< with keep_going: addresses whose words are in doubt, and not set
};

/// How an image is written.
struct write_options {
    const format* as = nullptr;                        ///< null: by the file's name
    std::optional<radix> address_radix = std::nullopt; ///< hex where a format has the choice
    std::optional<radix> data_radix = std::nullopt;    ///< as `address_radix`
    bool runs = true; ///< neighbouring equal words share a line where the format can
    std::optional<byte_order> order = std::nullopt; ///< of the bytes of a word, for a file of bytes
    std::vector<choice> choices = {};               ///< see format::write_choices
    /// What formats of source code name the memory after, where nobody names it, and whose extension may say
    /// how a list is separated; "" when there is no name.
    std::string file_name = {};
    /// Where a program starts, a byte address; only for a format with a `largest_start` that reaches it.
    std::optional<std::uint64_t> start_address = std::nullopt;
};

/// The last value that @p choices have for @p name; nothing when they have none.
[[nodiscard]] KVRIMAGE_API std::optional<std::string_view> chosen(std::span<const choice> choices,
                                                                  std::string_view name);

/// Takes the text of a file, piece by piece.
class text_sink {
public:
    virtual ~text_sink() = default;
    /// Takes the next piece. What it throws ends the writing, and reaches the caller.
    virtual void write(std::string_view text) = 0;
};

/// New words for addresses.
struct assignment {
    address_range addresses; ///< those that get new words
    std::vector<word> words; ///< in order, from the first again when they are used up
};

/// What changes in a file, or why that is not possible.
struct edit_result {
    std::vector<text_edit> edits;        ///< in order, not overlapping; none when there are diagnostics
    std::vector<diagnostic> diagnostics; ///< what is in the way; none when the edits can be made
};

/// A program or library that reads files of a format in its own way.
struct consumer {
    std::string_view name;  ///< "kvr": --for kvr
    std::string_view title; ///< "the library kvr"
    /// What it refuses or reads otherwise of @p contents, of which @p ours is our reading, with an image and
    /// with `consumer` diagnostics of what our reader knows already, which are not to be repeated.
    std::vector<diagnostic> (*check)(std::string_view contents, const read_options& options,
                                     const read_result& ours);
    std::string_view unset_words =
        "";                    ///< what becomes of words that are not set: "holds 0 there"; "": they stay so
    bool takes_broken = false; ///< check() has something to say of a file with broken diagnostics, too
};

/// A file format: what it says of itself, and what it can do. Functions that it does not have are null.
struct format {
    std::string_view id;    ///< "mif": --from mif
    std::string_view title; ///< "MIF"
    std::span<const std::string_view>
        extensions; ///< without the dot, in lower case; `id` is one more name for --from

    bool states_width = false;                ///< a file says how many bits a word has
    bool states_depth = false;                ///< a file says how many words there are
    bool states_radix = false;                ///< a file says how its numbers are written
    address_unit counts = address_unit::word; ///< what its addresses count
    bool holds_unset = true; ///< a word may be left out; else all are set, or all up to the last one that is
                             ///< where it does not state the depth. The others cannot be written.
    bool holds_dont_care = false; ///< a bit may be "don't care"
    bool has_lines = true;        ///< false: a file of bytes, between whose line ends anything may be
    bool fits_anything = false;   ///< any contents can be read: never chosen by them, only by name
    bool holds_ranges = false;    ///< neighbouring equal words may share a line (write_options::runs)

    /// How sure it is that @p head, the first bytes of a file (all of it up to sniffed_bytes), is of this
    /// format.
    certainty (*sniff)(std::string_view head) = nullptr;
    /// Reads a whole file.
    read_result (*read)(std::string_view contents, const read_options& options) = nullptr;
    /// The line of the file that sets the word at @p address last; nothing when none does. After read() has
    /// taken it.
    std::optional<place> (*find_word)(std::string_view contents, const read_options& options,
                                      std::uint64_t address) = nullptr;
    /// Calls a function with the place of each comment, in order, except those that write() itself makes. @p
    /// contents may be anything.
    void (*find_comments)(std::string_view contents, const std::function<void(const span&)>& take) = nullptr;
    /// Hands out the pieces of @p contents in order, as far as they are understood; @p contents may be
    /// broken.
    /// @param ours what read() made of them with @p options
    void (*find_pieces)(std::string_view contents, const read_options& options, const read_result& ours,
                        const piece_taker& take) = nullptr;
    /// The edits that make @p contents, which read() takes with @p options as @p ours, hold the words of @p
    /// assignments, at the addresses of the image; of two for one address the later counts. Comments and
    /// layout stay.
    edit_result (*edit)(std::string_view contents, const read_options& options, const read_result& ours,
                        std::span<const assignment> assignments) = nullptr;
    /// @p contents, which read() takes with @p options as @p ours, in the canonical layout: the same words,
    /// the same comments, and itself when it is laid out already, as what write() makes is.
    std::string (*lay_out)(std::string_view contents, const read_options& options,
                           const read_result& ours) = nullptr;
    /// Why @p image cannot be written; broken diagnostics without a place. Empty when write() may be called.
    std::vector<diagnostic> (*can_write)(const memory_image& image, const write_options& options) = nullptr;
    /// Writes @p image, which can_write() has nothing against.
    void (*write)(const memory_image& image, const write_options& options, text_sink& output) = nullptr;
    /// Bytes that write() makes, about: an upper bound within a few per cent. It costs what the image holds,
    /// not what it declares.
    std::uint64_t (*written_size)(const memory_image& image, const write_options& options) = nullptr;
    std::span<const consumer> consumers = {}; ///< those whose reading check() can compare with ours
    std::span<const choice_kind> read_choices =
        {}; ///< what a caller may say when it reads, beyond read_options
    std::span<const choice_kind> write_choices = {}; ///< and when it writes
    /// The radixes in which write() writes words and addresses, the usual one first; empty: all, where the
    /// format has the choice. It takes another one for the usual one.
    ///@{
    std::span<const radix> data_radixes = {};
    std::span<const radix> address_radixes = {};
    ///@}
    std::uint64_t largest_start = 0; ///< of the addresses where a program starts; 0: it holds none
};

} // namespace kvrimage
