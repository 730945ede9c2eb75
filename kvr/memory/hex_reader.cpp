#include "kvr/memory/hex_reader.h"

#include "kvr/memory/hex_memory.h"
#include "kvr/memory/hex_record.h"
#include "kvr/memory/hex_record_walk.h"
#include "kvr/memory/line_source.h"

#include <algorithm>
#include <cstddef>
#include <limits>

namespace kvr {

namespace {

using step = hex_record_walk::step;

/// The stretch of words that the data records of a file span, as its extended address records divide it.
class address_space {
public:
    void add_data(std::uint32_t address, std::uint32_t words) noexcept {
        enter_pending_pages();
        lowest_address = std::min(lowest_address, address);
        highest_address = std::max(highest_address, address + words - 1);
        if (top_segment == last_segment && top_linear == last_linear) {
            maximum_end = std::max(maximum_end, address + words);
        }
    }
    void note_segment(std::uint32_t value) noexcept {
        last_segment = value;
        higher_segment_pending = higher_segment_pending || last_segment > top_segment;
    }
    void note_linear(std::uint32_t value) noexcept {
        last_linear = value;
        higher_linear_pending = higher_linear_pending || last_linear > top_linear;
    }

    [[nodiscard]] bool has_data() const noexcept { return maximum_end != 0; }
    [[nodiscard]] std::uint32_t words() const noexcept {
        return top_linear * 65536 + top_segment * 16 + maximum_end;
    }
    /// Lowest and highest are the raw fields of the records: no extended address is added to them.
    [[nodiscard]] std::uint32_t lowest() const noexcept { return lowest_address; }
    [[nodiscard]] std::uint32_t highest() const noexcept { return highest_address; }

private:
    /// A higher page counts from its first data on.
    void enter_pending_pages() noexcept {
        if (higher_segment_pending) {
            top_segment = last_segment;
            maximum_end = 0;
            higher_segment_pending = false;
        }
        if (higher_linear_pending) {
            top_linear = last_linear;
            maximum_end = 0;
            higher_linear_pending = false;
        }
    }

    std::uint32_t lowest_address = std::numeric_limits<std::uint32_t>::max();
    std::uint32_t highest_address = 0;
    std::uint32_t maximum_end = 0; ///< end of the data on the top page, relative to the page
    std::uint32_t top_segment = 0;
    std::uint32_t last_segment = 0;
    std::uint32_t top_linear = 0;
    std::uint32_t last_linear = 0;
    bool higher_segment_pending = false;
    bool higher_linear_pending = false;
};

void add_record(address_space& space, const hex_record& record, std::uint32_t bytes_per_word) {
    switch (record.kind) {
    case hex_record_type::data: {
        const bool has_rest = record.data_bytes % bytes_per_word != 0;
        space.add_data(record.word_address, record.data_bytes / bytes_per_word + (has_rest ? 1 : 0));
        break;
    }
    case hex_record_type::extended_segment_address:
        space.note_segment(hex_number(record.data()));
        break;
    case hex_record_type::extended_linear_address:
        space.note_linear(hex_number(record.data()));
        break;
    default:
        break;
    }
}

bool goes_on(read_observer* observer, const read_fault& fault, std::string_view text) {
    return observer != nullptr && observer->fault(fault, text);
}

hex_read_stop stop_at(const read_fault& fault, const hex_record_walk& walk) {
    return {fault, std::string(walk.text())};
}

/// Walks through the file and enters its records into @p space. Nothing when it got to the end record.
std::optional<hex_read_stop> measure(address_space& space, hex_record_walk& walk,
                                     std::uint32_t bytes_per_word, read_observer* observer) {
    for (step result = walk.next(); result != step::end; result = walk.next()) {
        std::optional<read_fault> fault;
        if (result == step::fault) {
            fault = walk.fault();
        } else if (walk.record().kind == hex_record_type::data && bytes_per_word == 0) {
            fault = walk.fault_of_record(fault_code::word_size_zero);
        } else {
            add_record(space, walk.record(), bytes_per_word);
        }
        if (fault &&
            (!goes_on(observer, *fault, walk.text()) || fault->code == fault_code::missing_end_record)) {
            return stop_at(*fault, walk);
        }
    }
    return std::nullopt;
}

/// Digits of @p data without those by which it is longer than @p record_bytes taken up to whole words.
std::string_view cut_to_record_length(std::string_view data, std::uint32_t record_bytes,
                                      std::uint64_t word_bits) {
    const std::uint64_t record_bits =
        (word_bits + std::uint64_t{8} * record_bytes - 1) / word_bits * word_bits;
    const std::uint64_t data_bits = std::uint64_t{4} * data.size();
    return data_bits >= record_bits + 4 ? data.substr((data_bits - record_bits) / 4) : data;
}

/// The digits of a word at the end of @p digits; none when there are fewer bits than a word has.
std::string_view last_word_of(std::string_view digits, std::uint32_t word_size) {
    const std::uint64_t bits = std::uint64_t{4} * digits.size();
    return bits < word_size ? std::string_view() : digits.substr((bits - word_size) / 4);
}

bool cannot_be_read(hex_memory& memory) {
    memory.file_not_found = true;
    memory.report_not_found();
    return false;
}

bool invalid_line(hex_memory& memory, const hex_read_stop& stop, const read_observer* observer) {
    memory.invalid_line_number = static_cast<int>(stop.fault.line);
    memory.error_occurred = true;
    if (memory.error_state == ERROR_STATE_NONE) {
        memory.error_state = ERROR_STATE_INVALID_LINE;
        if (observer == nullptr) {
            memory.report("Invalid line found in memory file.  Invalid line -- " + stop.line_text +
                          " -- found in file " + memory.file_name);
        }
    }
    return false;
}

bool was_read(hex_memory& memory) {
    memory.invalid_line_number = 0;
    memory.error_occurred = false;
    memory.number_of_words = memory.data_words.size();
    return true;
}

} // namespace

std::optional<hex_read_stop> find_address_space(hex_memory& memory, line_source& source,
                                                read_observer* observer) {
    address_space space;
    hex_record_walk walk(source);
    std::optional<hex_read_stop> stop = measure(space, walk, memory.bytes_per_word(), observer);
    memory.lowest_address = space.lowest();
    memory.highest_address = space.highest();
    if (stop) {
        return stop;
    }
    if (source.failed()) {
        return stop_at({fault_code::missing_end_record, walk.line(), 0, 0}, walk);
    }
    if (!space.has_data()) {
        const read_fault fault = walk.fault_of_record(fault_code::no_data);
        goes_on(observer, fault, walk.text());
        return stop_at(fault, walk);
    }
    memory.data_words.resize(space.words(), memory.memory_initialize_value);
    return std::nullopt;
}

std::optional<hex_read_stop> store_hex_records(hex_memory& memory, line_source& source,
                                               read_observer* observer) {
    using checksums = hex_record_walk::checksums;
    hex_record_walk walk(source, memory.address_offset,
                         observer != nullptr ? checksums::tested : checksums::untested);
    for (step result = walk.next(); result != step::end; result = walk.next()) {
        if (result == step::fault && observer == nullptr) {
            return stop_at(walk.fault(), walk);
        }
        memory.address_offset = walk.address_offset();
        if (result == step::record && walk.record().kind == hex_record_type::data) {
            const hex_record& record = walk.record();
            const std::uint32_t first = record.word_address + walk.address_offset();
            const std::uint64_t count = store_hex_words(memory, first, record.data(), record.data_bytes);
            if (observer != nullptr && count != 0) {
                observer->words(first, first + count - 1, walk.line());
            }
        }
    }
    return std::nullopt;
}

std::uint32_t store_hex_words(hex_memory& memory, std::uint32_t first, std::string_view data,
                              std::uint32_t record_bytes) {
    const std::uint64_t word_bits = std::uint64_t{8} * memory.bytes_per_word();
    if (word_bits == 0) {
        return 0;
    }
    const std::size_t word_digits = word_bits / 4;
    std::string_view digits = cut_to_record_length(data, record_bytes, word_bits);
    digits.remove_prefix(std::uint64_t{4} * digits.size() % memory.word_size / 4);
    std::uint32_t count = 0;
    while (!digits.empty()) {
        const std::string_view word = last_word_of(digits.substr(0, word_digits), memory.word_size);
        digits.remove_prefix(std::min(word_digits, digits.size()));
        if (word.empty()) {
            continue;
        }
        const std::uint32_t address = first + count++;
        if (address < memory.data_words.size()) {
            memory.data_words.set(address, word);
        }
    }
    return count;
}

bool read_hex_file(hex_memory& memory, const std::string& path, read_observer* observer) {
    line_source source = line_source::open(path, hex_record_walk::longest_line);
    return read_hex_lines(memory, source, observer);
}

bool read_hex_lines(hex_memory& memory, line_source& source, read_observer* observer) {
    memory.file_not_found = false;
    memory.memory_radix = RADIX_HEX;
    if (!source.is_open()) {
        return cannot_be_read(memory);
    }
    std::optional<hex_read_stop> stop = find_address_space(memory, source, observer);
    if (source.failed() || (!stop && !source.rewind())) {
        return cannot_be_read(memory);
    }
    if (stop) {
        // The text is that of the second pass, which was not made; callers rely on its absence.
        stop->line_text.clear();
        return invalid_line(memory, *stop, observer);
    }
    stop = store_hex_records(memory, source, observer);
    if (source.failed()) {
        return cannot_be_read(memory);
    }
    return stop ? invalid_line(memory, *stop, observer) : was_read(memory);
}

} // namespace kvr
