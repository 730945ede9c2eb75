#include "kvr/memory/mif/mif_reader.h"

#include <algorithm>
#include <limits>

namespace kvr {

namespace {

std::string concat(std::string_view a, std::string_view b, std::string_view c, std::string_view d,
                   std::string_view e) {
    std::string text(a);
    text.append(b).append(c).append(d).append(e);
    return text;
}

} // namespace

void move_comment(std::string& line, std::size_t from, comment_store& comments) {
    const std::size_t dashes = line.find("--", from);
    if (dashes != std::string::npos) {
        comments.push_front(std::string_view(line).substr(dashes));
        line.resize(dashes);
    }
    line.resize(std::min(line.size(), line.find('%', from)));
}

bool mif_reader::read() {
    memory.file_not_found = false;
    line_source lines = line_source::open(memory.file_name, source_limit);
    if (!lines.is_open()) {
        return report_not_opened();
    }
    return read(lines);
}

/// Two blanks before "not found" here, one in the message of the writer; callers compare the exact texts.
bool mif_reader::report_not_opened() {
    memory.file_not_found = true;
    memory.report("Memory file cannot be opened.  Memory file -- " + memory.file_name + " --  not found. ");
    return false;
}

bool mif_reader::read(line_source& lines) {
    source = &lines;
    bool valid = true;
    while (valid && !lines.at_end()) {
        valid = read_header_line();
    }
    // A line that a read error has cut says nothing about the file.
    if (lines.failed()) {
        return report_not_opened();
    }
    return valid ? finish() : stop_with_error();
}

bool mif_reader::finish() {
    if (!end_seen && observer != nullptr) {
        observer->fault({fault_code::missing_end, physical_line, 0, 0}, {});
    }
    if (line_failed || went_on || !end_seen) {
        return stop_with_error();
    }
    memory.invalid_line_number = 0;
    memory.error_occurred = false;
    return true;
}

bool mif_reader::stop_with_error() {
    constexpr std::int64_t largest = std::numeric_limits<int>::max();
    memory.invalid_line_number = static_cast<int>(std::min(line_counter, largest));
    memory.error_occurred = true;
    return false;
}

std::string_view mif_reader::next_physical_line() {
    const std::string_view raw = source->next_line();
    const std::string_view line = without_carriage_return(raw, source->line_had_newline());
    ++physical_line;
    too_long = source->line_was_cut() || line.size() > line_limit;
    return line.substr(0, line_limit);
}

/// Returns false if the read must stop with an error.
bool mif_reader::read_header_line() {
    const std::string_view raw = next_physical_line();
    ++line_counter;
    if (source->failed()) {
        return false;
    }
    text.assign(raw);
    remove_comments(raw, 0);
    strip_blanks(text);
    to_upper(text);
    if (too_long) {
        return line_too_long();
    }
    if (text.empty()) {
        return true;
    }
    if (content_read && observer != nullptr) {
        observer->behind_end(without_comments(raw), physical_line);
    }
    const bool matched = try_keywords(raw);
    if (contains(text, "CONTENT")) {
        default_radixes();
        if (keyword_seen[width_keyword] && keyword_seen[depth_keyword] && !content_read) {
            return read_content();
        }
    }
    if (!matched) {
        keep_as_comment(raw);
    }
    return matched ? !line_failed : true;
}

/// Tests the line for all keywords that were not seen yet. Returns true if it has one. `line_failed` tells
/// whether the last of them failed; it keeps its value after the line.
bool mif_reader::try_keywords(std::string_view raw) {
    bool matched = false;
    for (std::size_t index = 0; index < header_keywords.size(); ++index) {
        if (!keyword_seen[index] && contains(text, header_keywords[index].keyword)) {
            matched = true;
            parse_keyword(index, raw);
        }
    }
    return matched;
}

void mif_reader::parse_keyword(std::size_t index, std::string_view raw) {
    const header_keyword& entry = header_keywords[index];
    const auto fault = entry.is_size ? parse_size_line(memory, text) : parse_radix_line(memory, text);
    comment_slot = index + 1;
    // A depth keyword on a line with "WIDTH" has set the width; the depth is still missing.
    keyword_seen[index] = index != depth_keyword || (!fault && !contains(text, "WIDTH"));
    line_failed = fault.has_value();
    if (fault) {
        memory.error_state = entry.state;
        memory.report(concat(entry.complaint, entry.introduction, text, entry.location, memory.file_name));
        line_failed = !go_on_after(place_in_header(*fault, raw));
    }
}

void mif_reader::default_radixes() {
    if (!keyword_seen[data_radix_keyword]) {
        memory.memory_radix = RADIX_HEX;
    }
    if (!keyword_seen[address_radix_keyword]) {
        memory.address_radix = RADIX_HEX;
    }
    keyword_seen[data_radix_keyword] = true;
    keyword_seen[address_radix_keyword] = true;
}

void mif_reader::keep_as_comment(std::string_view raw) {
    header_comment_list& list = memory.header_comments[comment_slot];
    list.lines.emplace_back(raw);
    ++list.count;
    line_failed = false;
}

/// Returns false if an invalid line must stop the read.
bool mif_reader::read_content() {
    begin_seen = find_begin();
    bool valid = true;
    while (valid && !end_seen && !source->at_end()) {
        if (begin_seen && (observer == nullptr || !observer->wants_every_line())) {
            read_fast_lines();
        }
        valid = read_statement();
    }
    content_read = true;
    comment_slot = 5;
    return valid;
}

/// True if the current line has "BEGIN".
bool mif_reader::find_begin() {
    constexpr std::string_view keyword = "BEGIN";
    const std::size_t found = text.find(keyword);
    if (found != std::string::npos && observer != nullptr) {
        observer->behind_begin(std::string_view(text).substr(found + keyword.size()), physical_line);
    }
    return found != std::string::npos;
}

/// Reads one line of the content section with its continuation lines. Returns false if the read must stop.
bool mif_reader::read_statement() {
    text.clear();
    content.pieces.clear();
    append_line(next_physical_line());
    if (begin_seen) {
        join_continuation_lines();
    }
    if (source->failed()) {
        return false;
    }
    to_upper(text);
    ++line_counter;
    if (too_long) {
        return line_too_long();
    }
    if (text.empty()) {
        return true;
    }
    if (contains(text, "END")) {
        end_seen = true;
        if (observer != nullptr) {
            content.text = text;
            observer->end_statement(content);
        }
        return begin_seen || invalid_line({fault_code::end_before_begin, text.find("END"), 3});
    }
    if (!begin_seen) {
        begin_seen = find_begin();
        return true;
    }
    return parse_statement();
}

void mif_reader::join_continuation_lines() {
    std::size_t searched = 0;
    while (!too_long && text.find(';', searched) == std::string::npos && !source->at_end()) {
        searched = text.size();
        append_line(next_physical_line());
    }
}

void mif_reader::append_line(std::string_view raw) {
    const std::size_t begin = text.size();
    content.pieces.push_back({begin, physical_line});
    text.append(raw);
    remove_comments(raw, begin);
}

/// Removes the comments of the line @p raw, which begins at @p from in the text.
void mif_reader::remove_comments(std::string_view raw, std::size_t from) {
    move_comment(text, from, memory.data_comments);
    const std::size_t left = text.size() - from;
    if (observer != nullptr && left < raw.size() && raw[left] == '%') {
        observer->cut_at_percent(raw.substr(left + 1), physical_line);
    }
}

bool mif_reader::parse_statement() {
    content.text = text;
    const auto fault = parse_content_line(memory, content);
    if (fault) {
        return invalid_line(*fault);
    }
    if (observer != nullptr) {
        observer->content_line(content);
        observer->words(content.first, content.last, content.pieces.front().line);
    }
    return true;
}

/// Parses whole lines in the buffer on the fast path. read_statement() parses the first line that is not
/// accepted: only that function implements all rules and faults.
void mif_reader::read_fast_lines() {
    // An observer needs the comments.
    const fast_mif_lines::amount read = fast_lines.read(source->whole_lines(), observer == nullptr);
    line_counter += static_cast<std::int64_t>(read.lines);
    physical_line += read.lines;
    source->skip(read.bytes);
}

/// Reports the current line. Returns false if the read must stop.
bool mif_reader::invalid_line(const text_fault& fault) {
    return report_invalid_line(place_in_statement(fault));
}

bool mif_reader::line_too_long() {
    return report_invalid_line({fault_code::line_too_long, physical_line, line_limit + 1, 1});
}

bool mif_reader::report_invalid_line(const read_fault& fault) {
    memory.error_state = ERROR_STATE_INVALID_LINE;
    memory.report(concat("Invalid line found in memory file. ", " Invalid line -- ", text,
                         " -- found in file ", memory.file_name));
    return go_on_after(fault);
}

bool mif_reader::go_on_after(const read_fault& fault) {
    const bool goes_on = observer != nullptr && observer->fault(fault, text);
    went_on = went_on || goes_on;
    return goes_on;
}

read_fault mif_reader::place_in_statement(const text_fault& fault) const {
    const line_place place = content.place(fault.offset);
    return {fault.code, place.line, place.column,
            static_cast<std::uint32_t>(std::max<std::size_t>(fault.length, 1))};
}

/// Returns the place of a fault in the header. The current line lacks the blanks of @p raw, but the column
/// counts them.
read_fault mif_reader::place_in_header(const text_fault& fault, std::string_view raw) const {
    std::size_t column = 0;
    for (std::size_t kept = 0; is_mif_blank(raw[column]) || kept != fault.offset; ++column) {
        kept += is_mif_blank(raw[column]) ? 0U : 1U;
    }
    return {fault.code, physical_line, static_cast<std::uint32_t>(column + 1),
            static_cast<std::uint32_t>(std::max<std::size_t>(fault.length, 1))};
}

} // namespace kvr
