#include "tools/kvrmem/lsp/settings.h"

#include "kvrimage/formats/registry.h"
#include "kvrimage/image/memory_image.h"
#include "tools/kvrmem/command_line/format_names.h"
#include "tools/kvrmem/numbers/human_number.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <functional>
#include <limits>

namespace kvrmem::lsp {

namespace {

constexpr std::uint64_t most_places = 100000;

/// An invalid value of a setting; the message states the valid values.
class setting_fault : public std::exception {
public:
    explicit setting_fault(std::string needed) : text(std::move(needed)) {}
    [[nodiscard]] const char* what() const noexcept override { return text.c_str(); }

private:
    std::string text;
};

/// Parses a number, or a text as on a command line: 64, "0x40".
std::uint64_t number_of(const json& value, std::uint64_t least, std::uint64_t most) {
    std::optional<std::uint64_t> number;
    if (value.is_number_unsigned()) {
        number = value.get<std::uint64_t>();
    } else if (value.is_string()) {
        number = read_human_size(value.get_ref<const std::string&>(), most);
    }
    if (!number || *number < least || *number > most) {
        throw setting_fault(fmt::format("a number from {} to {}", least, most));
    }
    return *number;
}

std::string text_of_setting(const json& value, const char* needed) {
    if (!value.is_string()) {
        throw setting_fault(needed);
    }
    return value.get<std::string>();
}

/// Returns the index of @p value in @p names.
std::size_t index_of(const json& value, const std::array<std::string_view, 2>& names) {
    const auto found =
        value.is_string() ? std::ranges::find(names, value.get_ref<const std::string&>()) : names.end();
    if (found == names.end()) {
        throw setting_fault(fmt::format("{} or {}", names[0], names[1]));
    }
    return static_cast<std::size_t>(found - names.begin());
}

void take_format(file_settings& into, const json& value) {
    into.check.read.as = nullptr;
    if (!value.is_null()) {
        into.check.read.as = kvrimage::format_of_name(text_of_setting(value, "the name of a format"));
        if (into.check.read.as == nullptr) {
            throw setting_fault("a name listed by kvrmem formats");
        }
    }
}

void take_width(file_settings& into, const json& value) {
    into.check.read.width.reset();
    if (!value.is_null()) {
        into.check.read.width = static_cast<std::uint32_t>(number_of(value, 1, kvrimage::widest_word));
    }
}

void take_depth(file_settings& into, const json& value) {
    into.check.read.depth.reset();
    if (!value.is_null()) {
        into.check.read.depth = number_of(value, 1, kvrimage::deepest_memory);
    }
}

void take_unit(file_settings& into, const json& value) {
    into.check.read.unit.reset();
    if (!value.is_null()) {
        into.check.read.unit = index_of(value, {"word", "byte"}) == 0 ? kvrimage::address_unit::word
                                                                      : kvrimage::address_unit::byte;
    }
}

void take_order(file_settings& into, const json& value) {
    into.check.read.order.reset();
    if (!value.is_null()) {
        into.check.read.order = index_of(value, {"little", "big"}) == 0 ? kvrimage::byte_order::little
                                                                        : kvrimage::byte_order::big;
    }
}

void take_base(file_settings& into, const json& value) {
    into.check.read.base.reset();
    if (!value.is_null()) {
        into.check.read.base = number_of(value, 0, std::numeric_limits<std::uint64_t>::max());
    }
}

void take_pad(file_settings& into, const json& value) {
    into.check.read.pad.reset();
    if (!value.is_null()) {
        into.check.read.pad =
            static_cast<std::uint8_t>(number_of(value, 0, std::numeric_limits<std::uint8_t>::max()));
    }
}

void take_consumers(file_settings& into, const json& value) {
    constexpr const char* needed = R"(a list of names, as in ["kvr", "icarus"])";
    std::vector<std::string> names;
    if (value.is_null()) {
        names = kvrimage::check_options().consumers;
    } else if (!value.is_array()) {
        throw setting_fault(needed);
    }
    const std::vector<std::string> known = consumer_choices();
    for (const json& each : value) {
        names.push_back(text_of_setting(each, needed));
        if (std::ranges::find(known, names.back()) == known.end()) {
            throw setting_fault(fmt::format("names of {}", fmt::join(known, ", ")));
        }
    }
    into.check.consumers = std::move(names);
}

void take_radix(file_settings& into, const json& value) {
    into.shown_radix.reset();
    if (!value.is_null()) {
        into.shown_radix = word_radix_of_name(text_of_setting(value, "a radix, as fixed:8.8"));
        if (!into.shown_radix) {
            throw setting_fault("bin, oct, dec, uns, hex, or fixed:I.F with I integer and F fraction bits");
        }
    }
}

void take_most_diagnostics(file_settings& into, const json& value) {
    into.check.read.most_diagnostics =
        value.is_null() ? kvrimage::read_options().most_diagnostics : number_of(value, 1, most_places);
}

/// Parses options of single formats: {"section": ".text"}.
void take_choices(file_settings& into, const json& value) {
    constexpr const char* needed = R"(an object of texts, as in {"value-column": "2"})";
    std::vector<kvrimage::choice> choices;
    if (!value.is_null() && !value.is_object()) {
        throw setting_fault(needed);
    }
    for (const auto& [name, chosen] : value.items()) {
        choices.push_back({name, text_of_setting(chosen, needed)});
    }
    into.check.read.choices = std::move(choices);
}

struct setting_entry {
    std::string_view name;
    void (*take)(file_settings& into, const json& value);
};
constexpr std::array<setting_entry, 11> setting_table = {{
    {"format", take_format},
    {"width", take_width},
    {"depth", take_depth},
    {"address-unit", take_unit},
    {"endian", take_order},
    {"base", take_base},
    {"pad", take_pad},
    {"for", take_consumers},
    {"radix", take_radix},
    {"diagnostics", take_most_diagnostics},
    {"choices", take_choices},
}};

/// @param path of @p given, for messages
void change(file_settings& into, const json& given, const std::string& path,
            std::vector<std::string>& faults) {
    if (!given.is_object()) {
        faults.push_back(fmt::format("{}: expected an object", path));
        return;
    }
    for (const auto& [name, value] : given.items()) {
        const auto entry = std::ranges::find(setting_table, name, &setting_entry::name);
        if (entry == setting_table.end()) {
            if (name != "files") {
                faults.push_back(fmt::format("{}.{}: there is no such setting", path, name));
            }
            continue;
        }
        try {
            file_settings changed = into;
            entry->take(changed, value);
            into = std::move(changed);
        } catch (const setting_fault& fault) {
            faults.push_back(fmt::format("{}.{}: expected {}", path, name, fault.what()));
        }
    }
}

} // namespace

const file_settings& settings::of(std::string_view name) const {
    const auto found = std::ranges::find_if(
        of_files, [name](const auto& each) { return matches_pattern(name, each.first); });
    return found != of_files.end() ? found->second : of_all;
}

bool matches_pattern(std::string_view name, std::string_view pattern) {
    std::size_t at = 0;
    std::size_t after_star = std::string_view::npos; ///< in the pattern
    std::size_t star_ends = 0;                       ///< in the name, as tried so far
    for (std::size_t in_pattern = 0; at < name.size() || in_pattern < pattern.size();) {
        if (in_pattern < pattern.size() && pattern[in_pattern] == '*') {
            after_star = ++in_pattern;
            star_ends = at;
        } else if (at < name.size() && in_pattern < pattern.size() &&
                   (pattern[in_pattern] == '?' || pattern[in_pattern] == name[at])) {
            ++at;
            ++in_pattern;
        } else if (after_star != std::string_view::npos && star_ends < name.size()) {
            at = ++star_ends;
            in_pattern = after_star;
        } else {
            return false;
        }
    }
    return true;
}

settings changed_settings(settings before, const json& given, std::vector<std::string>& faults) {
    change(before.of_all, given, "kvrmem", faults);
    if (given.is_object() && given.contains("files")) {
        before.files = given["files"];
    }
    before.of_files.clear();
    if (!before.files.is_null() && !before.files.is_object()) {
        faults.emplace_back("kvrmem.files: expected an object");
        before.files = nullptr;
    }
    for (const auto& [pattern, value] : before.files.items()) {
        file_settings of_pattern = before.of_all;
        change(of_pattern, value, fmt::format("kvrmem.files.{}", pattern), faults);
        before.of_files.emplace_back(pattern, std::move(of_pattern));
    }
    std::ranges::stable_sort(before.of_files, std::greater<>(),
                             [](const auto& each) { return each.first.size(); });
    return before;
}

} // namespace kvrmem::lsp
