#include "tools/kvrmem/surroundings/message.h"

#include "tools/kvrmem/surroundings/progress.h"
#include "tools/kvrmem/surroundings/visible_text.h"

#include <fmt/format.h>

#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <string>
#include <unistd.h>

namespace kvrmem {

namespace {

std::string for_message(std::string_view text) {
    constexpr std::size_t longest = 2000;
    return make_visible(text.substr(0, longest)).text + (text.size() > longest ? "..." : "");
}

} // namespace

void tell(std::string_view text) {
    tell_as_it_is(for_message(text) + "\n");
}

void tell_failure(std::string_view text, color_choice choice) {
    const painter paint = painter_for(stderr, choice);
    tell_as_it_is(fmt::format("{} {}\n", paint.paint(style::bold_red, "kvrmem:"), for_message(text)));
}

void tell_as_it_is(std::string_view text) {
    const progress_pause pause;
    while (!text.empty()) {
        const ssize_t written = ::write(STDERR_FILENO, text.data(), text.size());
        if (written > 0) {
            text.remove_prefix(static_cast<std::size_t>(written));
        } else if (written == 0 || errno != EINTR) {
            return; // there is nobody to tell that standard error cannot be written to
        }
    }
}

} // namespace kvrmem
