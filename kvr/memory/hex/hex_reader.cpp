#include "kvr/memory/hex/hex_reader.h"

#include "kvr/memory/hex/fast_hex_records.h"
#include "kvr/memory/hex/hex_memory.h"
#include "kvr/memory/hex/hex_record.h"
#include "kvr/memory/hex/hex_record_walk.h"
#include "kvr/memory/hex/hex_word_storer.h"
#include "kvr/memory/io/line_source.h"

#include <algorithm>
#include <cstddef>
#include <limits>

namespace kvr {

namespace {

using step = hex_record_walk::step;

/// Computes the address space that the data records of a file cover, in the segments set by extended address
/// records.
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
    /// Lowest and highest address fields of the records, without extended addresses.
    [[nodiscard]] std::uint32_t lowest() const noexcept { return lowest_address; }
    [[nodiscard]] std::uint32_t highest() const noexcept { return highest_address; }

private:
    /// A higher page counts only once it has data.
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
    std::uint32_t maximum_end = 0; ///< end of the data on the highest page, relative to the page
    std::uint32_t top_segment = 0;
    std::uint32_t last_segment = 0;
    std::uint32_t top_linear = 0;
    std::uint32_t last_linear = 0;
    bool higher_segment_pending = false;
    bool higher_linear_pending = false;
};

/// The state of reading a file in one pass.
struct fast_reading {
    explicit fast_reading(const hex_memory& memory) noexcept
        : words(memory),
          fast_records(words, memory.word_size) {}

    fast_hex_words words;
    fast_hex_records fast_records;
};

/// Adds records to an address space and, if the file is read in one pass, stores their words.
class first_pass {
public:
    first_pass(address_space& space_to_find, std::uint32_t bytes_per_word, fast_reading* fast_words)
        : space(space_to_find),
          word_bytes(bytes_per_word),
          fast(fast_words) {}

    /// Reads records on the fast path; see fast_hex_records.
    fast_hex_records::run read_run(std::string_view lines, std::uint32_t address_offset) {
        if (fast == nullptr) {
            return {0, 0, 0};
        }
        const fast_hex_records::run run = fast->fast_records.read(lines, address_offset);
        if (run.count != 0) {
            space.add_data(run.first, run.count);
        }
        return run;
    }

    void learn(const hex_record& record, std::string_view line) noexcept {
        if (fast != nullptr) {
            fast->fast_records.learn(record, line);
        }
    }

    void take(const hex_record& record, std::uint32_t address_offset) {
        if (record.kind == hex_record_type::data) {
            take_data(record, address_offset);
        } else if (record.kind == hex_record_type::extended_segment_address) {
            space.note_segment(hex_number(record.data()));
        } else if (record.kind == hex_record_type::extended_linear_address) {
            space.note_linear(hex_number(record.data()));
        }
    }

    void take_data(const hex_record& record, std::uint32_t address_offset) {
        if (record.data_bytes != known_bytes) {
            known_bytes = record.data_bytes;
            known_words = known_bytes / word_bytes + (known_bytes % word_bytes != 0 ? 1 : 0);
        }
        space.add_data(record.word_address, known_words);
        if (fast != nullptr) {
            fast->words.take(record, known_words, address_offset);
        }
    }

private:
    address_space& space;
    std::uint32_t word_bytes;
    fast_reading* fast;
    std::uint32_t known_bytes = 0; ///< the record length to which known_words applies
    std::uint32_t known_words = 0; ///< words of such a record
};

bool goes_on(read_observer* observer, const read_fault& fault, std::string_view text) {
    return observer != nullptr && observer->fault(fault, text);
}

hex_read_stop stop_at(const read_fault& fault, const hex_record_walk& walk) {
    return {fault, std::string(walk.text())};
}

/// Walks over the file and adds its records to @p space. @p fast, if not null, receives their words. Returns
/// nothing if the end record was reached.
std::optional<hex_read_stop> measure(address_space& space, hex_record_walk& walk,
                                     std::uint32_t bytes_per_word, read_observer* observer,
                                     fast_reading* fast) {
    first_pass pass(space, bytes_per_word, fast);
    const auto next = [&] {
        if (bytes_per_word != 0) {
            const std::uint32_t offset = walk.address_offset();
            walk.each_plain_data_record([&](std::string_view lines) { return pass.read_run(lines, offset); },
                                        [&](const hex_record& record, std::string_view line) {
                                            pass.take_data(record, offset);
                                            pass.learn(record, line);
                                        });
        }
        return walk.next();
    };
    for (step result = next(); result != step::end; result = next()) {
        std::optional<read_fault> fault;
        if (result == step::fault) {
            fault = walk.fault();
        } else if (walk.record().kind == hex_record_type::data && bytes_per_word == 0) {
            fault = walk.fault_of_record(fault_code::word_size_zero);
        } else {
            pass.take(walk.record(), walk.address_offset());
        }
        if (fault &&
            (!goes_on(observer, *fault, walk.text()) || fault->code == fault_code::missing_end_record)) {
            return stop_at(*fault, walk);
        }
    }
    return std::nullopt;
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
        // Set the state last: once it is set, a repeated read reports no message.
        if (observer == nullptr) {
            memory.report("Invalid line found in memory file.  Invalid line -- " + stop.line_text +
                          " -- found in file " + memory.file_name);
        }
        memory.error_state = ERROR_STATE_INVALID_LINE;
    }
    return false;
}

bool was_read(hex_memory& memory) {
    memory.invalid_line_number = 0;
    memory.error_occurred = false;
    memory.number_of_words = memory.data_words.size();
    return true;
}

/// Like find_address_space(). If @p fast is not null and has all words, the memory gets them.
std::optional<hex_read_stop> read_records(hex_memory& memory, line_source& source, read_observer* observer,
                                          fast_reading* fast) {
    address_space space;
    hex_record_walk walk(source, memory.address_offset);
    std::optional<hex_read_stop> stop = measure(space, walk, memory.bytes_per_word(), observer, fast);
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
    if (fast != nullptr && fast->words.complete()) {
        memory.data_words = fast->words.finish(space.words());
        memory.address_offset = walk.address_offset();
    } else {
        memory.data_words.resize(space.words(), memory.memory_initialize_value);
    }
    return std::nullopt;
}

/// @param may_read_once allows a single pass if its result is that of two passes. The two differ only if the
/// memory already has words, if there is an observer (which is not allowed then), or if the file changes
/// meanwhile
bool read_hex_lines(hex_memory& memory, line_source& source, read_observer* observer, bool may_read_once) {
    memory.file_not_found = false;
    memory.memory_radix = RADIX_HEX;
    if (!source.is_open()) {
        return cannot_be_read(memory);
    }
    std::optional<fast_reading> fast;
    if (may_read_once && memory.data_words.empty()) {
        fast.emplace(memory);
    }
    std::optional<hex_read_stop> stop = read_records(memory, source, observer, fast ? &*fast : nullptr);
    const bool was_stored = !stop && fast && fast->words.complete();
    if (source.failed() || (!stop && !was_stored && !source.rewind())) {
        return cannot_be_read(memory);
    }
    if (stop) {
        // The text is that of the second pass, which did not run; callers rely on its absence.
        stop->line_text.clear();
        return invalid_line(memory, *stop, observer);
    }
    if (was_stored) {
        return was_read(memory);
    }
    stop = store_hex_records(memory, source, observer);
    if (source.failed()) {
        return cannot_be_read(memory);
    }
    return stop ? invalid_line(memory, *stop, observer) : was_read(memory);
}

} // namespace

std::optional<hex_read_stop> find_address_space(hex_memory& memory, line_source& source,
                                                read_observer* observer) {
    return read_records(memory, source, observer, nullptr);
}

std::optional<hex_read_stop> store_hex_records(hex_memory& memory, line_source& source,
                                               read_observer* observer) {
    using checksums = hex_record_walk::checksums;
    hex_record_walk walk(source, memory.address_offset,
                         observer != nullptr ? checksums::tested : checksums::untested);
    hex_word_storer storer(memory.data_words, memory.word_size);
    for (step result = walk.next(); result != step::end; result = walk.next()) {
        if (result == step::fault && observer == nullptr) {
            storer.flush();
            return stop_at(walk.fault(), walk);
        }
        memory.address_offset = walk.address_offset();
        if (result == step::record && walk.record().kind == hex_record_type::data) {
            const hex_record& record = walk.record();
            const std::uint32_t first = record.word_address + walk.address_offset();
            const std::uint64_t count = storer.store(first, record.data(), record.data_bytes);
            if (observer != nullptr && count != 0) {
                storer.flush();
                observer->words(first, first + count - 1, walk.line());
            }
        }
    }
    storer.flush();
    return std::nullopt;
}

std::uint32_t store_hex_words(hex_memory& memory, std::uint32_t first, std::string_view data,
                              std::uint32_t record_bytes) {
    hex_word_storer storer(memory.data_words, memory.word_size);
    const std::uint32_t count = storer.store(first, data, record_bytes);
    storer.flush();
    return count;
}

bool read_hex_file(hex_memory& memory, const std::string& path) {
    line_source source = line_source::open(path, hex_record_walk::longest_line);
    return read_hex_lines(memory, source, nullptr, true);
}

bool read_hex_lines(hex_memory& memory, line_source& source, read_observer* observer) {
    return read_hex_lines(memory, source, observer, false);
}

} // namespace kvr
