#include "kvrimage/formats/rif/rif_kvr_reading.h"

#include "kvr/memory/rif/rif_reader.h"
#include "kvrimage/formats/kvr_reading.h"
#include "kvrimage/formats/rif/rif_format.h"

#include <fmt/format.h>

#include <algorithm>
#include <limits>
#include <string>
#include <utility>

namespace kvrimage {

namespace {

/// Records where the library stops.
class refusal_finder final : public kvr::read_observer {
public:
    explicit refusal_finder(std::string_view contents) : text(contents) {}

    bool fault(const kvr::read_fault& found, std::string_view /*line*/) override {
        std::size_t begin = 0;
        for (std::uint64_t line = 1; line < found.line; ++line) {
            begin = text.find('\n', begin) + 1;
        }
        where = {begin + found.column - 1, found.length};
        return false;
    }
    void words(std::uint64_t /*first*/, std::uint64_t /*last*/, std::uint64_t /*line*/) override {}

    span where;

private:
    std::string_view text;
};

/// The library is slow with an observer, so the observer is used only if there is a fault.
span find_refusal(std::string_view contents) {
    kvr::rif_memory nowhere(nullptr);
    refusal_finder finder(contents);
    kvr::line_source source(contents);
    kvr::rif_reader(nowhere, &finder).read(source);
    return finder.where;
}

} // namespace

std::vector<diagnostic> check_rif_for_kvr(std::string_view contents, const read_options& options,
                                          const read_result& ours) {
    if (!ours.image) {
        return {};
    }
    constexpr std::uint64_t most_words = std::numeric_limits<std::uint32_t>::max();
    kvr::rif_memory memory(nullptr);
    const std::uint64_t depth = options.base.value_or(0) + ours.image->depth();
    memory.data_words.resize(static_cast<std::uint32_t>(std::min(depth, most_words)), "");
    kvr::line_source source(contents);
    kvr::rif_reader(memory).read(source);
    kvr_reading theirs;
    theirs.words = std::move(memory.data_words);
    theirs.refused = memory.error_state != ERROR_STATE_NONE;
    if (theirs.refused) {
        theirs.where = find_refusal(contents);
        theirs.reason = fmt::format("'{}' is not valid in a RIF file", theirs.where.in(contents));
    }
    return compare_with_kvr(rif_format, contents, options, ours, std::move(theirs));
}

} // namespace kvrimage
