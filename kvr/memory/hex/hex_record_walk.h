#pragma once

#include "kvr/memory/hex/fast_hex_record.h"
#include "kvr/memory/hex/hex_record.h"
#include "kvr/memory/io/line_source.h"
#include "kvr/memory/read_fault.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace kvr {

/// Iterates over the records of an Intel HEX file in the order of the file, up to the end record. Lines that
/// do not begin with a colon are skipped, and blanks are removed. Faults are returned as values, so the
/// caller decides whether to continue.
///
/// @code
/// kvr::line_source source = kvr::line_source::open(path, kvr::hex_record_walk::longest_line);
/// kvr::hex_record_walk walk(source);
/// for (auto step = walk.next(); step != kvr::hex_record_walk::step::end; step = walk.next()) { … }
/// @endcode
class hex_record_walk {
public:
    /// The line limit of the source, without the LF. A longer record is a fault; any other longer line is
    /// skipped.
    static constexpr std::size_t longest_line = 599;

    enum class step : std::uint8_t {
        record, ///< record() is the next record; the end record is included
        fault,  ///< fault() describes the fault; next() continues after it
        end,    ///< after the end record or at the end of the file
    };
    enum class checksums : std::uint8_t { tested, untested };

    /// @param source must be at its first line and outlive this object
    /// @param address_offset word address to which records are relative before the first extended address
    /// record
    explicit hex_record_walk(line_source& source, std::uint32_t address_offset = 0,
                             checksums test = checksums::tested);

    /// Moves to the next record or fault. A missing end record is the last fault. A file that could not be
    /// read to its end gives no fault at its end: see line_source::failed().
    step next();

    /// Iterates over the following data records as long as they are plain ones; the result is the same as
    /// with next(). @p read_run gets the following whole lines and returns the records that it has consumed
    /// (fast_hex_records::run), if any. Otherwise @p visit gets the next record and its line.
    template <class ReadRun, class Visit>
    void each_plain_data_record(ReadRun read_run, Visit visit);

    /// Returns the record of the last step. Its views are valid until the next step.
    [[nodiscard]] const hex_record& record() const noexcept { return current; }
    /// Returns the fault of the last step.
    [[nodiscard]] const read_fault& fault() const noexcept { return current_fault; }
    /// Returns a fault of @p code that covers the whole record of the last step, for readers that reject the
    /// record.
    [[nodiscard]] read_fault fault_of_record(fault_code code) const noexcept;

    /// Returns the line of the last step without blanks (of a longer line the first 599 characters), or at
    /// the end of the file the last line. Valid until the next step.
    [[nodiscard]] std::string_view text() const noexcept { return line_text; }
    /// Returns the line number of the last step, from 1, which is the number of lines read.
    [[nodiscard]] std::uint64_t line() const noexcept { return line_number; }
    /// Returns the word address to which the record address is relative. Each extended address record
    /// replaces the previous value, even one of the other type: the value is times 16 (segment) or times
    /// 65536 (linear), modulo 2^32.
    [[nodiscard]] std::uint32_t address_offset() const noexcept { return offset; }

private:
    bool read_fast_line();
    void take_line();
    step parse_record_in_line();
    step accept();
    step refuse(const hex_record_fault& fault);
    step finish();
    [[nodiscard]] std::size_t column(std::size_t index) const noexcept;
    [[nodiscard]] read_fault place(const hex_record_fault& fault) const noexcept;

    line_source& source;
    std::uint32_t offset;
    checksums test;
    bool finished = false;
    std::uint64_t line_number = 0;
    std::string_view line_in_file; ///< including blanks
    std::string_view line_text;
    std::string buffer; ///< holds line_text if the line has blanks
    hex_record current;
    read_fault current_fault{};
};

template <class ReadRun, class Visit>
void hex_record_walk::each_plain_data_record(ReadRun read_run, Visit visit) {
    if (finished) {
        return;
    }
    const std::string_view lines = source.whole_lines();
    std::size_t done = 0;
    std::size_t last_size = 0;
    std::uint32_t expected_bytes = 0;
    while (true) {
        const std::string_view rest = lines.substr(done);
        if (const auto run = read_run(rest); run.count != 0) {
            done += run.count * run.line_size;
            last_size = run.line_size;
            line_number += run.count;
            continue;
        }
        // A new object in each iteration stays in registers.
        hex_record record;
        const std::size_t size = parse_fast_hex_record(rest, record, expected_bytes);
        if (size == 0 || record.kind != hex_record_type::data) {
            break;
        }
        visit(record, rest.substr(0, size));
        expected_bytes = record.data_bytes;
        done += size;
        last_size = size;
        ++line_number;
    }
    if (done != 0) {
        static_cast<void>(parse_fast_hex_record(lines.substr(done - last_size), current));
        line_in_file = line_text = lines.substr(done - last_size, 1 + current.text.size());
        source.skip(done);
    }
}

} // namespace kvr
