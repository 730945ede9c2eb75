#include "kvrimage/formats/mif/mif_kvr.h"

#include "kvr/memory/io/line_source.h"
#include "kvr/memory/mif/mif_header.h"
#include "kvr/memory/mif/mif_reader.h"
#include "kvrimage/formats/kvr_reading.h"
#include "kvrimage/formats/mif/mif_format.h"
#include "kvrimage/image/word_text.h"

#include <algorithm>
#include <array>
#include <optional>

namespace kvrimage {

namespace {

/// Why the library rejects a MIF, in the order of kvr::fault_code.
constexpr std::array<std::string_view, 12> kvr_reasons = {
    "the line is longer than 511 characters",
    "it finds no width in the line",
    "it finds no depth in the line",
    "it finds no address radix in the line",
    "it finds no data radix in the line",
    "it finds no address followed by ':' and a value",
    "it finds no range",
    "the range is not ascending",
    "it finds an address that is not below the depth",
    "it finds an address that is set twice",
    "it finds END before BEGIN",
    "it finds no END",
};

/// Keeps the first fault.
class first_mif_fault : public kvr::mif_observer {
public:
    bool fault(const kvr::read_fault& found, std::string_view /*text*/) override {
        first = found;
        return false;
    }
    void words(std::uint64_t /*first*/, std::uint64_t /*last*/, std::uint64_t /*line*/) override {}
    [[nodiscard]] bool wants_every_line() const override { return false; }
    void content_line(const kvr::mif_content& /*content*/) override {}
    void cut_at_percent(std::string_view /*rest*/, std::uint64_t /*line*/) override {}

    std::optional<kvr::read_fault> first;
};

/// Returns the place of a fault of the library; empty for a fault without a column.
span place_in_mif(const kvr::read_fault& reported, std::string_view contents) {
    if (reported.column == 0) {
        return {};
    }
    std::size_t begin = 0;
    for (std::uint64_t line = 1; line < reported.line; ++line) {
        begin = contents.find('\n', begin) + 1;
    }
    const std::size_t offset = std::min(begin + reported.column - 1, contents.size());
    const std::size_t line_end = std::min(contents.find('\n', offset), contents.size());
    return {offset, std::min<std::uint64_t>(reported.length, line_end - offset)};
}

radix radix_of(KVR_MEMORY_RADIXES library, radix otherwise) {
    for (const radix each : {radix::bin, radix::oct, radix::dec, radix::uns, radix::hex}) {
        if (kvr_radix(each) == library) {
            return each;
        }
    }
    return otherwise;
}

kvr_reading read_with_library(std::string_view contents) {
    kvr::mif_memory memory(nullptr);
    kvr::fill_radix_names(memory);
    memory.memory_initialize_value.clear();
    kvr::line_source lines(contents, kvr::mif_reader::source_limit);
    first_mif_fault observer;
    kvr_reading theirs;
    theirs.refused = !kvr::mif_reader(memory, &observer).read(lines);
    if (observer.first) {
        theirs.where = place_in_mif(*observer.first, contents);
        theirs.reason = kvr_reasons[static_cast<std::size_t>(observer.first->code)];
    }
    theirs.words = std::move(memory.data_words);
    theirs.texts_radix = radix_of(memory.memory_radix, radix::hex);
    return theirs;
}

} // namespace

std::vector<diagnostic> check_mif_with_kvr(std::string_view contents, const read_options& options,
                                           const read_result& ours) {
    return compare_with_kvr(mif_format, contents, options, ours, read_with_library(contents));
}

} // namespace kvrimage
