#include "tests/models/quoted_text_operations.h"

#include "kvrimage/edit/quoted_text.h"

#include <fmt/format.h>

#include <array>
#include <cctype>
#include <stdexcept>
#include <string>

namespace kvr_test {

namespace {

using kvrimage::quoted_text;
using kvrimage::quoted_text_fault;

void expect_of_text(bool holds, std::string_view what, std::string_view text) {
    if (!holds) {
        throw std::logic_error(fmt::format("{}: {}", what, text));
    }
}

bool is_hex_digit(char character) {
    return std::isxdigit(static_cast<unsigned char>(character)) != 0;
}

/// The number of characters at the front of @p text that represent one byte; 0 if a backslash begins no valid
/// escape.
std::size_t length_of_byte(std::string_view text) {
    if (text[0] != '\\') {
        return 1;
    }
    if (text.size() >= 2 && std::string_view("nrt0\\\"").find(text[1]) != std::string_view::npos) {
        return 2;
    }
    return text.size() >= 4 && text[1] == 'x' && is_hex_digit(text[2]) && is_hex_digit(text[3]) ? 4 : 0;
}

/// The byte that @p text represents; it has length_of_byte() characters.
char plain_byte(std::string_view text) {
    switch (text.size()) {
    case 1:
        return text[0];
    case 2:
        return text[1] == 'n'   ? '\n'
               : text[1] == 'r' ? '\r'
               : text[1] == 't' ? '\t'
               : text[1] == '0' ? '\0'
                                : text[1];
    default:
        return static_cast<char>(std::stoi(std::string(text.substr(2)), nullptr, 16));
    }
}

quoted_text plainly_parsed(std::string_view text) {
    quoted_text parsed;
    parsed.length = 1;
    while (true) {
        const std::string_view rest = text.substr(parsed.length);
        if (rest.empty()) {
            parsed.fault = quoted_text_fault::not_closed;
            return parsed;
        }
        if (rest[0] == '"') {
            ++parsed.length;
            return parsed;
        }
        const std::size_t length = length_of_byte(rest);
        if (length == 0) {
            parsed.fault = quoted_text_fault::bad_escape;
            return parsed;
        }
        parsed.bytes += plain_byte(rest.substr(0, length));
        parsed.length += length;
    }
}

bool has_bytes(const quoted_text& parsed, std::string_view bytes, std::size_t length) {
    return !parsed.fault && parsed.bytes == bytes && parsed.length == length;
}

std::string with_all_escaped(std::string_view bytes) {
    std::string text = "\"";
    for (const char byte : bytes) {
        text += fmt::format("\\x{:02x}", static_cast<unsigned char>(byte));
    }
    return text + "\"";
}

std::string with_needed_escapes(std::string_view bytes) {
    std::string text = "\"";
    for (const char byte : bytes) {
        text += byte == '"' || byte == '\\' ? "\\" : "";
        text += byte;
    }
    return text + "\"";
}

} // namespace

void compare_quoted_text(std::string_view text) {
    const quoted_text parsed = kvrimage::parse_quoted_text(text);
    const quoted_text expected = plainly_parsed(text);
    expect_of_text(parsed.fault == expected.fault, "the fault", text);
    expect_of_text(parsed.bytes == expected.bytes, "the bytes", text);
    expect_of_text(parsed.length == expected.length, "the length", text);
    for (const std::string& written : {with_all_escaped(parsed.bytes), with_needed_escapes(parsed.bytes)}) {
        expect_of_text(
            has_bytes(kvrimage::parse_quoted_text(written + " rest\""), parsed.bytes, written.size()),
            "the bytes, written again", written);
    }
    for (const std::uint32_t width : {1U, 7U, 8U, 33U}) {
        const kvrimage::text_as_words made = kvrimage::words_of_text(parsed.bytes, width);
        std::size_t fitting = 0;
        while (fitting < parsed.bytes.size() &&
               (width >= 8 || static_cast<unsigned char>(parsed.bytes[fitting]) >> width == 0)) {
            ++fitting;
        }
        const bool fits = fitting == parsed.bytes.size();
        expect_of_text(fits ? !made.too_wide : made.too_wide == fitting, "a byte that is too wide", text);
        expect_of_text(made.words.size() == (fits ? parsed.bytes.size() : 0), "how many words there are",
                       text);
        for (std::size_t index = 0; index < made.words.size(); ++index) {
            expect_of_text(made.words[index].to_unsigned() == static_cast<unsigned char>(parsed.bytes[index]),
                           "a word", text);
        }
    }
}

void quoted_text_operations::step() {
    constexpr std::array<std::string_view, 16> pieces = {"a",     "v1.2", "\"",   "\\",   "\\n", "\\r",
                                                         "\\t",   "\\0",  "\\\\", "\\\"", "\\x", "\\xC3",
                                                         "\\x7f", "\\q",  "#",    "4"};
    std::string text = "\"";
    for (std::uint32_t count = chosen.below(12); count > 0; --count) {
        if (chosen.once_in(4)) {
            text += static_cast<char>(chosen.below(256));
        } else {
            text += chosen.one_of(pieces);
        }
    }
    compare_quoted_text(text + (chosen.once_in(3) ? "" : "\""));
}

} // namespace kvr_test
