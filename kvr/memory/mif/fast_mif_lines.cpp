#include "kvr/memory/mif/fast_mif_lines.h"

#include "kvr/memory/io/line_source.h"
#include "kvr/memory/mif/mif_line.h"
#include "kvr/numeric/digit_run.h"
#include "kvr/numeric/digit_value.h"

#include <algorithm>
#include <cstring>

namespace kvr {

namespace {

/// Bytes after a line that may be read but not consumed: digits are read eight at a time.
constexpr std::size_t slack_of_lines = 64;

constexpr std::size_t longest_line_end = 2; // CR and LF

/// Values up to this length are expected to have the same length in the next line.
constexpr std::size_t longest_expected = 32;
static_assert(slack_of_lines >= predicted_address::readable + longest_expected + 8);

/// If lines differ in length, trying to read them together takes more time than it saves.
constexpr std::uint32_t lines_before_next_try = 32;

const char* skip_blanks(const char* at) noexcept {
    while (is_mif_blank(*at)) {
        ++at;
    }
    return at;
}

/// Returns the number of digits of an address that can never exceed 32 bits in @p base.
std::size_t safe_digits(unsigned base) noexcept {
    switch (base) {
    case 2:
        return 32;
    case 8:
        return 10;
    case 10:
        return 9;
    default:
        return 8;
    }
}

/// Returns the end of the hexadecimal digits at @p value, which may begin with "-", or @p value itself if
/// there is no digit.
inline digit_run value_of_digits(const char* value) noexcept {
    const char* const first_digit = value + (*value == '-' ? 1 : 0);
    const digit_run digits = digits_from(first_digit);
    return {digits.end != first_digit ? digits.end : value, digits.has_lower_case};
}

} // namespace

fast_mif_lines::amount fast_mif_lines::read(std::string_view lines, bool with_comments) {
    accepts_comments = with_comments;
    has_lists = false;
    address_base = radix_base(memory.address_radix);
    const char* const begin = lines.data();
    lines_end = begin + lines.size();
    const char* const eight_readable_end =
        begin + size_before_slack(lines, slack_of_lines, line_limit + longest_line_end);
    const char* at = begin;
    std::uint64_t together = 0;
    std::uint64_t one_by_one = 0;
    std::uint64_t parsed = 0;
    while (at != lines_end) {
        if (lines_apart != 0) {
            --lines_apart;
        } else if (const std::uint64_t same = read_equal_lines(at, eight_readable_end); same != 0) {
            together += same;
            continue;
        }
        const char* next = at < eight_readable_end ? read_line_as_predicted(at) : nullptr;
        if (next == nullptr) {
            next = read_line(at);
            if (next == nullptr) {
                break;
            }
            ++parsed;
        }
        at = next;
        ++one_by_one;
    }
    words.flush();
    return {static_cast<std::size_t>(at - begin), together + one_by_one, together, parsed, has_lists};
}

/// Parses consecutive lines with the length of the previous line that begin as predicted and have one value
/// of the previous length in hexadecimal digits, then ";" and LF. Returns their number and moves @p line
/// after them. Returns 0 and changes nothing if the first line has another form. The lines up to @p end must
/// be readable eight characters at a time.
std::uint64_t fast_mif_lines::read_equal_lines(const char*& line, const char* const end) {
    const std::uint64_t first = predicted.address();
    const std::size_t line_size = predicted.size() + expected_length + 2;
    if (line >= end || expected_length == 0 || predicted.size() == 0 || first >= memory.number_of_words) {
        return 0;
    }
    if (line[line_size - 1] != '\n') {
        lines_apart = lines_before_next_try;
        return 0;
    }
    const auto address = static_cast<std::uint32_t>(first);
    const word_batch::word_room room = words.room_for_some(address, expected_length);
    const std::size_t free =
        std::min(memory.number_of_words - address, memory.address_set.count_free(address));
    std::size_t most = std::min({predicted.lines_at_once(), room.count, free});
    const auto bytes_ahead = static_cast<std::size_t>(end - line);
    if (most * line_size > bytes_ahead) { // rare; a division takes as much time as half a line
        most = bytes_ahead / line_size;
    }
    const std::size_t length = expected_length;
    char* place = room.place;
    const std::size_t count = predicted.count_predicted(line, line_size, most, [&](const char* value) {
        bool has_lower_case = false;
        if (value[length] != ';' || value[length + 1] != '\n' || !are_digits(value, length, has_lower_case)) {
            return false;
        }
        copy_digits(value, length, has_lower_case, place);
        place += length;
        return true;
    });
    if (count == 0 || count < most) {
        lines_apart = lines_before_next_try;
    }
    if (count != 0) {
        memory.address_set.insert_run(address, static_cast<std::uint32_t>(count));
        words.take(count);
        predicted.advance(count);
        line += count * line_size;
    }
    return count;
}

/// Parses a line that begins as predicted and has values of hexadecimal digits only; each may begin with "-".
/// Returns the position after its LF. For any other line it returns null and changes nothing. The line must
/// end at least `slack_of_lines` before the end of the lines.
const char* fast_mif_lines::read_line_as_predicted(const char* const begin) {
    if (!predicted.matches(begin)) {
        return nullptr;
    }
    const char* const value = begin + predicted.size();
    digit_run read{value + expected_length, false};
    if (*read.end != ';' || expected_length == 0 ||
        !are_digits(value, expected_length, read.has_lower_case)) {
        read = value_of_digits(value);
        if (*read.end != ';' || read.end == value) {
            return read_values_as_predicted(begin);
        }
        const auto length = static_cast<std::size_t>(read.end - value);
        expected_length = length <= longest_expected ? length : 0;
    }
    const char* next = read.end + 2;
    comment = {};
    if (read.end[1] != '\n' || static_cast<std::size_t>(next - begin) > line_limit) {
        next = find_next_line(begin, read.end + 1);
    }
    const std::uint64_t address = predicted.address();
    if (next == nullptr || address >= memory.number_of_words ||
        !memory.address_set.insert(static_cast<std::uint32_t>(address))) {
        return nullptr;
    }
    set_digits(static_cast<std::uint32_t>(address), {value, static_cast<std::size_t>(read.end - value)},
               read.has_lower_case);
    keep_comment();
    predicted.advance(1);
    return next;
}

/// Does the same for a line with several values.
const char* fast_mif_lines::read_values_as_predicted(const char* const begin) {
    bool has_lower_case = false;
    const char* at = begin + predicted.size();
    value_count = 0;
    while (*at != ';') {
        const char* const value = at;
        const digit_run read = value_of_digits(value);
        has_lower_case = has_lower_case || read.has_lower_case;
        at = read.end;
        if (at == value || (!is_mif_blank(*at) && *at != ';') || value_count == values.size()) {
            return nullptr;
        }
        values[value_count++] = {value, static_cast<std::size_t>(at - value)};
        at = skip_blanks(at);
    }
    const char* const next = find_next_line(begin, at + 1);
    const std::uint64_t first = predicted.address();
    if (next == nullptr || !can_be_stored(first)) {
        return nullptr;
    }
    for (std::size_t i = 0; i < value_count; ++i) {
        set_digits(static_cast<std::uint32_t>(first + i), values[i], has_lower_case);
    }
    keep_comment();
    predicted.advance(value_count);
    return next;
}

/// Parses "<address> : <value> <value> … ;" and returns the position after the LF. For any other line it
/// returns null and changes nothing. A LF must follow; it ends every loop, since it is no blank, digit or
/// value character.
const char* fast_mif_lines::read_line(const char* const begin) {
    const char* at = skip_blanks(begin);
    const char* const first_digit = at;
    std::uint64_t address = 0;
    while (digit_value(*at) < address_base) {
        address = address * address_base + digit_value(*at);
        ++at;
    }
    const auto digits = static_cast<std::size_t>(at - first_digit);
    at = skip_blanks(at);
    if (digits == 0 || digits > safe_digits(address_base) || *at != ':') {
        return nullptr;
    }
    const char* const first_value = skip_blanks(at + 1);
    at = read_values(first_value);
    const char* const next = at != nullptr ? find_next_line(begin, at) : nullptr;
    if (next == nullptr || !can_be_stored(address)) {
        return nullptr;
    }
    for (std::size_t i = 0; i < value_count; ++i) {
        words.set(static_cast<std::uint32_t>(address + i), in_upper_case(values[i]));
    }
    keep_comment();
    predicted.learn({begin, static_cast<std::size_t>(first_value - begin)}, {first_digit, digits},
                    address_base, address, value_count);
    return next;
}

/// Collects the values from @p at to the ";" and returns the position after it. Returns null if there is
/// anything but values, or a "--", which begins a comment.
const char* fast_mif_lines::read_values(const char* at) {
    value_count = 0;
    while (is_value_character(*at)) {
        const char* const value = at;
        while (is_value_character(*at)) {
            if (at[0] == '-' && at[1] == '-') {
                return nullptr;
            }
            ++at;
        }
        if (value_count == values.size()) {
            return nullptr;
        }
        values[value_count++] = {value, static_cast<std::size_t>(at - value)};
        at = skip_blanks(at);
    }
    return *at == ';' ? at + 1 : nullptr;
}

/// Finds the comment of the line at @p begin, where @p at is the position after the ";". Returns the position
/// after the LF, or null if there is anything else or the line is too long.
const char* fast_mif_lines::find_next_line(const char* const begin, const char* at) {
    comment = {};
    at = skip_blanks(at);
    if (accepts_comments && at[0] == '-' && at[1] == '-') {
        const char* const dashes = at;
        at = static_cast<const char*>(std::memchr(at, '\n', static_cast<std::size_t>(lines_end - at)));
        at -= at[-1] == '\r' ? 1 : 0;
        comment = {dashes, static_cast<std::size_t>(at - dashes)};
    }
    const std::size_t carriage_return = *at == '\r' ? 1 : 0;
    if (at[carriage_return] != '\n' || static_cast<std::size_t>(at - begin) > line_limit) {
        return nullptr;
    }
    return at + carriage_return + 1;
}

/// Returns false and changes nothing if the values do not fit from @p address on, or if the address was set
/// before. Otherwise marks the address as set.
bool fast_mif_lines::can_be_stored(std::uint64_t address) {
    if (value_count == 0 || address + value_count > memory.number_of_words) {
        return false;
    }
    has_lists = has_lists || value_count > 1;
    return value_count > 1 || memory.address_set.insert(static_cast<std::uint32_t>(address));
}

/// Stores the word @p value of hexadecimal digits, possibly with "-", in upper case.
void fast_mif_lines::set_digits(std::uint32_t address, std::string_view value, bool has_lower_case) {
    char* const place = words.room_for(address, value.size());
    if (place == nullptr) {
        words.set_apart(address, has_lower_case ? in_upper_case(value) : value);
        return;
    }
    static_assert(word_batch::slack >= 8 && slack_of_lines >= 8);
    copy_digits(value.data(), value.size(), has_lower_case, place);
}

/// Returns @p value itself if it has no lower-case letter.
std::string_view fast_mif_lines::in_upper_case(std::string_view value) {
    const auto is_lower = [](char character) { return character >= 'a'; }; // lower-case letters come after
                                                                           // all other characters
    if (std::none_of(value.begin(), value.end(), is_lower)) {
        return value;
    }
    upper_cased.assign(value);
    to_upper(upper_cased);
    return upper_cased;
}

void fast_mif_lines::keep_comment() {
    if (!comment.empty()) {
        memory.data_comments.push_front(comment);
    }
}

} // namespace kvr
