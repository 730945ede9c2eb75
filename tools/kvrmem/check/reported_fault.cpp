#include "tools/kvrmem/check/reported_fault.h"

#include "kvrimage/diagnostics/diagnostic_text.h"
#include "kvrimage/diagnostics/utf8_character.h"
#include "kvrimage/diagnostics/visible_text.h"
#include "kvrimage/files/file_name.h"
#include "tools/kvrmem/platform/counted.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <utility>

namespace kvrmem {

namespace {

using kvrimage::diagnostic;

reported_fault fault_of(const diagnostic& found) {
    const kvrimage::diagnostic_kind& kind = kvrimage::about(found.id);
    reported_fault fault;
    fault.code = kind.code;
    fault.documentation = kind.documentation;
    fault.example = kind.example;
    fault.level = kvrimage::level_of(found);
    fault.is_error = kind.level != kvrimage::diagnostic_class::suspect;
    fault.is_broken = kind.level == kvrimage::diagnostic_class::broken;
    fault.summary = kvrimage::make_visible(found.message).text;
    fault.message = fault.summary;
    if (found.count > 1) {
        fault.message += fmt::format(" ({} places)", found.count);
    }
    fault.hint = kvrimage::make_visible(found.hint).text;
    fault.found = &found;
    return fault;
}

reported_fault fault_of_words(std::string message) {
    reported_fault fault;
    fault.code = "wrong-bits";
    fault.documentation = "The check bits of a word do not match its data bits.";
    fault.level = "error";
    fault.summary = message;
    fault.message = std::move(message);
    return fault;
}

std::uint64_t count_characters(std::string_view text) {
    std::uint64_t count = 0;
    for (; !text.empty(); ++count) {
        text.remove_prefix(kvrimage::first_character(text).bytes.size());
    }
    return count;
}

} // namespace

std::vector<kvrimage::place> reported_fault::places() const {
    if (found == nullptr) {
        return {kvrimage::place{}};
    }
    std::vector<kvrimage::place> all = {found->where};
    std::ranges::copy(found->more, std::back_inserter(all));
    return all;
}

std::vector<reported_fault> faults_of(const checked_file& file) {
    std::vector<reported_fault> faults;
    std::ranges::transform(file.input.result.diagnostics, std::back_inserter(faults), fault_of);
    if (file.protection) {
        for (std::string& each : wrong_bits_of(*file.protection)) {
            faults.push_back(fault_of_words(std::move(each)));
        }
        if (const std::uint64_t beyond = words_beyond(*file.protection); beyond != 0) {
            faults.push_back(fault_of_words(counted(beyond, "word") + " with wrong bits beyond these"));
        }
    }
    return faults;
}

std::string reported_name(const std::string& path) {
    return kvrimage::title_of_input(path);
}

text_region region_of(std::string_view contents, std::uint64_t offset, std::uint64_t length,
                      std::uint64_t line) {
    const std::uint64_t begin = std::min<std::uint64_t>(offset, contents.size());
    const std::uint64_t end = std::min<std::uint64_t>(length, contents.size() - begin) + begin;
    const auto column_of = [contents](std::uint64_t at) {
        const std::string_view before = contents.substr(0, at);
        return count_characters(before.substr(before.rfind('\n') + 1)) + 1;
    };
    const std::string_view inside = contents.substr(begin, end - begin);
    const auto more_lines = static_cast<std::uint64_t>(std::ranges::count(inside, '\n'));
    return {line, column_of(begin), line + more_lines, column_of(end)};
}

std::uint64_t line_at(std::string_view contents, std::uint64_t offset, const kvrimage::place& known) {
    const std::uint64_t begin = std::min(offset, known.offset);
    const std::uint64_t end = std::max(offset, known.offset);
    const auto lines =
        static_cast<std::uint64_t>(std::ranges::count(contents.substr(begin, end - begin), '\n'));
    return offset < known.offset ? known.line - lines : known.line + lines;
}

} // namespace kvrmem
