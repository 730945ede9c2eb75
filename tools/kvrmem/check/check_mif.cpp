#include "tools/kvrmem/check/check_mif.h"

#include "kvr/memory/mif/mif_header.h"
#include "kvr/memory/mif/mif_line.h"
#include "kvr/memory/mif/mif_reader.h"
#include "tools/kvrmem/check/check_mif_content.h"
#include "tools/kvrmem/check/check_mif_header.h"
#include "tools/kvrmem/check/check_mif_keywords.h"
#include "tools/kvrmem/memory/fault_text.h"
#include "tools/kvrmem/memory/file_format.h"
#include "tools/kvrmem/memory/mif_statement_faults.h"
#include "tools/kvrmem/memory/mif_unread_text.h"
#include "tools/kvrmem/surroundings/visible_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>

namespace kvrmem {

namespace {

/// What END; must be put behind: a statement that lacks its ";" would swallow it.
repair end_repair(const check_source& source) {
    return {source.text().size(), 0, source.as_last_line("END;"), "END; put behind the last line"};
}

/// Where the ";" of the last statement, from behind the line @p line on, is missing.
struct open_statement {
    std::uint64_t line = 0; ///< 0: it has one
    std::uint64_t column = 0;
    bool has_colon = false;
};

open_statement find_open_statement(const check_source& source, std::uint64_t line) {
    open_statement found;
    for (std::uint64_t number = line; number <= source.line_count(); ++number) {
        const std::string_view text = kvr::without_comments(source.line(number));
        const std::size_t last = text.find_last_not_of(mif_blanks);
        if (kvr::contains(text, ";")) {
            found = {};
        } else if (last != std::string_view::npos) {
            found = {number, last + 2, found.has_colon || kvr::contains(text, ":")};
        }
    }
    return found;
}

repair semicolon_repair(const check_source& source, const open_statement& open) {
    return {source.offset_of(open.line, open.column), 0, ";", "';' put behind the last statement"};
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
        const open_statement open = find_open_statement(check.source, header.begin + 1);
        std::optional<repair> mended;
        if (open.line == 0) {
            mended = end_repair(check.source);
        } else if (open.has_colon) {
            check.faults.add({severity::warning, "missing-semicolon", open.line, open.column, 1,
                              "no ';' behind the last statement", "", semicolon_repair(check.source, open)});
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
    } else if (!header.depth_known && (depth_line == 0 || depth_line > header.blocked_content)) {
        add_at_line(check, severity::error, "missing-depth", header.blocked_content,
                    "there is no DEPTH= before CONTENT", "write DEPTH=256; or how many words there are");
    }
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
    check.blocked = true;
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
    check_rest_of_begin(check);
    check_mif_keywords(check, memory);
    if (!blocked && (check.saw_bad_value || check.saw_bad_address)) {
        check_radix_fits(check, memory);
    }
    if (!complete && faults.count(severity::error) == 0) {
        add_at_line(check, severity::error, "content-syntax", source.last_line(),
                    "the library refuses the file", "");
    }
}

} // namespace kvrmem
