#include "tools/kvrmem/word_text.h"

#include "tools/kvrmem/file_format.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

namespace kvrmem {

namespace {

using error_kind = kvr::exact_word_error::kind;

/// The radix in which the image holds @p word.
KVR_MEMORY_RADIXES radix_of_word(std::string_view word, std::uint32_t width) {
    return word.size() == width ? RADIX_BIN : RADIX_HEX;
}

struct prefix {
    std::string_view text;
    KVR_MEMORY_RADIXES radix;
};

constexpr std::array<prefix, 6> prefixes = {{{"0x", RADIX_HEX},
                                             {"0X", RADIX_HEX},
                                             {"0b", RADIX_BIN},
                                             {"0B", RADIX_BIN},
                                             {"0o", RADIX_OCT},
                                             {"0O", RADIX_OCT}}};

std::string without_underscores(std::string_view text) {
    std::string digits(text);
    digits.erase(std::remove(digits.begin(), digits.end(), '_'), digits.end());
    return digits;
}

} // namespace

std::optional<kvr::exact_word_error> make_word(std::string_view text, KVR_MEMORY_RADIXES radix,
                                               std::uint32_t width, std::string& word) {
    word.clear();
    auto error = kvr::append_exact_word(word, text, {radix, RADIX_HEX, width});
    if (error && error->what == error_kind::dont_care) {
        error = kvr::exact_bits(text, radix, width, word);
    }
    return error;
}

bool show_word(std::string_view word, KVR_MEMORY_RADIXES radix, std::uint32_t width, std::string& text) {
    text.clear();
    return !kvr::append_exact_word(text, word, {radix_of_word(word, width), radix, width});
}

bool is_plain(std::string_view word) noexcept {
    return word.find('X') == std::string_view::npos;
}

std::string describe(const kvr::exact_word_error& error, std::string_view text, KVR_MEMORY_RADIXES radix,
                     std::uint32_t width) {
    switch (error.what) {
    case error_kind::empty:
        return fmt::format("value '{}' has no digit", text);
    case error_kind::invalid_digit:
        return fmt::format("'{}' in {} is no {} digit", text[error.position], text, radix_title(radix));
    case error_kind::too_wide:
        return fmt::format("value {} needs {} bits, the word has {}", text, error.bits_needed, width);
    default:
        return fmt::format("value {} has a don't-care digit", text);
    }
}

human_value read_human_value(std::string_view text) {
    for (const prefix& entry : prefixes) {
        if (text.substr(0, entry.text.size()) == entry.text) {
            return {without_underscores(text.substr(entry.text.size())), entry.radix};
        }
    }
    return {without_underscores(text), text.substr(0, 1) == "-" ? RADIX_DEC : RADIX_UNS};
}

} // namespace kvrmem
