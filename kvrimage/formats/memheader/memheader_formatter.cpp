#include "kvrimage/formats/memheader/memheader_formatter.h"

#include "kvrimage/formats/memheader/memheader_parser.h"
#include "kvrimage/formats/memheader/memheader_settings.h"
#include "kvrimage/layout/canonical_digits.h"
#include "kvrimage/layout/list_layout.h"

#include <fmt/format.h>

#include <algorithm>

namespace kvrimage {

namespace {

/// Digits of the last address, and of the largest one that has a word.
std::size_t address_digits_of_memheader(std::string_view contents, const memory_image& image) {
    std::uint64_t largest = image.depth() - 1;
    for_each_memheader_piece(contents, [&largest](const memheader_piece& piece) {
        largest = std::max(largest, piece.address.value_or(0));
    });
    return fmt::formatted_size("{:X}", largest);
}

/// "#Width=8". One that is not known keeps its text.
std::string memheader_line(const memheader_piece& setting, std::string_view contents) {
    const memheader_setting* const known = memheader_setting_of(setting.name.in(contents));
    if (known == nullptr) {
        return std::string(setting.where.in(contents));
    }
    const std::string_view value = setting.value.in(contents);
    const memheader_layout* const layout = memheader_layout_of(value);
    return fmt::format("#{}={}", known->name,
                       layout != nullptr ? std::string(layout->name) : canonical_number(value, 1));
}

class memheader_formatter {
public:
    memheader_formatter(std::string_view contents, const read_result& ours)
        : text(contents),
          word_digits(canonical_word_digits(*ours.facts.data_radix, ours.image->width())),
          address_digits(address_digits_of_memheader(contents, *ours.image)),
          layout(contents) {}

    void take(const memheader_piece& piece) {
        switch (piece.what) {
        case memheader_piece::kind::setting:
            layout.add(piece.where, memheader_line(piece, text), true);
            break;
        case memheader_piece::kind::data:
            layout.add(piece.where, "#Data", true);
            break;
        case memheader_piece::kind::address:
            layout.add(piece.where, fmt::format("{:0{}X}:", *piece.address, address_digits), true);
            break;
        default: // memheader_piece::kind::word
            add_word(piece);
            break;
        }
        is_after_address = piece.what == memheader_piece::kind::address;
    }
    [[nodiscard]] std::string finish() { return layout.finish(); }

private:
    /// The first one of a row follows its address without a blank.
    void add_word(const memheader_piece& piece) {
        const std::string word = canonical_number(piece.where.in(text), word_digits);
        if (is_after_address) {
            layout.append(word);
        } else {
            layout.add(piece.where, word);
        }
    }

    std::string_view text;
    std::size_t word_digits;
    std::size_t address_digits;
    list_layout layout;
    bool is_after_address = false;
};

} // namespace

std::string lay_out_memheader(std::string_view contents, const read_options& /*options*/,
                              const read_result& ours) {
    memheader_formatter formatter(contents, ours);
    for_each_memheader_piece(contents, [&](const memheader_piece& piece) { formatter.take(piece); });
    return formatter.finish();
}

} // namespace kvrimage
