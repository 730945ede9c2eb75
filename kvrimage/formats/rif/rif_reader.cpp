#include "kvrimage/formats/rif/rif_reader.h"

#include "kvr/numeric/digit_value.h"
#include "kvr/util/letter_case.h"
#include "kvrimage/diagnostics/diagnose.h"
#include "kvrimage/formats/foreign_content.h"
#include "kvrimage/formats/rif/fast_rif_lines.h"
#include "kvrimage/formats/rif/rif_characters.h"
#include "kvrimage/formats/rif/rif_diagnostics.h"
#include "kvrimage/formats/rif/rif_format.h"
#include "kvrimage/formats/rif/rif_parser.h"
#include "kvrimage/formats/rif/rif_search.h"
#include "kvrimage/formats/rif/rif_sniff.h"
#include "kvrimage/image/image_words.h"
#include "kvrimage/image/word_runs.h"
#include "kvrimage/image/word_text.h"

#include <algorithm>
#include <memory>
#include <string>
#include <utility>

namespace kvrimage {

namespace {

/// Stands in the image for a word that has a fault, until the file has ended.
constexpr std::string_view unreadable_word = "?";

constexpr std::size_t most_digits = widest_word / bits_per_hex_digit;

class rif_reading final : public rif_sink {
public:
    rif_reading(std::string_view contents, const read_options& given)
        : text(contents),
          options(given),
          list(given.most_diagnostics),
          diagnostics(contents, given, list),
          parser(contents, *this),
          words(std::make_unique<image_words>(most_words())) {}

    read_result read();
    void take(const rif_piece& piece) override;

private:
    [[nodiscard]] std::uint64_t most_words() const {
        return std::min(options.depth.value_or(deepest_memory), deepest_memory);
    }
    void read_lines();
    bool read_fast_line();
    void store_fast(const fast_rif_line& line, std::uint64_t first);
    [[nodiscard]] bool fits_at_once(const fast_rif_line& line) const;
    void take_word(const rif_piece& piece);
    [[nodiscard]] bool is_word(const rif_piece& piece);
    void refuse_address(const rif_piece& piece);
    std::string_view in_upper_case(std::string_view word);
    [[nodiscard]] std::uint32_t width() const;
    void add_diagnostics();
    void add_set_twice();
    bool require_proportionate_words();
    memory_image make_image(std::vector<address_range>& unreadable);

    std::string_view text;
    const read_options& options;
    diagnostic_list list;
    rif_diagnostics diagnostics;
    rif_parser parser;
    std::unique_ptr<image_words> words;
    std::uint64_t set_end = 0; ///< after the highest address that was set
    std::size_t longest = 0;   ///< digits
    bool has_unreadable = false;
    std::string scratch;

    places set_twice;
    std::uint64_t first_set_twice = 0;
    places too_wide;
    span first_too_wide;
    std::uint64_t first_bits = 0;
    std::uint64_t most_bits = 0;
    places beyond;
    std::uint64_t first_beyond = 0;
    std::uint64_t last_beyond = 0;
    places outside; ///< words after the last address
};

read_result rif_reading::read() {
    read_lines();
    add_diagnostics();
    if (list.has_broken() && is_hardly_rif(text.substr(0, sniffed_bytes))) {
        if (auto foreign = foreign_content(text, &rif_format, certainty::certain)) {
            return only_finding(rif_format, text, *std::move(foreign));
        }
    }
    read_result result;
    result.facts.as = &rif_format;
    result.facts.width_source = options.width || longest == 0 ? "" : "the longest word";
    result.facts.has_comments = diagnostics.has_comments();
    const bool has_size = set_end != 0 || (options.width && options.depth);
    if (set_end == 0 && !list.has_broken()) {
        list.add(has_size ? diagnose::no_words({}) : diagnose::size_unknown({}));
    }
    const bool wants_image = options.keep_going || !list.has_broken();
    if (has_size && wants_image && require_proportionate_words()) {
        result.image = make_image(result.unreadable);
    }
    result.facts.diagnostics_left_out = list.left_out();
    result.diagnostics = list.finish(text);
    return result;
}

void rif_reading::read_lines() {
    while (!parser.at_end()) {
        if (!read_fast_line()) {
            parser.parse_line();
        }
    }
}

/// False, with nothing changed, when the line at hand is not regular or its words take a closer look.
bool rif_reading::read_fast_line() {
    const fast_rif_line line = find_fast_rif_line(text, parser.position());
    if (line.end == 0) {
        return false;
    }
    std::uint64_t address = parser.next_address();
    if (line.is_address) {
        address = line.address;
    } else if (line.count != 0) {
        if (address < set_end || address > words->size() || words->size() - address < line.count ||
            !fits_at_once(line)) {
            return false;
        }
        store_fast(line, address);
        address += line.count;
    }
    parser.skip_to(line.end, address);
    return true;
}

/// True when each word of @p line fits the width.
bool rif_reading::fits_at_once(const fast_rif_line& line) const {
    const std::size_t bits = line.length * bits_per_hex_digit;
    const std::size_t surplus = bits - std::min<std::size_t>(bits, options.width.value_or(widest_word));
    if (surplus == 0) {
        return true;
    }
    const std::size_t top_bits = bits_per_hex_digit - std::min<std::size_t>(surplus, bits_per_hex_digit);
    unsigned all = 0;
    for (std::size_t index = 0; index < line.count; ++index) {
        all |= kvr::digit_value(line[index].front());
    }
    return surplus < bits_per_hex_digit && all >> top_bits == 0;
}

void rif_reading::store_fast(const fast_rif_line& line, std::uint64_t first) {
    for (std::size_t index = 0; index < line.count; ++index) {
        words->set(first + index, line.has_lower_case ? in_upper_case(line[index]) : line[index]);
    }
    diagnostics.count_regular_words(line.count);
    longest = std::max(longest, line.length);
    set_end = first + line.count;
}

void rif_reading::take(const rif_piece& piece) {
    diagnostics.take(piece);
    if (piece.what == rif_piece::kind::word && piece.address != no_rif_address) {
        take_word(piece);
    }
}

void rif_reading::take_word(const rif_piece& piece) {
    if (piece.address >= words->size()) {
        refuse_address(piece);
        return;
    }
    const bool readable = is_word(piece);
    has_unreadable = has_unreadable || !readable;
    if (piece.address < set_end && !(*words)[piece.address].empty()) {
        first_set_twice = set_twice.empty() ? piece.address : first_set_twice;
        set_twice.add(piece.where);
    }
    words->set(piece.address, readable ? in_upper_case(piece.where.in(text)) : unreadable_word);
    set_end = std::max(set_end, piece.address + 1);
}

void rif_reading::refuse_address(const rif_piece& piece) {
    if (piece.address >= deepest_memory) {
        outside.add(piece.where);
        return;
    }
    first_beyond = beyond.empty() ? piece.address : first_beyond;
    last_beyond = std::max(last_beyond, piece.address);
    beyond.add(piece.where);
}

/// Judges a word by its digits and its value.
bool rif_reading::is_word(const rif_piece& piece) {
    if (piece.fault.length != 0) {
        return false;
    }
    const std::size_t digits = piece.where.length;
    const std::uint32_t limit = options.width.value_or(widest_word);
    if (digits > limit / bits_per_hex_digit) {
        if (const auto too_many = make_word(piece.where.in(text), radix::hex, limit, scratch)) {
            first_bits = too_wide.empty() ? too_many->bits_needed : first_bits;
            first_too_wide = too_wide.empty() ? piece.where : first_too_wide;
            most_bits = std::max(most_bits, too_many->bits_needed);
            too_wide.add(piece.where);
            return false;
        }
    }
    longest = std::max(longest, std::min(digits, most_digits));
    return true;
}

std::string_view rif_reading::in_upper_case(std::string_view word) {
    scratch.assign(word);
    kvr::to_upper(scratch);
    return scratch;
}

/// Of a file that has words. Where none of them can be read it does not matter.
std::uint32_t rif_reading::width() const {
    const auto own_width = static_cast<std::uint32_t>(std::max<std::size_t>(longest, 1) * bits_per_hex_digit);
    return options.width.value_or(own_width);
}

void rif_reading::add_diagnostics() {
    diagnostics.finish();
    if (!too_wide.empty()) {
        list.add(diagnose::too_wide(too_wide, first_too_wide.in(text), first_bits,
                                    options.width.value_or(widest_word), "--width", most_bits));
    }
    if (!beyond.empty()) {
        list.add(
            diagnose::beyond_depth(beyond, first_beyond, words->size(), words->size() - 1, last_beyond + 1));
    }
    if (!outside.empty()) {
        list.add(diagnose::address_outside(outside, "100000000", highest_rif_address_text));
    }
    if (!set_twice.empty()) {
        add_set_twice();
    }
}

/// Where the word was set before is looked up only now: nothing is kept of words that are set once.
void rif_reading::add_set_twice() {
    const auto before = first_rif_word(text, first_set_twice);
    const auto line =
        std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(before->offset), '\n') + 1;
    list.add(diagnose::overwritten_word(set_twice, first_set_twice, line));
}

/// Refuses a memory that a few long words make out of proportion to its file.
bool rif_reading::require_proportionate_words() {
    constexpr std::uint32_t usual_width = 256; // what takes a few times the file is not looked at
    constexpr std::uint64_t always_granted = std::uint64_t{16} << 20U;
    constexpr std::uint64_t most_growth = 4;
    if (width() <= usual_width) {
        return true;
    }
    std::uint64_t count = 0;
    for_each_row_or_run(
        *words,
        [&count](const kvr::word_row& row, std::uint64_t) {
            count += row.count;
            return row.count;
        },
        [&count](const text_run&) { ++count; });
    const std::uint64_t size = count * (width() / bits_per_hex_digit);
    const bool proportionate = size <= always_granted || size / most_growth <= text.size();
    if (!proportionate) {
        list.add(diagnose::out_of_proportion({}, count, width(), size >> 20U, text.size()));
    }
    return proportionate;
}

memory_image rif_reading::make_image(std::vector<address_range>& unreadable) {
    words->resize(options.depth.value_or(set_end));
    if (has_unreadable) {
        for_each_run(*words, [&unreadable](const text_run& run) {
            if (run.text == unreadable_word) {
                unreadable.push_back({run.first, run.last});
            }
        });
    }
    const std::uint32_t bits = width();
    words->transform(
        [bits](std::string_view word, std::string& made) {
            made.clear();
            if (!word.empty() && word != unreadable_word) {
                make_word(word, radix::hex, bits, made); // it was judged when it was read
            }
            return true;
        },
        [bits](const kvr::word_row& row) { return are_words(row, bits); });
    return {bits, std::move(words)};
}

} // namespace

read_result read_rif(std::string_view contents, const read_options& options) {
    return rif_reading(contents, options).read();
}

} // namespace kvrimage
