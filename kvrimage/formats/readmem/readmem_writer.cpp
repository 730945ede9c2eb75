#include "kvrimage/formats/readmem/readmem_writer.h"

#include "kvr/memory/store/packed_words.h"
#include "kvrimage/diagnostics/diagnose.h"
#include "kvrimage/formats/readmem/readmem_banner.h"
#include "kvrimage/formats/sink_buffer.h"
#include "kvrimage/image/image_words.h"
#include "kvrimage/image/text_rows.h"
#include "kvrimage/image/word_runs.h"
#include "kvrimage/image/word_search.h"
#include "kvrimage/image/word_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>

namespace kvrimage {

namespace {

constexpr std::uint64_t most_readmem_words_per_line = 1024;

/// Returns the value of `words-per-line`; nothing if it is invalid.
std::optional<std::uint64_t> readmem_words_per_line_of(std::string_view value) {
    std::uint64_t number = 0;
    const char* const end = value.data() + value.size();
    const auto parsed = std::from_chars(value.data(), end, number);
    const bool is_number = parsed.ec == std::errc() && parsed.ptr == end;
    if (is_number && number >= 1 && number <= most_readmem_words_per_line) {
        return number;
    }
    return std::nullopt;
}

/// Returns the default: up to eight words, as many as fit the line.
std::uint64_t usual_readmem_words_per_line(std::size_t digits) {
    constexpr std::size_t line_length = 80;
    std::uint64_t count = 8;
    while (count > 1 && count * (digits + 1) > line_length + 1) {
        count /= 2;
    }
    return count;
}

/// The layout of a file.
struct readmem_layout {
    std::uint64_t words_per_line;
    std::size_t digits;         ///< of a word
    std::size_t address_digits; ///< of an address
    bool has_every_address;
    std::string banner; ///< "" for no banner

    readmem_layout(const memory_image& image, const write_options& options, radix digits_radix)
        : digits(most_characters_of_word(digits_radix, image.width())),
          address_digits(fmt::formatted_size("{:X}", image.bounds().value_or(address_range{0, 0}).last)),
          has_every_address(chosen(options.choices, "every-address").has_value()),
          banner(chosen(options.choices, "banner") ? readmem_banner(image) : "") {
        const auto given = chosen(options.choices, "words-per-line");
        words_per_line = (given ? readmem_words_per_line_of(*given) : std::nullopt)
                             .value_or(usual_readmem_words_per_line(digits));
    }
};

/// Places line breaks and addresses among the words.
class readmem_lines {
public:
    explicit readmem_lines(const readmem_layout& made) : layout(made) {}

    /// Appends the text before the word at @p address to @p text.
    void begin_word(std::uint64_t address, std::string& text) {
        const bool is_next = address == next;
        if (is_next && address % layout.words_per_line != 0) {
            text += ' ';
        } else {
            text += has_words ? "\n" : "";
            if (!is_next || layout.has_every_address) {
                fmt::format_to(std::back_inserter(text), "@{:0{}X} ", address, layout.address_digits);
            }
        }
        go_on(address, 1);
    }
    /// Returns whether only one character, separator(), precedes the word at @p address.
    [[nodiscard]] bool is_in_stretch(std::uint64_t address) const {
        return has_words && address == next &&
               (!layout.has_every_address || address % layout.words_per_line != 0);
    }
    /// Returns the number of words on the line before the one at @p address.
    [[nodiscard]] std::uint64_t place_in_line(std::uint64_t address) const {
        return address % layout.words_per_line;
    }
    [[nodiscard]] std::uint64_t words_per_line() const { return layout.words_per_line; }
    [[nodiscard]] bool has_every_address() const { return layout.has_every_address; }
    /// Advances past @p count words from @p address on.
    void go_on(std::uint64_t address, std::uint64_t count) {
        has_words = true;
        next = address + count;
    }

private:
    const readmem_layout& layout;
    std::uint64_t next = 0;
    bool has_words = false;
};

class readmem_file_writer {
public:
    readmem_file_writer(const readmem_layout& layout, text_sink& target) : lines(layout), output(target) {
        output.write(layout.banner);
    }
    void write(std::uint64_t address, std::string_view word) {
        text.clear();
        lines.begin_word(address, text);
        text.append(word);
        output.write(text);
    }
    /// Writes the words of @p row from @p address on, which the image stores as they are written.
    void write(std::uint64_t address, const kvr::word_row& row) {
        for (std::uint32_t index = 0; index < row.count;) {
            if (lines.is_in_stretch(address + index)) {
                index += write_stretch(address + index, row.part(index, row.count - index));
            } else {
                write(address + index, row[index]);
                ++index;
            }
        }
    }
    void finish() {
        output.write("\n");
        output.flush();
    }

private:
    /// Writes the first words of @p row, each after a blank or line end: as many as the room allows, up to a
    /// line that begins with its address.
    std::uint32_t write_stretch(std::uint64_t address, const kvr::word_row& row) {
        const std::uint64_t in_line = lines.place_in_line(address);
        std::uint64_t most = std::max<std::uint64_t>(kvr::output_file::room_limit / (row.length + 1), 1);
        if (lines.has_every_address()) {
            most = std::min(most, lines.words_per_line() - in_line);
        }
        const auto count = static_cast<std::uint32_t>(std::min<std::uint64_t>(most, row.count));
        output.write_with([this, in_line, &row, count](kvr::output_file& file) {
            char* place = file.room(std::size_t{count} * (row.length + 1));
            std::uint64_t left = lines.words_per_line() - in_line;
            for (std::uint32_t index = 0; index < count; ++index, place += row.length) {
                *place++ = left == lines.words_per_line() ? '\n' : ' ';
                left = left == 1 ? lines.words_per_line() : left - 1;
                kvr::copy_characters(row[index].data(), row.length, place);
            }
            file.used(std::size_t{count} * (row.length + 1));
            return true;
        });
        lines.go_on(address, count);
        return count;
    }

    readmem_lines lines;
    sink_buffer output;
    std::string text;
};

/// Returns whether the image stores words of @p length characters as they are written.
bool is_as_readmem_has_it(std::size_t length, std::uint32_t width, radix digits_radix) {
    return length == most_characters_of_word(digits_radix, width);
}

std::vector<diagnostic> can_write_readmem(const memory_image& image, const write_options& options,
                                          radix digits_radix) {
    std::vector<diagnostic> found;
    const auto given = chosen(options.choices, "words-per-line");
    if (given && !readmem_words_per_line_of(*given)) {
        found.push_back(diagnose::choice_value({}, "words-per-line", *given,
                                               fmt::format("1 to {}", most_readmem_words_per_line)));
    }
    if (!image.bounds()) {
        found.push_back(diagnose::readmem_nothing_to_write({}));
    }
    const image_words& words = image.words();
    if (const auto offset = find_unshown_word(words, image.width(), digits_radix, 0, words.size())) {
        const std::uint64_t address = image.base() + *offset;
        found.push_back(diagnose::readmem_dont_care_bit({}, words[*offset], address));
        found.back().address = address;
    }
    return found;
}

void write_readmem(const memory_image& image, const write_options& options, text_sink& output,
                   radix digits_radix) {
    const readmem_layout layout(image, options, digits_radix);
    readmem_file_writer writer(layout, output);
    std::string text;
    for_each_text(
        image.words(),
        [&](const kvr::word_row& row, std::uint64_t first) {
            if (!is_as_readmem_has_it(row.length, image.width(), digits_radix)) {
                return 0U;
            }
            writer.write(image.base() + first, row);
            return row.count;
        },
        [&](const text_run& run) {
            show_word(run.text, digits_radix, image.width(), text);
            for (std::uint64_t offset = run.first; offset <= run.last; ++offset) {
                writer.write(image.base() + offset, text);
            }
        });
    writer.finish();
}

/// Counts the characters of a file.
class readmem_size {
public:
    readmem_size(const readmem_layout& made, std::uint64_t first_address)
        : layout(made),
          base(first_address),
          size(made.banner.size() + 1) {}

    void take(std::uint64_t first_offset, std::uint64_t last_offset) {
        const std::uint64_t first = base + first_offset;
        const std::uint64_t last = base + last_offset;
        const bool is_next = first == next;
        const bool goes_on = is_next && first % layout.words_per_line != 0;
        const std::uint64_t lines =
            last / layout.words_per_line - first / layout.words_per_line + (goes_on ? 0 : 1);
        const std::uint64_t addresses = layout.has_every_address ? lines : (is_next ? 0 : 1);
        size += (last - first + 1) * (layout.digits + 1) + addresses * (layout.address_digits + 2);
        next = last + 1;
    }
    [[nodiscard]] std::uint64_t result() const { return size; }

private:
    const readmem_layout& layout;
    std::uint64_t base;
    std::uint64_t size;
    std::uint64_t next = 0;
};

std::uint64_t written_readmem_size(const memory_image& image, const write_options& options,
                                   radix digits_radix) {
    const readmem_layout layout(image, options, digits_radix);
    readmem_size size(layout, image.base());
    for_each_set_stretch(image.words(),
                         [&size](std::uint64_t first, std::uint64_t last) { size.take(first, last); });
    return size.result();
}

} // namespace

std::vector<diagnostic> can_write_readmemh(const memory_image& image, const write_options& options) {
    return can_write_readmem(image, options, radix::hex);
}

void write_readmemh(const memory_image& image, const write_options& options, text_sink& output) {
    write_readmem(image, options, output, radix::hex);
}

std::uint64_t written_readmemh_size(const memory_image& image, const write_options& options) {
    return written_readmem_size(image, options, radix::hex);
}

std::vector<diagnostic> can_write_readmemb(const memory_image& image, const write_options& options) {
    return can_write_readmem(image, options, radix::bin);
}

void write_readmemb(const memory_image& image, const write_options& options, text_sink& output) {
    write_readmem(image, options, output, radix::bin);
}

std::uint64_t written_readmemb_size(const memory_image& image, const write_options& options) {
    return written_readmem_size(image, options, radix::bin);
}

} // namespace kvrimage
