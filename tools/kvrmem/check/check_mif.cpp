#include "tools/kvrmem/check/check_mif.h"

#include "kvr/memory/mif_header.h"
#include "kvr/memory/mif_line.h"
#include "kvr/memory/mif_reader.h"
#include "tools/kvrmem/check/check_mif_content.h"
#include "tools/kvrmem/check/check_mif_header.h"
#include "tools/kvrmem/check/check_mif_radix.h"
#include "tools/kvrmem/command_line/suggestion.h"
#include "tools/kvrmem/memory/fault_text.h"
#include "tools/kvrmem/memory/file_format.h"
#include "tools/kvrmem/memory/mif_statement_faults.h"
#include "tools/kvrmem/memory/mif_unread_text.h"
#include "tools/kvrmem/surroundings/visible_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <string>

namespace kvrmem {

namespace {

void add_at_line(mif_check& check, severity level, const char* code, std::uint64_t line, std::string message,
                 std::string hint, std::optional<repair> mended = std::nullopt) {
    const std::string_view text = check.source.line(line);
    const std::size_t begin = std::min(text.find_first_not_of(mif_blanks), text.size());
    check.faults.add(
        {level, code, line, begin < text.size() ? begin + 1 : 0,
         kvr::without_comments(text).size() > begin ? kvr::without_comments(text).size() - begin : 1,
         std::move(message), std::move(hint), std::move(mended)});
}

/// What END; must be put behind: a statement that lacks its ";" would swallow it.
repair end_repair(const check_source& source) {
    return {source.text().size(), 0, source.as_last_line("END;"), "END; put behind the last line"};
}

/// True when the last statement, from behind the line @p line on, has no ";".
bool is_open_behind(const check_source& source, std::uint64_t line) {
    bool open = false;
    for (std::uint64_t number = line; number <= source.line_count(); ++number) {
        const std::string_view text = kvr::without_comments(source.line(number));
        if (text.find_first_not_of(mif_blanks) != std::string_view::npos) {
            open = text.find(';') == std::string_view::npos;
        }
    }
    return open;
}

/// What the first characters of a file of another format tell.
std::string other_format(const check_source& source) {
    const std::size_t first = source.text().find_first_not_of(" \t\r\n");
    const char character = first == std::string::npos ? '\0' : source.text()[first];
    return character == ':'   ? "this looks like Intel HEX; --from hex checks it as that"
           : character == '@' ? "this looks like RIF; --from rif checks it as that"
                              : "write CONTENT BEGIN behind the header";
}

/// Why the content was not read, or not to an END.
void explain_missing_end(mif_check& check) {
    const mif_header_lines& header = check.header;
    const std::uint64_t last = check.source.last_line();
    if (header.content == 0) {
        add_at_line(check, severity::error, "missing-content", last, "there is no CONTENT BEGIN",
                    other_format(check.source));
    } else if (header.begin == 0) {
        add_at_line(check, severity::error, "missing-begin", header.content,
                    "there is no BEGIN behind CONTENT", "write CONTENT BEGIN");
    } else {
        const fault_text told = describe_mif_fault({kvr::fault_code::missing_end, last, 0, 0}, "", {});
        const std::uint64_t from = std::max(check.content_read, header.begin + 1);
        std::optional<repair> mended;
        if (!is_open_behind(check.source, from)) {
            mended = end_repair(check.source);
        }
        add_at_line(check, severity::error, told.code, last, told.message, told.hint, std::move(mended));
    }
}

void explain_blocked_content(mif_check& check) {
    const mif_header_lines& header = check.header;
    if (!header.width_known) {
        add_at_line(check, severity::error, "missing-width", header.blocked_content,
                    "there is no WIDTH before CONTENT", "write WIDTH=8; or what the words have");
    }
    const std::uint64_t depth_line = header.keyword[kvr::depth_keyword];
    if (!header.depth_known && depth_line != 0 && depth_line == header.keyword[kvr::width_keyword]) {
        add_at_line(check, severity::error, "shared-line", depth_line,
                    "DEPTH is not read in a line with WIDTH", "give it a line of its own");
    } else if (!header.depth_known && depth_line == 0) {
        add_at_line(check, severity::error, "missing-depth", header.blocked_content,
                    "there is no DEPTH= before CONTENT", "write DEPTH=256; or how many words there are");
    }
}

/// The library passes over a statement that END follows without a ";" between them.
void check_statement_before_end(mif_check& check) {
    if (check.header.begin == 0 || check.saw_missing_end) {
        return;
    }
    std::string text;
    kvr::mif_content statement;
    const std::uint64_t from = std::max(check.content_read, check.header.begin) + 1;
    for (std::uint64_t number = from; number <= check.source.line_count(); ++number) {
        std::string line(kvr::without_comments(check.source.line(number)));
        kvr::to_upper(line);
        if (line.find("END") != std::string::npos) {
            break;
        }
        statement.pieces.push_back({text.size(), number});
        text += line;
        if (line.find(';') != std::string::npos) {
            statement.pieces.clear(); // the rest of a statement that was refused
            text.clear();
        }
    }
    const std::size_t colon = text.find(':');
    if (colon == std::string::npos) {
        return;
    }
    statement.text = text;
    add_missing_semicolons(check, statement, severity::warning, 0);
    const kvr::line_place place = place_behind(statement, text.find_last_not_of(mif_blanks) + 1);
    const std::string hint =
        fmt::format("the library drops the statement of line {}", place_in(statement, colon).line);
    check.faults.add(
        {severity::warning, "missing-semicolon", place.line, place.column, 1, "no ';' before END", hint,
         repair{check.source.offset_of(place.line) + place.column - 1, 0, ";", "';' put before END"}});
}

/// Statements in the line of BEGIN are not read.
void check_rest_of_begin(mif_check& check) {
    if (check.header.begin == 0) {
        return;
    }
    std::string text(kvr::without_comments(check.source.line(check.header.begin)));
    kvr::to_upper(text);
    constexpr std::string_view keyword = "BEGIN";
    const std::size_t begin = text.find(keyword);
    if (begin == std::string::npos) {
        return; // it is written with blanks in it
    }
    const std::size_t rest = text.find_first_not_of(" \t;", begin + keyword.size());
    if (rest != std::string::npos) {
        const std::size_t end = text.find_last_not_of(mif_blanks) + 1;
        check.faults.add({severity::warning, "behind-begin", check.header.begin, rest + 1, end - rest,
                          fmt::format("'{}' stands behind BEGIN and is not read",
                                      visible(std::string_view(text).substr(rest, end - rest))),
                          "give it a line of its own", std::nullopt});
    }
}

/// The library gives both radixes the first name that it finds in such a line.
void check_shared_radix_line(mif_check& check) {
    const std::uint64_t line = check.header.keyword[kvr::data_radix_keyword];
    if (line != 0 && line == check.header.keyword[kvr::address_radix_keyword]) {
        const std::string_view text = kvr::without_comments(check.source.line(line));
        const std::size_t begin = std::min(text.find_first_not_of(mif_blanks), text.size());
        check.faults.add({severity::warning, "shared-line", line, begin + 1, text.size() - begin,
                          "ADDRESS_RADIX and DATA_RADIX get the same radix in one line",
                          "give each a line of its own", std::nullopt});
    }
}

/// One line of a keyword holds: the first, unless a later one tells the other keyword of the pair for the
/// first time.
void check_repeated_keywords(mif_check& check) {
    constexpr std::array<const char*, 4> names = {"WIDTH", "DEPTH", "ADDRESS_RADIX", "DATA_RADIX"};
    for (std::size_t index = 0; index < names.size(); ++index) {
        if (check.header.repeated[index] == 0) {
            continue;
        }
        const auto [first, later] = std::minmax(check.header.keyword[index], check.header.repeated[index]);
        const line_stretch value = header_value(check.source.line(later));
        check.faults.add(
            {severity::warning, "repeated-header", later, value.column,
             std::max<std::size_t>(value.text.size(), 1),
             fmt::format("{} is told again, first at line {}", names[index], first),
             first == check.header.keyword[index] ? "the first line holds" : "the later line holds",
             std::nullopt});
    }
}

/// The radix that is most likely meant by @p given, which is in upper case; "" when it is far from all.
std::string nearest_radix_name(const std::string& given) {
    constexpr std::array<std::string_view, 5> known = {"BIN", "OCT", "DEC", "UNS", "HEX"};
    constexpr std::size_t longest_compared = 31;
    if (given.size() > longest_compared) {
        return "";
    }
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
    const std::size_t digits = text.find_first_of("0123456789");
    if (text.find(keyword) == std::string::npos || text.find_first_not_of(mif_blanks, behind) != digits) {
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

void check_radix_name(mif_check& check, std::size_t keyword, KVR_MEMORY_RADIXES radix, const char* name) {
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
    const std::string message =
        fmt::format("{} '{}' is none of BIN, OCT, DEC, UNS and HEX", name, visible(value.text));
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
        std::string_view name = kvr::header_keywords[keyword].keyword;
        name.remove_suffix(1); // "="
        add_at_line(check, severity::warning, code, check.header.content,
                    fmt::format("without {} the radix is {}, the {} look like {}", name,
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

/// Where the width or the depth is not known the library reads no content. Its faults are told all the same:
/// it is read under a header that allows everything.
void check_blocked_content(mif_check& check, const kvr::mif_memory& before) {
    const std::uint64_t line = check.header.blocked_content;
    constexpr std::int64_t header_lines = 4;
    const auto radix = [](KVR_MEMORY_RADIXES known) {
        return known == RADIX_NONE ? std::string_view("NONE") : radix_title(known);
    };
    std::string text = fmt::format("WIDTH={};\nDEPTH=2147483647;\nADDRESS_RADIX={};\nDATA_RADIX={};\n",
                                   before.word_size != 0 ? before.word_size : 0x7FFFFFFF,
                                   radix(before.address_radix), radix(before.memory_radix));
    const std::string_view content =
        std::string_view(check.source.text()).substr(check.source.offset_of(line));
    text.append(content);
    const check_source patched(std::move(text));
    const mif_header_lines found = find_header_lines(patched);
    const std::int64_t shift = static_cast<std::int64_t>(line) - 1 - header_lines;
    check.header.content = line;
    check.header.begin =
        found.begin != 0 ? static_cast<std::uint64_t>(static_cast<std::int64_t>(found.begin) + shift) : 0;
    check.saw_missing_end = false;
    kvr::mif_memory memory(nullptr);
    check_mif_content(check, patched.text(), shift, memory);
}

} // namespace

void check_mif(const check_source& source, const input_options& options, fault_list& faults) {
    mif_check check{source, options, faults, find_header_lines(source)};
    kvr::mif_memory memory(nullptr);
    const bool complete = check_mif_content(check, source.text(), 0, memory);
    const bool blocked = check.header.content == 0 && check.header.blocked_content != 0;
    if (blocked) {
        explain_blocked_content(check);
        check_blocked_content(check, memory);
    }
    if (check.saw_missing_end) {
        explain_missing_end(check);
    }
    check_statement_before_end(check);
    check_rest_of_begin(check);
    check_shared_radix_line(check);
    check_repeated_keywords(check);
    check_equals_of_width(check);
    check_radix_name(check, kvr::address_radix_keyword, memory.address_radix, "ADDRESS_RADIX");
    check_radix_name(check, kvr::data_radix_keyword, memory.memory_radix, "DATA_RADIX");
    if (!blocked && (check.saw_bad_value || check.saw_bad_address)) {
        const mif_radix_fit fit = find_radix_fit(source, memory, options);
        check_radix_fit(check, kvr::data_radix_keyword, fit.data, memory.memory_radix, "data");
        check_radix_fit(check, kvr::address_radix_keyword, fit.addresses, memory.address_radix, "addresses");
        if (fit.data.is_another) {
            faults.withdraw_warnings(bad_digit_code);
            faults.withdraw_warnings(too_wide_code);
        }
        if (fit.addresses.is_another) {
            faults.withdraw_warnings(address_digit_code);
        }
    }
    if (!complete && faults.count(severity::error) == 0) {
        add_at_line(check, severity::error, "content-syntax", source.last_line(),
                    "the library refuses the file", "");
    }
}

} // namespace kvrmem
