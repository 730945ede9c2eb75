#include "fuzz/tool_targets.h"

#include "fuzz/target.h"

#include <array>

namespace kvr_fuzz {

namespace {

// Where an input reaches thousands of features, weighing them takes longer than running it: no entropic
// scheduling there.
constexpr std::array targets = {
    target{"check", try_check, "-max_len=1024 -entropic=0"},
    // The output of the tool is discarded.
    target{"arguments", try_arguments, "-max_len=300 -entropic=0 -close_fd_mask=3"},
    target{"language_server", try_language_server, "-max_len=2048 -entropic=0"},
};

} // namespace

std::span<const target> all_targets() noexcept {
    return targets;
}

} // namespace kvr_fuzz
