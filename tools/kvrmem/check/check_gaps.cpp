#include "tools/kvrmem/check/check_gaps.h"

#include "tools/kvrmem/surroundings/counted.h"

#include <fmt/format.h>

#include <utility>

namespace kvrmem {

namespace {

void warn(fault_list& faults, const char* code, std::string message, const std::string& hint) {
    faults.add({severity::warning, code, 0, 0, 0, std::move(message), hint, std::nullopt});
}

} // namespace

void check_gaps(const word_lines& lines, std::optional<std::uint32_t> depth, const std::string& hint,
                fault_list& faults) {
    if (lines.empty()) {
        std::string message = "the file sets no word";
        if (depth) {
            message = *depth == 1 ? "the only word is never set"
                                  : fmt::format("none of the {} words is set", *depth);
        }
        warn(faults, "no-words", std::move(message), "");
        return;
    }
    const std::uint64_t first = depth ? 0 : lines.lowest();
    const std::uint64_t last = depth ? *depth - 1 : lines.highest();
    const word_lines::gaps gaps = lines.between(first, last);
    if (gaps.words != 0) {
        warn(faults, "gap",
             fmt::format("{} of {} words {} never set, the first at address {}", gaps.words, last - first + 1,
                         is_or_are(gaps.words), gaps.first),
             hint);
    }
}

} // namespace kvrmem
