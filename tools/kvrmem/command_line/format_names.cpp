#include "tools/kvrmem/command_line/format_names.h"

#include "kvrimage/formats/registry.h"
#include "tools/kvrmem/command_line/command_words.h"
#include "tools/kvrmem/numbers/checksum_name.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <span>
#include <utility>

namespace kvrmem {

namespace {

using kvrimage::format;

/// Returns "a, b and c".
std::string listed(std::span<const std::string> names, std::string_view last) {
    if (names.size() < 2) {
        return names.empty() ? "" : names[0];
    }
    return fmt::format("{}{}{}", fmt::join(names.first(names.size() - 1), ", "), last, names.back());
}

std::vector<std::string_view> ids_of_those(bool (*are_meant)(const format&)) {
    std::vector<std::string_view> ids;
    for (const format* one : kvrimage::formats()) {
        if (are_meant(*one)) {
            ids.push_back(one->id);
        }
    }
    return ids;
}

} // namespace

std::vector<std::string_view> format_ids() {
    return ids_of_those([](const format&) { return true; });
}

std::string readable_formats() {
    return fmt::format("{}",
                       fmt::join(ids_of_those([](const format& one) { return one.read != nullptr; }), " "));
}

std::string writable_formats() {
    return fmt::format("{}",
                       fmt::join(ids_of_those([](const format& one) { return one.write != nullptr; }), " "));
}

std::string format_titles(bool (*holds)(const format&)) {
    std::vector<std::string> titles;
    for (const format* one : kvrimage::formats()) {
        if (holds(*one)) {
            titles.emplace_back(one->title);
        }
    }
    return listed(titles, " and ");
}

std::vector<std::string> consumer_choices() {
    std::vector<std::string> names;
    for (const format* one : kvrimage::formats()) {
        for (const kvrimage::consumer& reader : one->consumers) {
            names.emplace_back(reader.name);
        }
    }
    std::ranges::sort(names);
    names.erase(std::unique(names.begin(), names.end()), names.end());
    names.emplace_back("none");
    return names;
}

std::string with_names(std::string text) {
    constexpr std::size_t most_columns = 78; // a "." may follow
    const std::string titles = format_titles([](const format&) { return true; });
    text = replaced(std::move(text), "{titles}", wrapped(titles, most_columns));
    return replaced(std::move(text), "{checksums}", wrapped(checksum_choices(), most_columns));
}

} // namespace kvrmem
