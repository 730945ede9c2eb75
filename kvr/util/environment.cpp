#include "kvr/util/environment.h"

#include "kvr/util/letter_case.h"
#include "kvr/util/platform.h"

#include <algorithm>
#include <cstdlib>
#include <string_view>

std::string kvr_get_env_var_value(const char* name) {
    const char* const value = name != nullptr ? std::getenv(name) : nullptr;
    return value != nullptr ? value : "";
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): the interface takes both by value
bool kvr_env_var_has_value(std::string list, std::string wanted) {
    std::string_view rest = list;
    std::string_view element = rest;
    while (!element.empty()) {
        element = rest.substr(0, rest.find(';'));
        rest.remove_prefix(std::min(element.size() + 1, rest.size()));
        if (kvr::equal_ignoring_case(element, wanted)) {
            return true;
        }
    }
    return false;
}

int kvr_get_process_id() {
    return kvr::platform::process_id();
}
