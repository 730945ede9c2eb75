#include "tools/kvrmem/hex_input.h"

#include "kvr/memory/hex_record_walk.h"
#include "tools/kvrmem/tool_error.h"
#include "tools/kvrmem/word_text.h"

#include <fmt/format.h>

#include <limits>
#include <string>
#include <string_view>

namespace kvrmem {

namespace {

constexpr std::uint32_t bits_per_byte = 8;

using step = kvr::hex_record_walk::step;

[[noreturn]] void fail_at(const input_file& file, std::uint64_t line, std::uint32_t column,
                          const std::string& what) {
    const std::string place = column != 0 ? fmt::format("{}:{}", line, column) : fmt::format("{}", line);
    throw tool_error(exit_code::bad_input, fmt::format("{}:{}: error: {}", file.name(), place, what));
}

/// "checksum is E9, the record adds up to E8"
std::string describe_checksum(std::string_view record) {
    const std::string_view fields = record.substr(1, record.size() - 3);
    return fmt::format("checksum is {}, the record adds up to {:02X}", record.substr(record.size() - 2),
                       (0U - kvr::sum_of_bytes(fields)) & 0xFFU);
}

/// @p record: the line without blanks, from the colon on.
std::string describe_length(std::string_view record) {
    return fmt::format("the record length {} does not fit the {} digits behind the record type",
                       record.substr(1, 2), record.size() - 9);
}

std::string describe_fault(const kvr::read_fault& fault, std::string_view record) {
    switch (fault.code) {
    case kvr::fault_code::record_too_short:
        return "the record ends before its fields are complete";
    case kvr::fault_code::record_length:
        return describe_length(record);
    case kvr::fault_code::checksum:
        return describe_checksum(record);
    case kvr::fault_code::record_type:
        return fmt::format("record type {} is none of 00 to 05", record.substr(7, 2));
    case kvr::fault_code::record_too_long:
        return fmt::format("the record is longer than {} characters", kvr::hex_record_walk::longest_line);
    case kvr::fault_code::missing_end_record:
        return "the file ends without an end record (:00000001FF)";
    default:
        return "the record cannot be understood";
    }
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
            fail_at(file, walk.fault().line, walk.fault().column, describe_fault(walk.fault(), walk.text()));
        }
        if (walk.record().kind == kvr::hex_record_type::data) {
            take(walk.record(), walk);
        }
    }
    file.require_whole(lines);
}

std::uint64_t address_of(const kvr::hex_record& record, const kvr::hex_record_walk& walk) {
    return std::uint64_t{walk.address_offset()} + record.word_address;
}

/// Finds how many bytes a word has where one record goes on at the address that the one before it ends at.
class width_finder {
public:
    void take(std::uint64_t address, std::uint32_t bytes) {
        if (address > previous_address && previous_bytes > 0) {
            const std::uint64_t words = address - previous_address;
            if (words <= previous_bytes) {
                see(previous_bytes % words == 0 ? static_cast<std::uint32_t>(previous_bytes / words) : 0);
            }
        }
        previous_address = address;
        previous_bytes = bytes;
    }
    /// Bytes a word; 0 when the records do not tell, or tell different things.
    [[nodiscard]] std::uint32_t bytes() const { return found && consistent ? found_bytes : 0; }

private:
    void see(std::uint32_t bytes) {
        consistent = bytes != 0 && (!found || found_bytes == bytes);
        found_bytes = bytes;
        found = true;
    }

    std::uint64_t previous_address = std::numeric_limits<std::uint64_t>::max();
    std::uint32_t previous_bytes = 0;
    std::uint32_t found_bytes = 0;
    bool found = false;
    bool consistent = true;
};

/// The width that the records tell.
/// @throws tool_error when they do not.
std::uint32_t width_from_records(const input_file& file) {
    width_finder finder;
    for_each_data_record(file, [&finder](const kvr::hex_record& record, const kvr::hex_record_walk& walk) {
        finder.take(address_of(record, walk), record.data_bytes);
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
          bytes((to.width + bits_per_byte - 1) / bits_per_byte) {}

    void take(const kvr::hex_record& record, const kvr::hex_record_walk& walk) {
        if (record.data_bytes % bytes != 0) {
            fail_at(file, walk.line(), 0,
                    fmt::format("the record holds {} bytes, which is no whole number of words of {} bytes",
                                record.data_bytes, bytes));
        }
        std::uint64_t address = address_of(record, walk);
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
    const std::uint32_t bytes = (width + bits_per_byte - 1) / bits_per_byte;
    std::uint64_t line = 0;
    for_each_data_record(file, [&](const kvr::hex_record& record, const kvr::hex_record_walk& walk) {
        const std::uint64_t first = address_of(record, walk);
        if (first <= address && address < first + record.data_bytes / bytes) {
            line = walk.line();
        }
    });
    return line;
}

} // namespace kvrmem
