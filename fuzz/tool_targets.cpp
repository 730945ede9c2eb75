#include "fuzz/tool_targets.h"

#include "fuzz/target.h"

#include <array>

namespace kvr_fuzz {

namespace {

// Where an input reaches thousands of features, it takes longer to weigh them than to run it: no entropic
// scheduling there.
constexpr std::array targets = {
    target{"check", try_check, "-max_len=1024 -entropic=0"},
    // What the tool says goes nowhere.
    target{"arguments", try_arguments, "-max_len=300 -entropic=0 -close_fd_mask=3"},
};

} // namespace

std::span<const target> all_targets() noexcept {
    return targets;
}

} // namespace kvr_fuzz
