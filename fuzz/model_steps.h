#pragma once

#include "fuzz/expectation.h"
#include "tests/models/choices.h"

#include <stdexcept>
#include <string_view>

namespace kvr_fuzz {

/// Changes a store and its model as @p input says, up to the end of the input. A step takes at least one
/// byte. The limit applies to inputs of thousands of bytes.
template <class Operations>
void run_steps(std::string_view input) {
    constexpr int most_steps = 400;
    kvr_test::input_choices choices(input);
    try {
        Operations operations(choices);
        for (int step = 0; step < most_steps && !choices.are_used_up(); ++step) {
            operations.step();
        }
        operations.compare_all();
    } catch (const std::logic_error& difference) {
        report_finding(difference.what());
    }
}

} // namespace kvr_fuzz
