#include "tools/kvrmem/command_line/format_names.h"

#include "kvrimage/formats/registry.h"
#include "tools/kvrmem/command_line/command_words.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <span>
#include <utility>

namespace kvrmem {

namespace {

using kvrimage::format;

/// "a, b and c"
std::string listed(std::span<const std::string> names, std::string_view last) {
    if (names.size() < 2) {
        return names.empty() ? "" : names[0];
    }
    return fmt::format("{}{}{}", fmt::join(names.first(names.size() - 1), ", "), last, names.back());
}

/// "hex (or ihex)"
std::string words_of(const format& one) {
    std::vector<std::string_view> others(one.extensions.begin(), one.extensions.end());
    std::erase(others, one.id);
    return others.empty() ? std::string(one.id) : fmt::format("{} (or {})", one.id, fmt::join(others, ", "));
}

} // namespace

std::string format_choices() {
    std::vector<std::string_view> ids;
    for (const format* one : kvrimage::formats()) {
        ids.push_back(one->id);
    }
    return fmt::format("{}", fmt::join(ids, " "));
}

std::string format_words() {
    std::vector<std::string> words;
    for (const format* one : kvrimage::formats()) {
        words.push_back(words_of(*one));
    }
    return listed(words, " or ");
}

std::string format_extensions(const char* last) {
    std::vector<std::string> extensions;
    for (const format* one : kvrimage::formats()) {
        for (const std::string_view extension : one->extensions) {
            if (std::string word = fmt::format(".{}", extension);
                std::ranges::find(extensions, word) == extensions.end()) {
                extensions.push_back(std::move(word));
            }
        }
    }
    return listed(extensions, last);
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

std::string with_format_names(std::string text) {
    text = replaced(std::move(text), "{extensions}", format_extensions(" and "));
    return replaced(std::move(text), "{titles}", format_titles([](const format&) { return true; }));
}

} // namespace kvrmem
