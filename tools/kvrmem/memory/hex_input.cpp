#include "tools/kvrmem/memory/hex_input.h"

#include "tools/kvrmem/memory/fault_text.h"
#include "tools/kvrmem/memory/hex_fault_place.h"
#include "tools/kvrmem/memory/hex_width.h"
#include "tools/kvrmem/memory/hex_words.h"
#include "tools/kvrmem/memory/word_text.h"
#include "tools/kvrmem/surroundings/counted.h"
#include "tools/kvrmem/surroundings/tool_error.h"

#include <fmt/format.h>

#include <limits>
#include <string>
#include <string_view>

namespace kvrmem {

namespace {

using step = kvr::hex_record_walk::step;

[[noreturn]] void fail_at(const input_file& file, std::uint64_t line, std::uint32_t column,
                          const std::string& what) {
    const std::string place = column != 0 ? fmt::format("{}:{}", line, column) : fmt::format("{}", line);
    throw tool_error(exit_code::bad_input, fmt::format("{}:{}: error: {}", file.name(), place, what));
}

/// The line numbered @p number of @p file, as it stands there.
std::string line_of(const input_file& file, std::uint64_t number) {
    kvr::line_source lines = file.lines(kvr::hex_record_walk::longest_line);
    for (std::uint64_t before = 1; before < number && !lines.at_end(); ++before) {
        lines.next_line();
    }
    return lines.at_end() ? std::string() : std::string(lines.next_line());
}

/// @throws tool_error for the fault that @p walk has met.
[[noreturn]] void fail_at_fault(const input_file& file, const kvr::hex_record_walk& walk) {
    const kvr::read_fault fault =
        exact_hex_fault(walk.fault(), walk.text(), line_of(file, walk.fault().line));
    fail_at(file, fault.line, fault.column, describe_hex_fault(fault, walk.text()).message);
}

/// Calls @p take with every data record of @p file, and with the walk that found it.
/// @throws tool_error at the first fault.
template <class Take>
void for_each_data_record(const input_file& file, Take&& take) {
    kvr::line_source lines = file.lines(kvr::hex_record_walk::longest_line);
    kvr::hex_record_walk walk(lines);
    for (step found = walk.next(); found != step::end; found = walk.next()) {
        if (found == step::fault) {
            file.require_whole(lines);
            fail_at_fault(file, walk);
        }
        if (walk.record().kind == kvr::hex_record_type::data) {
            take(walk.record(), walk);
        }
    }
    file.require_whole(lines);
}

/// The width that the records tell.
/// @throws tool_error when they do not.
std::uint32_t width_from_records(const input_file& file) {
    width_finder finder;
    for_each_data_record(file, [&finder](const kvr::hex_record& record, const kvr::hex_record_walk& walk) {
        finder.take(address_of_record(walk), record.data_bytes);
    });
    if (finder.bytes() == 0) {
        throw tool_error(exit_code::wrong_usage,
                         file.name() + ": the records do not tell how wide a word is; give --width BITS");
    }
    return finder.bytes() * bits_per_byte;
}

class record_reader {
public:
    record_reader(const input_file& from, memory_image& to)
        : file(from),
          image(to),
          bytes(bytes_for(to.width)) {}

    void take(const kvr::hex_record& record, const kvr::hex_record_walk& walk) {
        if (record.data_bytes % bytes != 0) {
            fail_at(file, walk.line(), 0,
                    fmt::format("the record holds {}, which is no whole number of words of {} bytes",
                                counted(record.data_bytes, "byte"), bytes));
        }
        std::uint64_t address = address_of_record(walk);
        for (std::string_view data = record.data(); !data.empty();
             data.remove_prefix(2 * std::size_t{bytes})) {
            store(address, data.substr(0, 2 * std::size_t{bytes}), walk.line());
            ++address;
        }
    }

private:
    void store(std::uint64_t address, std::string_view digits, std::uint64_t line) {
        if (address >= image.words.size()) {
            fail_at(file, line, 0,
                    fmt::format("address {} is beyond the addresses 0 to {} of the memory", address,
                                image.words.size() - 1));
        }
        const auto error = make_word(digits, RADIX_HEX, image.width, word);
        if (error) {
            fail_at(file, line, 0, describe(*error, digits, RADIX_HEX, image.width));
        }
        image.words.set(static_cast<std::uint32_t>(address), word);
    }

    const input_file& file;
    memory_image& image;
    std::uint32_t bytes;
    std::string word;
};

} // namespace

memory_image read_hex(const input_file& file, const input_options& options) {
    memory_image image;
    image.format = FILE_TYPE_HEX;
    image.width = options.width ? *options.width : width_from_records(file);
    image.note = options.width ? "" : "taken from the records";
    image.words.resize(options.depth.value_or(std::numeric_limits<std::uint32_t>::max()), "");
    record_reader reader(file, image);
    for_each_data_record(file, [&reader](const kvr::hex_record& record, const kvr::hex_record_walk& walk) {
        reader.take(record, walk);
    });
    return image;
}

std::uint64_t hex_line_that_sets(const input_file& file, const input_options& options,
                                 std::uint32_t address) {
    const std::uint32_t width = options.width ? *options.width : width_from_records(file);
    const std::uint32_t bytes = bytes_for(width);
    std::uint64_t line = 0;
    for_each_data_record(file, [&](const kvr::hex_record& record, const kvr::hex_record_walk& walk) {
        const std::uint64_t first = address_of_record(walk);
        if (first <= address && address < first + record.data_bytes / bytes) {
            line = walk.line();
        }
    });
    return line;
}

} // namespace kvrmem
