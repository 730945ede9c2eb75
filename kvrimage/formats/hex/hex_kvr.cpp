#include "kvrimage/formats/hex/hex_kvr.h"

#include "kvr/memory/hex/hex_memory.h"
#include "kvr/memory/hex/hex_reader.h"
#include "kvr/memory/hex/hex_record_walk.h"
#include "kvr/memory/io/line_source.h"
#include "kvrimage/formats/hex/hex_format.h"
#include "kvrimage/formats/kvr_reading.h"

#include <fmt/format.h>

#include <utility>

namespace kvrimage {

namespace {

/// Returns the bytes of @p contents that @p fault refers to.
span place_in_records(const kvr::read_fault& fault, std::string_view contents) {
    std::size_t begin = 0;
    for (std::uint64_t line = 1; line < fault.line; ++line) {
        begin = contents.find('\n', begin) + 1;
    }
    return {begin + fault.column - 1, fault.length};
}

std::string reason_of(const kvr::read_fault& fault) {
    return fault.code == kvr::fault_code::no_data ? "it has no data"
                                                  : fmt::format("line {} is not a record", fault.line);
}

} // namespace

std::vector<diagnostic> check_hex_for_kvr(std::string_view contents, const read_options& options,
                                          const read_result& ours) {
    if (!ours.image) {
        return {};
    }
    kvr::hex_memory memory(nullptr);
    memory.word_size = ours.image->width();
    kvr::line_source lines(contents, kvr::hex_record_walk::longest_line);
    kvr_reading theirs;
    if (const auto stop = kvr::find_address_space(memory, lines)) {
        theirs.refused = true;
        theirs.where = place_in_records(stop->fault, contents);
        theirs.reason = reason_of(stop->fault);
    } else {
        static_cast<void>(lines.rewind());
        static_cast<void>(
            kvr::store_hex_records(memory, lines)); // the first pass has already found every fault
        theirs.words = std::move(memory.data_words);
    }
    return compare_with_kvr(hex_format, contents, options, ours, std::move(theirs));
}

} // namespace kvrimage
