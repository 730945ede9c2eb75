#include "tools/kvrmem/operations/named_scheme.h"

#include "kvrimage/files/input_file.h"
#include "tools/kvrmem/numbers/word_radix.h"
#include "tools/kvrmem/platform/tool_error.h"
#include "tools/kvrmem/platform/trimmed_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kvrmem {

namespace {

using kvrimage::ecc_scheme;
using kvrimage::word;

constexpr std::string_view prefix_of_file = "masks:";
constexpr std::string_view blanks_of_line = " \t\r";

bool names_file(std::string_view name) {
    return name.starts_with(prefix_of_file);
}

/// A number in a file of masks.
struct mask_line {
    std::string_view digits;
    std::uint64_t line;
};

/// The contents of a file of masks as texts: their width is known only after all are counted.
struct mask_texts {
    std::vector<mask_line> masks;
    std::optional<mask_line> inverted;
};

/// Returns the text of a line without blanks and comment.
std::string_view statement_of(std::string_view line) {
    return trimmed(line.substr(0, line.find('#')), blanks_of_line);
}

std::string_view without_prefix(std::string_view digits) {
    return digits.starts_with("0x") || digits.starts_with("0X") ? digits.substr(2) : digits;
}

mask_texts split_masks(const std::string& file, std::string_view contents) {
    constexpr std::string_view keyword = "invert";
    mask_texts found;
    for (std::uint64_t line = 1; !contents.empty(); ++line) {
        const std::size_t end = std::min(contents.find('\n'), contents.size());
        const std::string_view statement = statement_of(contents.substr(0, end));
        contents.remove_prefix(std::min(end + 1, contents.size()));
        if (statement.starts_with(keyword) && found.inverted) {
            throw tool_error(exit_code::bad_input, fmt::format("{}:{}: error: line {} has an invert already",
                                                               file, line, found.inverted->line));
        }
        if (statement.starts_with(keyword)) {
            found.inverted = {without_prefix(trimmed(statement.substr(keyword.size()), blanks_of_line)),
                              line};
        } else if (!statement.empty()) {
            found.masks.push_back({without_prefix(statement), line});
        }
    }
    return found;
}

/// Converts @p number to a word of @p width bits.
word word_of_line(const std::string& file, const mask_line& number, std::uint32_t width) {
    const kvrimage::word_result parsed = word::parse(number.digits, kvrimage::radix::hex, width);
    if (!parsed.value) {
        throw tool_error(exit_code::bad_input,
                         fmt::format("{}:{}: error: {}", file, number.line,
                                     describe(*parsed.fault, number.digits, kvrimage::radix::hex, width)));
    }
    return *parsed.value;
}

/// @param has_checks words of @p width bits include their check bits
ecc_scheme scheme_of_file(const std::string& path, std::uint32_t width, bool has_checks) {
    const kvrimage::input_file file(path);
    const mask_texts texts = split_masks(file.name(), file.contents());
    const auto checks = static_cast<std::uint32_t>(texts.masks.size());
    if (checks == 0) {
        throw tool_error(exit_code::bad_input, fmt::format("{}: error: the file has no mask", file.name()));
    }
    if (has_checks && checks >= width) {
        throw tool_error(exit_code::bad_input, fmt::format("{}: error: {} masks, but a word has {} bits",
                                                           file.name(), checks, width));
    }
    std::vector<word> masks;
    for (const mask_line& each : texts.masks) {
        masks.push_back(word_of_line(file.name(), each, has_checks ? width - checks : width));
    }
    const word inverted = texts.inverted ? word_of_line(file.name(), *texts.inverted, checks) : word(checks);
    if (inverted.has_dont_care()) {
        throw tool_error(exit_code::bad_input, fmt::format("{}:{}: error: don't-care bits in a mask",
                                                           file.name(), texts.inverted->line));
    }
    // of_masks() rejects more than 64 masks.
    return ecc_scheme::of_masks(masks, inverted.to_unsigned().value_or(0));
}

std::string path_of(const std::string& name) {
    return name.substr(prefix_of_file.size());
}

} // namespace

ecc_scheme scheme_for_data(const std::string& name, std::uint32_t width) {
    return names_file(name) ? scheme_of_file(path_of(name), width, false) : ecc_scheme::named(name, width);
}

ecc_scheme scheme_of_protected(const std::string& name, std::uint32_t width) {
    return names_file(name) ? scheme_of_file(path_of(name), width, true)
                            : ecc_scheme::of_protected(name, width);
}

std::string weakness_of(const std::string& name, const ecc_scheme& scheme) {
    const kvrimage::ecc_strength strength = scheme.strength();
    if (!names_file(name) || (strength.corrects_single && strength.finds_double)) {
        return "";
    }
    const char* const no_single = strength.finds_single ? "correct each wrong bit" : "find each wrong bit";
    return fmt::format("; these masks do not {}{}{}", strength.corrects_single ? "" : no_single,
                       strength.corrects_single || strength.finds_double ? "" : ", nor ",
                       strength.finds_double ? "" : "find each two wrong bits");
}

} // namespace kvrmem
