#include "kvr/keywords/keyword_registry.h"

#include "kvr/keywords/added_keywords.h"
#include "kvr/keywords/keyword_index.h"
#include "kvr/keywords/keyword_names.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <string_view>

namespace kvr {
namespace {

constexpr std::size_t first_primitive = plexfunction_names.size();
constexpr std::size_t first_wysiwyg = first_primitive + velkora_primitive_names.size();
constexpr std::size_t fixed_count = first_wysiwyg + wysiwyg_names.size();

/// The concatenated lists, in the order in which a registry adds them.
constexpr std::array<std::string_view, fixed_count> fixed_names = [] {
    std::array<std::string_view, fixed_count> names;
    auto end = std::copy(plexfunction_names.begin(), plexfunction_names.end(), names.begin());
    end = std::copy(velkora_primitive_names.begin(), velkora_primitive_names.end(), end);
    std::copy(wysiwyg_names.begin(), wysiwyg_names.end(), end);
    return names;
}();

constexpr keyword_index fixed_index(fixed_names);

/// Returns whether adding @p spelling to a new registry changes nothing.
bool is_fixed_spelling(std::string_view name, std::string_view spelling) {
    const std::size_t place = fixed_index.find(name);
    return place != fixed_count && fixed_index.last_spelling(place) == spelling;
}

void add(std::unique_ptr<added_keywords>& added, std::string_view spelling) {
    const std::string_view name = spelling.substr(0, spelling.find('\0'));
    if (is_fixed_spelling(name, spelling)) {
        if (added) {
            added->erase(name);
        }
        return;
    }
    if (!added) {
        added = std::make_unique<added_keywords>();
    }
    added->set(spelling);
}

/// Adds @p count fixed names from @p first on.
void add_fixed(std::unique_ptr<added_keywords>& added, std::size_t first, std::size_t count) {
    for (const std::string_view name : std::span(fixed_names).subspan(first, count)) {
        add(added, name);
    }
}

std::unique_ptr<added_keywords> copy_of(const std::unique_ptr<added_keywords>& added) {
    return added ? std::make_unique<added_keywords>(*added) : nullptr;
}

} // namespace

KVR_STRING_MAP keyword_map(const KVR_UTIL_KEYWORD_REGR& registry) {
    KVR_STRING_MAP map;
    for (const std::string_view name : fixed_names) {
        map[std::string(name)] = name;
    }
    if (registry.added) {
        registry.added->copy_to(map);
    }
    return map;
}

} // namespace kvr

KVR_UTIL_KEYWORD_REGR::KVR_UTIL_KEYWORD_REGR() = default;

KVR_UTIL_KEYWORD_REGR::KVR_UTIL_KEYWORD_REGR(const KVR_UTIL_KEYWORD_REGR& other)
    : added(kvr::copy_of(other.added)) {}

KVR_UTIL_KEYWORD_REGR& KVR_UTIL_KEYWORD_REGR::operator=(const KVR_UTIL_KEYWORD_REGR& other) {
    if (this != &other) {
        added = kvr::copy_of(other.added);
    }
    return *this;
}

KVR_UTIL_KEYWORD_REGR::~KVR_UTIL_KEYWORD_REGR() = default;

void KVR_UTIL_KEYWORD_REGR::add_keyword(const std::string& keyword) {
    kvr::add(added, keyword);
}

bool KVR_UTIL_KEYWORD_REGR::is_keyword(const char* name) {
    if (name == nullptr) {
        return false;
    }
    const std::string_view text(name);
    return kvr::fixed_index.find(text) != kvr::fixed_count || (added && added->contains(text));
}

void KVR_UTIL_KEYWORD_REGR::add_plexfunction_names() {
    kvr::add_fixed(added, 0, kvr::first_primitive);
}

void KVR_UTIL_KEYWORD_REGR::add_velkora_primitives() {
    kvr::add_fixed(added, kvr::first_primitive, kvr::first_wysiwyg - kvr::first_primitive);
}

void KVR_UTIL_KEYWORD_REGR::add_wysiwyg_names() {
    kvr::add_fixed(added, kvr::first_wysiwyg, kvr::fixed_count - kvr::first_wysiwyg);
}
