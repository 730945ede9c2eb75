#include "tools/kvrmem/memory/word_lines.h"

#include "tools/kvrmem/memory/word_runs.h"

#include <algorithm>
#include <charconv>
#include <string>

namespace kvrmem {

namespace {

std::uint64_t number_of(std::string_view text) {
    std::uint64_t line = 0;
    std::from_chars(text.data(), text.data() + text.size(), line);
    return line;
}

} // namespace

std::optional<word_lines::earlier> word_lines::set(std::uint64_t first, std::uint64_t last,
                                                   std::uint64_t line) {
    if (first >= lines.size()) {
        return std::nullopt;
    }
    const auto begin = static_cast<std::uint32_t>(first);
    const auto end = static_cast<std::uint32_t>(std::min<std::uint64_t>(last, lines.size() - 1));
    lowest_set = nothing_set ? begin : std::min<std::uint64_t>(lowest_set, begin);
    highest_set = std::max<std::uint64_t>(highest_set, end);
    nothing_set = false;
    auto found = find_set(begin, end);
    const std::string text = std::to_string(line);
    if (begin != end) {
        lines.fill(begin, end, {text});
    } else if (!found) {
        lines.set(begin, text);
    }
    return found;
}

std::uint64_t word_lines::line_of(std::uint64_t address) const {
    return address < lines.size() ? number_of(lines[static_cast<std::uint32_t>(address)]) : 0;
}

/// Whatever is found is overwritten then, so no run is looked at often.
std::optional<word_lines::earlier> word_lines::find_set(std::uint32_t first, std::uint32_t last) const {
    if (first == last) {
        const std::uint64_t line = number_of(lines[first]);
        return line != 0 ? std::optional(earlier{first, line}) : std::nullopt;
    }
    for (std::uint64_t address = first; address <= last;) {
        const kvr::word_run run = lines.run_at(static_cast<std::uint32_t>(address));
        if (!run.text.empty()) {
            return earlier{address, number_of(run.text)};
        }
        address = std::uint64_t{run.last} + 1;
    }
    return std::nullopt;
}

word_lines::gaps word_lines::between(std::uint64_t first, std::uint64_t last) const {
    gaps found;
    for_each_run(lines, first, last, [&found](const kvr::word_run& run) {
        if (run.text.empty()) {
            found.first = found.words == 0 ? run.first : found.first;
            found.words += length_of(run);
        }
    });
    return found;
}

} // namespace kvrmem
