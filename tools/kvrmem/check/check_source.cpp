#include "tools/kvrmem/check/check_source.h"

#include <algorithm>

namespace kvrmem {

namespace {

/// Lines between two marks: few enough to walk, many enough that a file of empty lines costs little more
/// than its bytes.
constexpr std::uint64_t mark_distance = 64;

} // namespace

check_source check_source::of(const input_file& file) {
    return check_source(file.contents());
}

std::string_view check_source::line(std::uint64_t number) const {
    const std::size_t begin = offset_of(number);
    const std::string_view rest = std::string_view(contents).substr(begin);
    const std::size_t length = rest.find('\n');
    return kvr::without_carriage_return(rest.substr(0, length), length != rest.npos);
}

std::size_t check_source::offset_of(std::uint64_t number) const {
    build_index();
    if (number > count) {
        return contents.size();
    }
    std::size_t offset = marks[(number - 1) / mark_distance];
    for (std::uint64_t skipped = (number - 1) % mark_distance; skipped > 0; --skipped) {
        offset = contents.find('\n', offset) + 1;
    }
    return offset;
}

std::uint64_t check_source::line_count() const {
    build_index();
    return count;
}

std::uint64_t check_source::last_line() const {
    const std::size_t last = contents.find_last_not_of(" \t\r\n");
    const std::size_t end = last == std::string::npos ? 0 : last;
    const auto before = contents.begin() + static_cast<std::ptrdiff_t>(end);
    return static_cast<std::uint64_t>(std::count(contents.begin(), before, '\n')) + 1;
}

std::string check_source::as_last_line(std::string_view line) const {
    std::string added;
    if (!contents.empty() && contents.back() != '\n') {
        added.append(line_end());
    }
    return added.append(line).append(line_end());
}

std::string_view check_source::line_end() const {
    const std::size_t newline = contents.find('\n');
    const bool has_carriage_return =
        newline != std::string::npos && newline > 0 && contents[newline - 1] == '\r';
    return has_carriage_return ? "\r\n" : "\n";
}

void check_source::build_index() const {
    if (count != 0) {
        return;
    }
    for (std::size_t newline = contents.find('\n'), begin = 0;; newline = contents.find('\n', begin)) {
        if (count % mark_distance == 0) {
            marks.push_back(begin);
        }
        ++count;
        if (newline == std::string::npos) {
            return;
        }
        begin = newline + 1;
    }
}

} // namespace kvrmem
