#include "tools/kvrmem/check/check_mif_keywords.h"

#include "kvr/memory/mif/mif_header.h"
#include "kvr/memory/mif/mif_line.h"
#include "kvr/numeric/scanned_number.h"
#include "tools/kvrmem/check/check_mif_content.h"
#include "tools/kvrmem/check/check_mif_header.h"
#include "tools/kvrmem/check/check_mif_radix.h"
#include "tools/kvrmem/command_line/suggestion.h"
#include "tools/kvrmem/memory/file_format.h"
#include "tools/kvrmem/memory/mif_unread_text.h"
#include "tools/kvrmem/surroundings/visible_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kvrmem {

namespace {

constexpr std::string_view decimal_digits = "0123456789";

/// The library gives both radixes the first name that it finds in such a line.
void check_shared_radix_line(mif_check& check) {
    const std::uint64_t line = check.header.keyword[kvr::data_radix_keyword];
    if (line != 0 && line == check.header.keyword[kvr::address_radix_keyword]) {
        add_at_line(check, severity::warning, "shared-line", line,
                    "ADDRESS_RADIX and DATA_RADIX get the same radix in one line",
                    "give each a line of its own");
    }
}

/// The depth of such a line is still to come.
void check_shared_size_line(mif_check& check) {
    if (check.header.unread_depth != 0 && check.header.depth_known) {
        add_at_line(check, severity::warning, "shared-line", check.header.unread_depth,
                    "DEPTH is not read in a line with WIDTH",
                    fmt::format("DEPTH is that of line {}", check.header.keyword[kvr::depth_keyword]));
    }
}

/// One line of a keyword holds: the first, unless a later one tells the other keyword of the pair for the
/// first time.
void check_repeated_keywords(mif_check& check) {
    for (std::size_t index = 0; index < header_names.size(); ++index) {
        if (check.header.repeated[index] == 0) {
            continue;
        }
        const auto [first, later] = std::minmax(check.header.keyword[index], check.header.repeated[index]);
        const line_stretch value = header_value(check.source.line(later));
        check.faults.add(
            {severity::warning, "repeated-header", later, value.column,
             std::max<std::size_t>(value.text.size(), 1),
             fmt::format("{} is told again, first at line {}", header_names[index], first),
             first == check.header.keyword[index] ? "the first line holds" : "the later line holds",
             std::nullopt});
    }
}

/// The radix that is most likely meant by @p given, which is in upper case; "" when it is far from all.
std::string nearest_radix_name(const std::string& given) {
    constexpr std::array<std::string_view, 5> known = {"BIN", "OCT", "DEC", "UNS", "HEX"};
    return nearest_of(given, known);
}

/// The line @p line as the library parses a line of the header.
std::string as_header_line(std::string_view line) {
    std::string text(kvr::without_comments(line));
    kvr::strip_blanks(text);
    kvr::to_upper(text);
    return text;
}

/// Gives the keywords of the header line @p line their radix in @p memory; false when the library refuses the
/// line.
bool takes_radix_line(kvr::mif_memory& memory, std::string_view line) {
    kvr::fill_radix_names(memory);
    return !kvr::take_radix_line(memory, as_header_line(line));
}

/// The "=" that the line @p number lacks, where nothing but blanks stands between "WIDTH" and its number.
std::optional<repair> equals_repair(const check_source& source, std::uint64_t number) {
    constexpr std::string_view keyword = "WIDTH";
    std::string text(kvr::without_comments(source.line(number)));
    kvr::to_upper(text);
    const std::size_t behind = text.find(keyword) + keyword.size();
    const std::size_t digits = text.find_first_of(decimal_digits);
    const std::size_t end = text.find_first_not_of(decimal_digits, digits);
    if (text.find(keyword) == std::string::npos || text.find_first_not_of(mif_blanks, behind) != digits ||
        text.find_first_not_of(mif_blanks, end) != text.find(';')) {
        return std::nullopt;
    }
    return repair{source.offset_of(number, behind + 1), digits - behind, behind == digits ? "=" : " = ",
                  "'=' put behind WIDTH"};
}

/// The library takes the first number of a line that has "WIDTH" in it, with or without a "=".
void check_equals_of_width(mif_check& check) {
    const std::uint64_t line = check.header.keyword[kvr::width_keyword];
    kvr::mif_memory memory(nullptr);
    if (line == 0 || kvr::contains(kvr::without_comments(check.source.line(line)), "=") ||
        kvr::take_size_line(memory, as_header_line(check.source.line(line)))) {
        return; // there is one, or worse was told
    }
    add_at_line(check, severity::warning, "missing-equals", line, "no '=' behind WIDTH",
                fmt::format("the library takes {} for the width", memory.word_size),
                equals_repair(check.source, line));
}

/// The library takes the first digits of the line for the number, whatever stands around them.
void check_header_number(mif_check& check, std::size_t keyword) {
    const std::uint64_t line = check.header.keyword[keyword];
    kvr::mif_memory memory(nullptr);
    if (line == 0 || kvr::take_size_line(memory, as_header_line(check.source.line(line)))) {
        return; // which was told
    }
    const std::uint32_t number = keyword == kvr::width_keyword ? memory.word_size : memory.number_of_words;
    const line_stretch value = header_value(check.source.line(line));
    if (number == 0 || value.text.empty()) {
        return;
    }
    if (!is_number_in(value.text, RADIX_UNS)) {
        check.faults.add(
            {severity::warning, "header-number", line, value.column, value.text.size(),
             fmt::format("{} '{}' is no decimal number", header_names[keyword], visible(value.text)),
             fmt::format("the library takes {} for it", number), std::nullopt});
    } else if (kvr::scan_number(value.text, 10).magnitude != number) {
        add_at_line(
            check, severity::warning, "header-number", line,
            fmt::format("the first number of the line, {}, counts as {}", number, header_names[keyword]), "");
    }
}

/// True when the library refuses a keyword of the header line @p line.
bool refuses_header_line(std::string_view line) {
    const std::string text = as_header_line(line);
    const auto has = [&text](std::size_t keyword) {
        return kvr::contains(text, kvr::header_keywords[keyword].keyword);
    };
    kvr::mif_memory memory(nullptr);
    kvr::fill_radix_names(memory);
    return ((has(kvr::width_keyword) || has(kvr::depth_keyword)) && kvr::take_size_line(memory, text)) ||
           ((has(kvr::address_radix_keyword) || has(kvr::data_radix_keyword)) &&
            kvr::take_radix_line(memory, text));
}

/// Of a header line nothing is read behind the first ";". What another keyword does there was told.
void check_behind_header_line(mif_check& check, std::uint64_t line) {
    const std::string_view text = kvr::without_comments(check.source.line(line));
    const kvr::text_span behind = find_text_behind_semicolon(text);
    if (behind.found() && !is_header_line(as_header_line(behind.in(text))) && !refuses_header_line(text)) {
        check.faults.add({severity::warning, "behind-header", line, behind.begin + 1,
                          behind.end - behind.begin,
                          fmt::format("'{}' stands behind a ';' and is not read", visible(behind.in(text))),
                          "give it a line of its own, or make it a comment", std::nullopt});
    }
}

void check_behind_header(mif_check& check) {
    std::vector<std::uint64_t> lines(check.header.keyword.begin(), check.header.keyword.end());
    std::sort(lines.begin(), lines.end());
    lines.erase(std::unique(lines.begin(), lines.end()), lines.end());
    for (const std::uint64_t line : lines) {
        if (line != 0 && line != check.header.content) {
            check_behind_header_line(check, line);
        }
    }
}

/// The library keeps such a line as a comment.
void check_unknown_keywords(mif_check& check) {
    constexpr const char* effect = "the library takes the line for a comment";
    for (const std::uint64_t line : check.header.unknown) {
        const std::string_view text = kvr::without_comments(check.source.line(line));
        const std::size_t equals = text.find('=');
        if (equals == std::string_view::npos) {
            add_at_line(check, severity::warning, "missing-equals", line,
                        fmt::format("no '=' behind {}", name_without_equals(as_header_line(text))), effect);
            continue;
        }
        const kvr::text_span name = trimmed_span(text.substr(0, equals));
        const std::string nearest = nearest_of(as_header_line(name.in(text)), header_names);
        check.faults.add({severity::warning, "unknown-header", line, name.begin + 1, name.end - name.begin,
                          fmt::format("'{}' is no word of the header", visible(name.in(text))),
                          nearest.empty() ? effect : fmt::format("did you mean {}?", nearest), std::nullopt});
    }
}

void check_radix_name(mif_check& check, std::size_t keyword, KVR_MEMORY_RADIXES radix) {
    const std::uint64_t line = check.header.keyword[keyword];
    if (radix != RADIX_NONE || line == 0) {
        return;
    }
    kvr::mif_memory memory(nullptr);
    if (!takes_radix_line(memory, check.source.line(line))) {
        return; // which was told
    }
    const line_stretch value = header_value(check.source.line(line));
    std::string given(value.text);
    kvr::to_upper(given);
    const std::string message = fmt::format("{} '{}' is none of BIN, OCT, DEC, UNS and HEX",
                                            header_names[keyword], visible(value.text));
    std::string hint = "the library reads on without a radix";
    const std::string nearest = nearest_radix_name(given);
    if (!nearest.empty()) {
        hint = fmt::format("did you mean {}?", nearest);
    }
    check.faults.add({severity::warning, "unknown-radix", line, value.column,
                      std::max<std::size_t>(value.text.size(), 1), message, std::move(hint), std::nullopt});
}

/// True when the library gives one of the two keywords @p wanted for the header line @p line, and leaves the
/// other one alone.
bool gives_one_radix(std::string_view line, KVR_MEMORY_RADIXES wanted) {
    kvr::mif_memory memory(nullptr);
    return takes_radix_line(memory, line) &&
           (memory.address_radix == wanted) != (memory.memory_radix == wanted);
}

/// The change of the name @p value in the header line @p line to @p wanted, where the line is then read so.
std::optional<repair> radix_repair(const check_source& source, std::uint64_t line, const line_stretch& value,
                                   KVR_MEMORY_RADIXES wanted) {
    const std::string title(radix_title(wanted));
    std::string changed(source.line(line));
    changed.replace(value.column - 1, value.text.size(), title);
    if (!radix_of_name(value.text) || !gives_one_radix(changed, wanted)) {
        return std::nullopt;
    }
    return repair{source.offset_of(line, value.column), value.text.size(), title,
                  fmt::format("{} is now {}", visible(value.text), title)};
}

/// Says once, at the header, what would have to be said of nearly every line.
void check_radix_fit(mif_check& check, std::size_t keyword, const radix_fit& fit, KVR_MEMORY_RADIXES declared,
                     const char* what) {
    if (!fit.is_another) {
        return;
    }
    constexpr const char* code = "radix-mismatch";
    const std::string hint = fmt::format("line {}: {}", fit.example_line, visible(fit.example));
    const std::uint64_t line = check.header.keyword[keyword];
    if (line == 0) {
        add_at_line(check, severity::warning, code, check.header.content,
                    fmt::format("without {} the radix is {}, the {} look like {}", header_names[keyword],
                                radix_title(declared), what, radix_title(fit.only)),
                    hint);
        return;
    }
    const line_stretch value = header_value(check.source.line(line));
    check.faults.add({severity::warning, code, line, value.column, value.text.size(),
                      fmt::format("the header says {}, the {} look like {}", radix_title(declared), what,
                                  radix_title(fit.only)),
                      hint, radix_repair(check.source, line, value, fit.only)});
}

} // namespace

void check_mif_keywords(mif_check& check, const kvr::mif_memory& memory) {
    check_shared_size_line(check);
    check_shared_radix_line(check);
    check_repeated_keywords(check);
    check_equals_of_width(check);
    check_header_number(check, kvr::width_keyword);
    check_header_number(check, kvr::depth_keyword);
    check_behind_header(check);
    check_unknown_keywords(check);
    check_radix_name(check, kvr::address_radix_keyword, memory.address_radix);
    check_radix_name(check, kvr::data_radix_keyword, memory.memory_radix);
}

void check_radix_fits(mif_check& check, const kvr::mif_memory& memory) {
    const mif_radix_fit fit = find_radix_fit(check.source, memory, check.options);
    check_radix_fit(check, kvr::data_radix_keyword, fit.data, memory.memory_radix, "data");
    check_radix_fit(check, kvr::address_radix_keyword, fit.addresses, memory.address_radix, "addresses");
    if (fit.data.is_another) {
        check.faults.withdraw_warnings(bad_digit_code);
        check.faults.withdraw_warnings(too_wide_code);
    }
    if (fit.addresses.is_another) {
        check.faults.withdraw_warnings(address_digit_code);
    }
}

} // namespace kvrmem
