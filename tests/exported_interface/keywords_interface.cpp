#include "declaration.h"
#include "interfaces.h"
#include "kvr/kvr.h"

#include <string>
#include <type_traits>
#include <utility>

void keywords_interface() {
    using registry = KVR_UTIL_KEYWORD_REGR;

    static_assert(std::is_default_constructible_v<registry>);
    static_assert(std::is_copy_constructible_v<registry>);
    static_assert(
        std::is_same_v<decltype(std::declval<registry&>() = std::declval<const registry&>()), registry&>);
    const registry first;
    registry second(first);
    second = first;

    declared<void (registry::*)(const std::string&)>(&registry::add_keyword);
    declared<bool (registry::*)(const char*)>(&registry::is_keyword);
    declared<void (registry::*)()>(&registry::add_plexfunction_names);
    declared<void (registry::*)()>(&registry::add_velkora_primitives);
    declared<void (registry::*)()>(&registry::add_wysiwyg_names);
}
