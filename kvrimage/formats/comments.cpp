#include "kvrimage/formats/comments.h"

#include "kvrimage/formats/registry.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <unordered_map>

namespace kvrimage {

namespace {

/// Returns the format suggested by contents and name, or null. Contents cannot identify a write-only format,
/// so its name decides.
const format* likely_format(std::string_view contents, std::string_view path) {
    const format* const named = format_of_path(path);
    if (named != nullptr && named->read == nullptr) {
        return named;
    }
    const std::vector<sniffed> found = sniff(contents, path);
    const bool is_likely = !found.empty() && found.front().how_sure >= certainty::likely;
    return is_likely ? found.front().as : named;
}

std::uint64_t line_of(std::string_view contents, const span& where) {
    const auto end = contents.begin() + static_cast<std::ptrdiff_t>(where.offset);
    return static_cast<std::uint64_t>(std::count(contents.begin(), end, '\n')) + 1;
}

} // namespace

void for_each_comment(std::string_view contents, std::string_view path,
                      const std::function<void(const span&)>& take) {
    if (const format* const likely = likely_format(contents, path)) {
        if (likely->find_comments != nullptr) {
            likely->find_comments(contents, take);
        }
        return;
    }
    bool is_found = false;
    for (const format* one : formats()) {
        if (one->find_comments != nullptr && !is_found) {
            one->find_comments(contents, [&](const span& where) {
                is_found = true;
                take(where);
            });
        }
    }
}

missing_comments find_missing_comments(std::string_view old_contents, std::string_view new_contents,
                                       std::string_view path) {
    std::unordered_map<std::string_view, std::uint64_t> kept;
    for_each_comment(new_contents, path, [&](const span& where) { ++kept[where.in(new_contents)]; });
    missing_comments missing;
    for_each_comment(old_contents, path, [&](const span& where) {
        const auto found = kept.find(where.in(old_contents));
        if (found != kept.end() && found->second != 0) {
            --found->second;
        } else if (++missing.count == 1) {
            missing.first_line = line_of(old_contents, where);
        }
    });
    return missing;
}

} // namespace kvrimage
