#include "fuzz/tool_targets.h"

#include "fuzz/target.h"

#include <array>

namespace kvr_fuzz {

namespace {

// If an input reaches thousands of features, weighing them takes longer than running it: such targets have no
// entropic scheduling.
constexpr std::array targets = {
    // Standard output and standard error of the tool are discarded.
    target{"arguments", try_arguments, "-max_len=300 -entropic=0 -close_fd_mask=3"},
    target{"assignments", try_assignments, "-max_len=300"},
    target{"check", try_check, "-max_len=1024 -entropic=0"},
    target{"edit", try_edit, "-max_len=1024 -entropic=0"},
    target{"edit_pieces", try_edit_pieces, "-max_len=2000 -entropic=0"},
    target{"language_server", try_language_server, "-max_len=2048 -entropic=0"},
    target{"layout", try_layout, "-max_len=1024 -entropic=0"},
    target{"memory_image", try_memory_image, "-max_len=2000 -entropic=0"},
    target{"merge", try_merge, "-max_len=1000 -entropic=0"},
    target{"message_splitter", try_message_splitter, "-max_len=1000"},
    target{"picture", try_picture, "-max_len=2048"},
    target{"protection", try_protection, "-max_len=1000 -entropic=0"},
    target{"quoted_text", try_quoted_text, "-max_len=120"},
    target{"replacement_file", try_replacement_file, "-max_len=1000"},
    target{"reshape", try_reshape, "-max_len=1000 -entropic=0"},
    target{"sound", try_sound, "-max_len=600"},
    target{"split", try_split, "-max_len=1000 -entropic=0"},
    target{"text_buffer", try_text_buffer, "-max_len=1000"},
};

} // namespace

std::span<const target> all_targets() noexcept {
    return targets;
}

} // namespace kvr_fuzz
