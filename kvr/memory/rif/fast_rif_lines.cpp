#include "kvr/memory/rif/fast_rif_lines.h"

#include "kvr/memory/io/line_source.h"
#include "kvr/numeric/digit_run.h"
#include "kvr/numeric/digit_value.h"

#include <algorithm>
#include <array>

namespace kvr {

namespace {

/// Characters after a line that may be read but not consumed.
constexpr std::size_t slack_of_words = 64;

/// Words up to this length are expected to have the same length as the previous word.
constexpr std::size_t longest_expected_word = 32;
static_assert(slack_of_words >= longest_expected_word + 8 && word_batch::slack >= 8);

/// A line with more words is not regular.
constexpr std::size_t most_fast_words = 256;

/// True if @p character may follow a word of a regular line.
bool ends_word(char character) noexcept {
    return character == ' ' || character == '\n';
}

} // namespace

std::size_t fast_rif_lines::readable_size(std::string_view lines) noexcept {
    return size_before_slack(lines, slack_of_words);
}

std::size_t fast_rif_lines::read(std::string_view lines, std::uint64_t& next_address) {
    const char* const begin = lines.data();
    const char* const end = begin + lines.size();
    const char* at = begin;
    address = next_address;
    while (at != end) {
        const char* next = *at == '@' ? read_address(at) : read_words_of_one_length(at);
        if (next == nullptr) {
            next = read_words(at);
        }
        if (next == nullptr) {
            break;
        }
        at = next;
    }
    batch.flush();
    next_address = address;
    return static_cast<std::size_t>(at - begin);
}

/// Parses "@" with up to eight hexadecimal digits and returns the position after the LF. For any other line
/// it returns null and changes nothing.
const char* fast_rif_lines::read_address(const char* begin) noexcept {
    constexpr std::ptrdiff_t safe_digits = 8;
    const char* const first_digit = begin + 1;
    const char* at = first_digit;
    std::uint64_t number = 0;
    while (digit_value(*at) < 16 && at - first_digit < safe_digits) {
        number = number * 16 + digit_value(*at);
        ++at;
    }
    if (at == first_digit || *at != '\n') {
        return nullptr;
    }
    address = number;
    return at + 1;
}

/// Like read_words() for a line whose words have the length of the previous word and fit into one page.
const char* fast_rif_lines::read_words_of_one_length(const char* begin) {
    const std::size_t length = expected_length;
    if (length == 0 || address >= words.size()) {
        return nullptr;
    }
    const word_batch::word_room room = batch.room_for_some(static_cast<std::uint32_t>(address), length);
    const std::size_t most = std::min<std::size_t>(room.count, words.size() - address);
    std::size_t count = 0;
    const char* at = begin;
    for (; *at != '\n'; ++count) {
        bool has_lower_case = false;
        const char after = at[length];
        if (count == most || !ends_word(after) || !are_digits(at, length, has_lower_case)) {
            return nullptr;
        }
        copy_digits(at, length, has_lower_case, room.place + count * length);
        at += length + (after == ' ' ? 1 : 0);
    }
    batch.take(count);
    address += count;
    return at + 1;
}

/// Parses words of hexadecimal digits, each followed by one blank or the LF, and returns the position after
/// the LF. For any other line it returns null and changes nothing.
const char* fast_rif_lines::read_words(const char* begin) {
    std::array<std::string_view, most_fast_words> found;
    std::size_t count = 0;
    bool has_lower_case = false;
    const char* at = begin;
    while (*at != '\n') {
        const char* const word = at;
        at = find_word_end(word, has_lower_case);
        if (at == word || !ends_word(*at) || count == found.size()) {
            return nullptr;
        }
        found[count++] = {word, static_cast<std::size_t>(at - word)};
        at += *at == ' ' ? 1 : 0;
    }
    for (std::size_t i = 0; i < count; ++i) {
        store_word(found[i], has_lower_case);
    }
    return at + 1;
}

/// Returns the end of the hexadecimal digits at @p word, which usually has the length of the previous word.
const char* fast_rif_lines::find_word_end(const char* word, bool& has_lower_case) noexcept {
    const char* const expected = word + expected_length;
    if (ends_word(*expected) && are_digits(word, expected_length, has_lower_case)) {
        return expected;
    }
    const digit_run digits = digits_from(word);
    const auto length = static_cast<std::size_t>(digits.end - word);
    expected_length = length <= longest_expected_word ? length : 0;
    has_lower_case = has_lower_case || digits.has_lower_case;
    return digits.end;
}

void fast_rif_lines::store_word(std::string_view word, bool has_lower_case) {
    if (address < words.size()) {
        const auto place_in_store = static_cast<std::uint32_t>(address);
        if (char* place = batch.room_for(place_in_store, word.size())) {
            copy_digits(word.data(), word.size(), has_lower_case, place);
        } else {
            batch.set_apart(place_in_store, has_lower_case ? in_upper_case(word) : word);
        }
    }
    ++address;
}

std::string_view fast_rif_lines::in_upper_case(std::string_view word) {
    upper_cased.resize(word.size() + word_batch::slack); // room that a copy may overwrite
    copy_digits(word.data(), word.size(), true, upper_cased.data());
    return std::string_view(upper_cased).substr(0, word.size());
}

} // namespace kvr
