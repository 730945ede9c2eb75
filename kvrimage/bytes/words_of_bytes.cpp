#include "kvrimage/bytes/words_of_bytes.h"

#include "kvrimage/bytes/bytes_of_words.h"
#include "kvrimage/diagnostics/diagnose.h"
#include "kvrimage/diagnostics/places.h"
#include "kvrimage/exchange/far_start.h"
#include "kvrimage/files/byte_buffer.h"
#include "kvrimage/image/byte_texts.h"
#include "kvrimage/image/byte_words.h"
#include "kvrimage/image/image_words.h"
#include "kvrimage/image/word_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace kvrimage {

namespace {

/// Joins consecutive bytes, which come in order of addresses, to words.
class byte_joiner {
public:
    byte_joiner(std::uint32_t width, byte_order order, std::optional<std::uint8_t> pad_byte, image_words& to)
        : bytes_per_word(bytes_of_width(width)),
          pad(pad_byte),
          texts(width, order),
          words(width, order, to) {}

    /// @param address in bytes from the first word
    void take(std::uint64_t address, std::string_view bytes) {
        const std::size_t head = std::min<std::size_t>(bytes.size(), bytes_to_border(address));
        take_part(address, bytes.substr(0, head));
        address += head;
        bytes.remove_prefix(head);
        const std::size_t whole = bytes.size() - bytes.size() % bytes_per_word;
        if (whole != 0) {
            store(address / bytes_per_word, bytes.substr(0, whole));
        }
        take_part(address + whole, bytes.substr(whole));
    }
    void finish() {
        finish_part();
        words.flush();
    }

    /// A word with missing bytes.
    struct partial_word {
        std::uint64_t address; ///< of the word
        std::uint64_t byte;    ///< address of a byte that is present
        std::size_t found;     ///< number of bytes present
    };
    [[nodiscard]] const std::vector<partial_word>& partial() const noexcept { return partial_words; }
    /// Returns the words with nonzero surplus bits, which were not stored.
    [[nodiscard]] const std::vector<std::uint64_t>& too_wide() const noexcept { return wide_words; }
    [[nodiscard]] const std::string& first_too_wide() const noexcept { return first_wide; }

private:
    [[nodiscard]] std::uint64_t bytes_to_border(std::uint64_t address) const {
        const std::uint64_t over = address % bytes_per_word;
        return over == 0 ? 0 : bytes_per_word - over;
    }

    void take_part(std::uint64_t address, std::string_view bytes) {
        if (bytes.empty()) {
            return;
        }
        const std::uint64_t word = address / bytes_per_word;
        if (part.empty() || word != part_word) {
            finish_part();
            part_word = word;
            part.assign(bytes_per_word, static_cast<char>(pad.value_or(0)));
            part_byte = address;
        }
        bytes.copy(&part[address % bytes_per_word], bytes.size());
        part_found += bytes.size();
        if (part_found == bytes_per_word) {
            finish_part();
        }
    }
    void finish_part() {
        if (part_found == bytes_per_word || (part_found != 0 && pad)) {
            store(part_word, part);
        } else if (part_found != 0) {
            partial_words.push_back({part_word, part_byte, part_found});
        }
        part_found = 0;
    }

    /// Stores whole words.
    void store(std::uint64_t address, std::string_view bytes) {
        for (;;) {
            const std::uint64_t stored = words.set(address, bytes);
            bytes.remove_prefix(stored * bytes_per_word);
            if (bytes.empty()) {
                return;
            }
            address += stored;
            const std::string_view wide = bytes.substr(0, bytes_per_word);
            first_wide = wide_words.empty() ? texts.all_digits(wide) : first_wide;
            wide_words.push_back(address++);
            bytes.remove_prefix(bytes_per_word);
        }
    }

    std::uint32_t bytes_per_word;
    std::optional<std::uint8_t> pad;
    byte_texts texts;
    byte_word_setter words;

    std::string part; ///< the bytes of an incomplete word; missing ones are the pad
    std::uint64_t part_word = 0;
    std::uint64_t part_byte = 0;
    std::size_t part_found = 0;

    std::vector<partial_word> partial_words;
    std::vector<std::uint64_t> wide_words;
    std::string first_wide;
};

/// Copies blocks of bytes to one buffer.
class byte_copy {
public:
    explicit byte_copy(const std::vector<byte_block>& of) {
        std::uint64_t size = 0;
        for (const byte_block& each : of) {
            size += each.bytes.size();
        }
        copies->reserve(size);
    }
    /// Copies @p bytes, a part of these blocks, and returns a view of the copy.
    std::string_view add(std::string_view bytes) {
        char* const place = copies->end();
        bytes.copy(place, bytes.size());
        copies->used(bytes.size());
        return {place, bytes.size()};
    }
    [[nodiscard]] std::shared_ptr<const void> keeper() const { return copies; }

private:
    std::shared_ptr<byte_buffer> copies = std::make_shared<byte_buffer>();
};

class byte_reading {
public:
    byte_reading(byte_blocks& of, const read_options& given, const byte_finder& finder, diagnostic_list& to,
                 read_result& into)
        : blocks(of),
          options(given),
          find(finder),
          list(to),
          result(into),
          width(given.width.value_or(bits_per_byte)),
          bytes_per_word(bytes_of_width(width)),
          base(given.base.value_or(0)) {}

    void read() {
        result.facts.unit = address_unit::byte;
        result.facts.order = options.order;
        report_overlaps(blocks.sort());
        if (blocks.empty()) {
            make_empty_image();
            return;
        }
        const bool knows_order = has_order();
        if (has_base() && knows_order) {
            make_image();
        }
    }

private:
    void report_overlaps(const std::vector<byte_overlap>& overlaps) {
        places where;
        std::optional<std::uint64_t> first;
        for (const byte_overlap& each : overlaps) {
            if (each.differ) {
                first = first.value_or(each.first);
                add_place(where, each.first);
            }
        }
        if (first) {
            list.add(diagnose::overwritten_byte(where, fmt::format("{:X}", *first)));
        }
    }
    /// Adds the place of the byte at @p address, but does not look for it if @p where will not keep it.
    void add_place(places& where, std::uint64_t address) const {
        where.add(where.count() < places::kept ? find(address) : span());
    }

    void make_empty_image() {
        if (!options.depth) {
            list.add(diagnose::no_bytes({}));
            return;
        }
        result.image.emplace(width, *options.depth);
        list.add(diagnose::no_words({}));
    }

    [[nodiscard]] bool has_order() {
        if (bytes_per_word == 1 || options.order) {
            return true;
        }
        std::string first(blocks.all().front().bytes.substr(0, bytes_per_word));
        first.resize(bytes_per_word);
        diagnostic found = diagnose::byte_order({}, width);
        found.hint = fmt::format("add --endian little (first word {}) or big ({})",
                                 byte_texts(width, byte_order::little).all_digits(first),
                                 byte_texts(width, byte_order::big).all_digits(first));
        found.option = "--endian little";
        list.add(std::move(found));
        return false;
    }

    /// Requires contents that begin at the base or above it, but not so far above it that this base cannot be
    /// intended.
    [[nodiscard]] bool has_base() {
        const std::uint64_t lowest = blocks.all().front().address;
        const std::string shown = fmt::format("{:X}", lowest);
        if (lowest < base) {
            list.add(diagnose::below_base(find(lowest), shown, fmt::format("{:X}", base)));
            return false;
        }
        const bool keeps_addresses = options.base == 0U || options.depth;
        if (!keeps_addresses && lowest - base >= least_far_start) {
            diagnostic found = diagnose::base_needed(find(lowest), shown);
            found.option = "--base 0x" + shown;
            list.add(std::move(found));
            return false;
        }
        return true;
    }

    void make_image() {
        const std::uint64_t highest = blocks.all().back().last() - base;
        const std::uint64_t needed = highest / bytes_per_word + 1;
        const std::uint64_t depth = std::min(options.depth.value_or(needed), deepest_memory);
        if (needed > depth) {
            report_beyond(depth, needed);
        }
        if (needed <= depth && are_whole_words()) {
            keep_bytes(depth);
        } else {
            join_words(depth);
        }
    }

    /// True if no word has missing bytes or is too wide.
    [[nodiscard]] bool are_whole_words() const {
        const byte_texts texts(width, options.order.value_or(byte_order::big));
        return std::ranges::all_of(blocks.all(), [&](const byte_block& each) {
            return (each.address - base) % bytes_per_word == 0 && each.bytes.size() % bytes_per_word == 0 &&
                   texts.count_fitting(each.bytes) == each.bytes.size() / bytes_per_word;
        });
    }

    /// Keeps the words as bytes of the file.
    void keep_bytes(std::uint64_t depth) {
        std::shared_ptr<const void> keeper = blocks.keeper();
        std::optional<byte_copy> copy;
        if (keeper == nullptr) {
            copy.emplace(blocks.all());
            keeper = copy->keeper();
        }
        std::vector<byte_words::block> in_words;
        in_words.reserve(blocks.all().size());
        for (const byte_block& each : blocks.all()) {
            in_words.push_back(
                {(each.address - base) / bytes_per_word, copy ? copy->add(each.bytes) : each.bytes});
        }
        result.image.emplace(
            width, std::make_unique<image_words>(depth, byte_words(std::move(in_words), width,
                                                                   options.order.value_or(byte_order::big),
                                                                   std::move(keeper))));
    }

    void join_words(std::uint64_t depth) {
        auto words = std::make_unique<image_words>(depth);
        byte_joiner joiner(width, options.order.value_or(byte_order::big), options.pad, *words);
        for (const byte_block& block : blocks.all()) {
            take(joiner, block, depth * bytes_per_word);
        }
        joiner.finish();
        report_partial(joiner);
        report_too_wide(joiner);
        result.image.emplace(width, std::move(words));
    }

    void take(byte_joiner& joiner, const byte_block& block, std::uint64_t end) const {
        const std::uint64_t first = block.address - base;
        if (first < end) {
            joiner.take(first, block.bytes.substr(0, static_cast<std::size_t>(std::min<std::uint64_t>(
                                                         end - first, block.bytes.size()))));
        }
    }

    void report_beyond(std::uint64_t depth, std::uint64_t needed) {
        const std::uint64_t end = base + depth * bytes_per_word;
        const auto beyond =
            std::ranges::find_if(blocks.all(), [end](const byte_block& each) { return each.last() >= end; });
        const std::uint64_t first = std::max(beyond->address, end);
        if (options.depth) {
            list.add(diagnose::beyond_depth(find(first), (first - base) / bytes_per_word, depth, depth - 1,
                                            "--depth", needed));
        } else {
            list.add(diagnose::address_outside(find(first), fmt::format("{:X}", first),
                                               fmt::format("{:X}", end - 1)));
        }
    }

    void report_partial(const byte_joiner& joiner) {
        places where;
        for (const byte_joiner::partial_word& each : joiner.partial()) {
            add_place(where, base + each.byte);
            result.unreadable.push_back({each.address, each.address});
        }
        if (!where.empty()) {
            const auto& first = joiner.partial().front();
            diagnostic found = diagnose::incomplete_word(where, first.address, first.found, bytes_per_word);
            found.option = "--pad 0";
            list.add(std::move(found));
        }
    }

    void report_too_wide(const byte_joiner& joiner) {
        places where;
        for (const std::uint64_t address : joiner.too_wide()) {
            add_place(where, base + address * bytes_per_word);
            result.unreadable.push_back({address, address});
        }
        if (!where.empty()) {
            list.add(
                diagnose::surplus_bits(where, joiner.too_wide().front(), joiner.first_too_wide(), width));
        }
        std::ranges::sort(result.unreadable, {}, &address_range::first);
    }

    byte_blocks& blocks;
    const read_options& options;
    const byte_finder& find;
    diagnostic_list& list;
    read_result& result;
    std::uint32_t width;
    std::uint32_t bytes_per_word;
    std::uint64_t base;
};

} // namespace

void make_words_of_bytes(byte_blocks& blocks, const read_options& options, const byte_finder& find,
                         diagnostic_list& diagnostics, read_result& result) {
    byte_reading(blocks, options, find, diagnostics, result).read();
}

void make_words_beside_faults(bool has_fault, byte_blocks& blocks, const read_options& options,
                              const byte_finder& find, diagnostic_list& diagnostics, read_result& result) {
    if (!has_fault || (options.keep_going && !blocks.empty())) {
        make_words_of_bytes(blocks, options, find, diagnostics, result);
    }
}

void finish_byte_reading(std::string_view contents, const read_options& options, diagnostic_list& diagnostics,
                         read_result& result) {
    if (!options.keep_going) {
        result.unreadable.clear();
        if (diagnostics.has_broken()) {
            result.image.reset();
        }
    }
    result.facts.diagnostics_left_out = diagnostics.left_out();
    result.diagnostics = diagnostics.finish(contents);
}

} // namespace kvrimage
