#pragma once

#include "tests/models/choices.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace kvr_test {

/// An operation of a test against a model.
template <class Run>
struct table_operation {
    std::string_view name;
    Run run;             ///< a member function
    std::uint32_t share; ///< its weight among the operations
};

/// One of @p operations, which must not be empty, chosen by weight.
template <class Operations>
const auto& choose_operation(const Operations& operations, choices& chosen) {
    std::uint32_t shares = 0;
    for (const auto& each : operations) {
        shares += each.share;
    }
    std::uint32_t number = chosen.below(shares);
    const auto* next = operations.data();
    while (number >= next->share) {
        number -= next->share;
        ++next;
    }
    return *next;
}

} // namespace kvr_test
