#include "kvrimage/formats/choices.h"

#include "kvrimage/diagnostics/diagnose.h"
#include "kvrimage/formats/registry.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace kvrimage {

namespace {

const choice_kind* find_kind(std::string_view name, std::span<const choice_kind> kinds) {
    const auto found = std::ranges::find(kinds, name, &choice_kind::name);
    return found != kinds.end() ? &*found : nullptr;
}

/// Returns the titles of the formats that offer @p name: "ELF, CSV".
std::string formats_with(std::string_view name, std::span<const choice_kind> format::*kinds) {
    std::string listed_titles;
    for (const format* each : formats()) {
        if (find_kind(name, each->*kinds) != nullptr) {
            listed_titles += listed_titles.empty() ? "" : ", ";
            listed_titles += each->title;
        }
    }
    return listed_titles;
}

bool is_among(std::string_view value, std::string_view values) {
    while (!values.empty()) {
        const std::size_t end = std::min(values.find(' '), values.size());
        if (values.substr(0, end) == value) {
            return true;
        }
        values.remove_prefix(std::min(end + 1, values.size()));
    }
    return false;
}

} // namespace

std::optional<diagnostic> improper_choice(std::span<const choice> given, const format& as,
                                          std::span<const choice_kind> format::*kinds) {
    for (const choice& each : given) {
        const choice_kind* const kind = find_kind(each.name, as.*kinds);
        if (kind == nullptr) {
            return diagnose::choice_without_effect({}, each.name, as.title, formats_with(each.name, kinds));
        }
        if (!kind->values.empty() && !is_among(each.value, kind->values)) {
            return diagnose::choice_value({}, each.name, each.value, kind->values);
        }
    }
    return std::nullopt;
}

} // namespace kvrimage
