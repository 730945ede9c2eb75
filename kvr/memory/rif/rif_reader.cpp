#include "kvr/memory/rif/rif_reader.h"

#include "kvr/numeric/scanned_number.h"
#include "kvr/util/letter_case.h"

#include <algorithm>
#include <array>

namespace kvr {

namespace {

/// The class of a character, as bits that can be combined for a line.
enum character_class : std::uint8_t {
    plain = 0, ///< part of a data line, stored unchanged
    lower_case = 1,
    not_data = 2,
};

constexpr std::array<std::uint8_t, 256> make_character_classes() {
    std::array<std::uint8_t, 256> classes{};
    classes.fill(not_data);
    for (const char data : std::string_view("0123456789ABCDEFabcdef XxUu")) {
        classes[static_cast<unsigned char>(data)] = plain;
    }
    for (unsigned char letter = 'a'; letter <= 'z'; ++letter) {
        classes[letter] |= lower_case;
    }
    return classes;
}

constexpr std::array<std::uint8_t, 256> character_classes = make_character_classes();

unsigned class_of(char character) noexcept {
    return character_classes[static_cast<unsigned char>(character)];
}

bool is_not_data(char character) noexcept {
    return (class_of(character) & not_data) != 0;
}

/// Returns the classes of all characters.
unsigned classes_in(std::string_view line) noexcept {
    unsigned found = plain;
    for (const char character : line) {
        found |= class_of(character);
    }
    return found;
}

} // namespace

bool is_rif_data(std::string_view text) noexcept {
    return (classes_in(text) & not_data) == 0;
}

std::uint64_t rif_address(std::string_view line) noexcept {
    const scanned_number number = scan_number(line.substr(line.find('@') + 1), 16);
    return number.is_address() ? number.magnitude : rif_address_outside;
}

rif_reader::rif_reader(rif_memory& target, read_observer* looking_on)
    : memory(target),
      observer(looking_on),
      fast_lines(target.data_words) {}

void rif_reader::read(line_source& source) {
    memory.file_not_found = !source.is_open();
    bool go_on = source.is_open();
    while (go_on && !source.at_end()) {
        go_on = read_whole_lines(source);
        if (go_on) {
            const std::string_view line = source.next_line();
            go_on = read_line(without_carriage_return(line, source.line_had_newline()));
        }
    }
    memory.file_not_found = memory.file_not_found || source.failed();
}

/// Parses the buffered lines. Returns false if one of them ends the read.
bool rif_reader::read_whole_lines(line_source& source) {
    const std::string_view lines = source.whole_lines();
    // An observer gets every line, which excludes the fast path.
    const std::string_view regular_lines =
        lines.substr(0, observer == nullptr ? fast_rif_lines::readable_size(lines) : 0);
    std::size_t first = fast_lines.read(regular_lines, address);
    bool go_on = true;
    while (go_on && first < lines.size()) {
        const std::size_t newline = lines.find('\n', first);
        go_on = read_line(without_carriage_return(lines.substr(first, newline - first), true));
        first = newline + 1;
        if (go_on && first < regular_lines.size()) {
            first += fast_lines.read(regular_lines.substr(first), address);
        }
    }
    source.skip(first);
    return go_on;
}

bool rif_reader::read_line(std::string_view line) {
    ++line_number;
    const unsigned found = classes_in(line);
    if (found != plain) {
        line = upper_cased(line);
    }
    if ((found & not_data) == 0) {
        read_words(line);
        return true;
    }
    if (line.find('@') != line.npos) {
        read_address(line);
        return true;
    }
    return refuse(line);
}

std::string_view rif_reader::upper_cased(std::string_view line) {
    upper_line.resize(line.size());
    std::transform(line.begin(), line.end(), upper_line.begin(), upper_case_of);
    return upper_line;
}

void rif_reader::read_address(std::string_view line) {
    address = rif_address(line);
    if (observer != nullptr) {
        observer->address_line(address, line_number, line);
    }
}

void rif_reader::read_words(std::string_view line) {
    const std::uint64_t first_address = address;
    const char* const end = line.data() + line.size();
    const char* next = line.data();
    while (next != end) {
        const char* const word = next;
        while (next != end && *next != ' ') {
            ++next;
        }
        if (next != word) {
            store_word(std::string_view(word, next));
        }
        next += next != end ? 1 : 0;
    }
    if (observer != nullptr && address != first_address) {
        observer->words(first_address, address - 1, line_number);
    }
}

void rif_reader::store_word(std::string_view word) {
    if (address < memory.data_words.size()) {
        memory.data_words.set(static_cast<std::uint32_t>(address), word);
    }
    ++address;
}

/// Reports an illegal line. Returns true if the read continues.
bool rif_reader::refuse(std::string_view line) {
    memory.error_state = ERROR_STATE_INVALID_LINE;
    if (observer == nullptr) {
        memory.report("Invalid line found in memory file.  Illegal line -- " + std::string(line) +
                      " -- found in file " + memory.file_name);
        return false;
    }
    const auto first = std::find_if(line.begin(), line.end(), is_not_data);
    const auto last = std::find_if_not(first, line.end(), is_not_data);
    return observer->fault({.code = fault_code::illegal_character,
                            .line = line_number,
                            .column = static_cast<std::uint32_t>(first - line.begin() + 1),
                            .length = static_cast<std::uint32_t>(last - first)},
                           line);
}

} // namespace kvr
