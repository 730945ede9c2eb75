// Reads an Intel HEX file in one pass, in two passes and line by line, then writes it and reads it again.

#include "kvr/memory/hex/hex_reader.h"

#include "fuzz/exact_bytes.h"
#include "fuzz/input_bytes.h"
#include "fuzz/library_targets.h"
#include "fuzz/resource_limits.h"
#include "fuzz/same_state.h"
#include "fuzz/scratch.h"
#include "kvr/memory/hex/hex_memory.h"
#include "kvr/memory/hex/hex_record_walk.h"
#include "kvr/memory/hex/hex_writer.h"
#include "kvr/memory/io/line_source.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <string>

namespace kvr_fuzz {

namespace {

constexpr std::array<std::uint32_t, 12> hex_word_sizes = {8, 16, 32, 128, 1, 7, 12, 24, 64, 256, 264, 0};
constexpr std::array<std::uint32_t, 4> address_offsets = {0, 16, 0xFFFFFF00, 3};

/// Requests every record and stops at the first fault, like a reader without an observer.
class hex_observer : public kvr::read_observer {
public:
    explicit hex_observer(bool goes_on_after_faults) : goes_on(goes_on_after_faults) {}
    bool fault(const kvr::read_fault& fault, std::string_view /*text*/) override {
        expect(fault.line != 0, "a fault has no line");
        return goes_on;
    }
    void words(std::uint64_t /*first*/, std::uint64_t /*last*/, std::uint64_t /*line*/) override {}

private:
    bool goes_on;
};

struct hex_reading {
    hex_reading(std::uint32_t word_size, std::uint32_t address_offset) : memory(&owner) {
        memory.word_size = word_size;
        memory.address_offset = address_offset;
    }

    bool read(std::string_view text, kvr::read_observer* observer) {
        kvr::line_source source(text, kvr::hex_record_walk::longest_line);
        return kvr::read_hex_lines(memory, source, observer);
    }

    KVR_MEMORY_FILE owner;
    kvr::hex_memory memory;
};

void expect_same_reading(const hex_reading& left, const hex_reading& right) {
    expect_same_state(left.memory, right.memory);
    expect(left.memory.lowest_address == right.memory.lowest_address, "the lowest addresses differ");
    expect(left.memory.highest_address == right.memory.highest_address, "the highest addresses differ");
    expect(left.memory.address_offset == right.memory.address_offset, "the address offsets differ");
}

/// The same file with a blank at the end of every line, which excludes the fast paths; "" if that makes a
/// line too long.
std::string with_blanks(std::string_view text) {
    std::string result;
    std::size_t begin = 0;
    while (begin <= text.size()) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        if (end - begin >= kvr::hex_record_walk::longest_line) {
            return "";
        }
        result.append(text, begin, end - begin).append(end < text.size() ? " \n" : " ");
        begin = end + 1;
    }
    return result;
}

bool is_hexadecimal(std::string_view word) {
    return std::all_of(word.begin(), word.end(),
                       [](unsigned char character) { return std::isxdigit(character) != 0; });
}

/// The digits that the writer generates for a word.
std::string in_a_record(std::string_view word, std::size_t digits) {
    std::string text(digits - std::min(digits, word.size()), '0');
    for (const char character : word) {
        text += static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
    }
    return text;
}

/// Records hold whole bytes, and their checksum covers only digits.
bool can_be_compared(const kvr::hex_memory& memory) {
    constexpr std::uint32_t few_words = 1024;
    if (memory.word_size == 0 || memory.word_size % 8 != 0 || memory.data_words.empty() ||
        memory.data_words.size() > few_words) {
        return false;
    }
    for (std::uint32_t address = 0; address < memory.data_words.size(); ++address) {
        const std::string_view word = memory.data_words[address];
        if (word.size() > memory.word_size / 4 || !is_hexadecimal(word)) {
            return false;
        }
    }
    return true;
}

void expect_same_after_writing(kvr::hex_memory& memory, const scratch_file& file) {
    memory.file_name = file.path();
    expect(kvr::write_hex_file(memory), "the memory cannot be written");
    hex_reading again(memory.word_size, 0);
    expect(kvr::read_hex_file(again.memory, file.path()), "what was written cannot be read");
    expect(again.memory.data_words.size() == memory.data_words.size(),
           "the depth is another one after writing");
    for (std::uint32_t address = 0; address < memory.data_words.size(); ++address) {
        expect(again.memory.data_words[address] ==
                   in_a_record(memory.data_words[address], memory.word_size / 4),
               "a word is another one after writing");
    }
}

} // namespace

void try_hex_reader(std::string_view input) {
    const resource_limits limits(input.size());
    static const scratch_file file;
    input_bytes settings(input);
    const std::uint32_t word_size = settings.choose(hex_word_sizes);
    const std::uint32_t offset = settings.choose(address_offsets);
    const exact_bytes bytes(settings.rest());
    file.assign(bytes.view());

    hex_reading once(word_size, offset);
    const bool complete = kvr::read_hex_file(once.memory, file.path());
    hex_reading twice(word_size, offset);
    expect(twice.read(bytes.view(), nullptr) == complete, "one pass and two differ in their verdict");
    expect_same_reading(once, twice);
    expect_same_messages(once.owner, twice.owner);

    hex_observer stopping(false);
    hex_reading watched(word_size, offset);
    expect(watched.read(bytes.view(), &stopping) == complete, "an observer changes the verdict");
    expect_same_reading(once, watched);
    if (const std::string longer = with_blanks(bytes.view()); !longer.empty()) {
        hex_reading plain(word_size, offset);
        expect(plain.read(longer, nullptr) == complete, "the short ways change the verdict");
        expect_same_reading(once, plain);
        expect_same_messages(once.owner, plain.owner);
    }
    if (!complete) {
        hex_observer going_on(true);
        hex_reading whole(word_size, offset);
        whole.read(bytes.view(), &going_on);
    }
    if (complete && can_be_compared(once.memory)) {
        expect_same_after_writing(once.memory, file);
    }
}

} // namespace kvr_fuzz
