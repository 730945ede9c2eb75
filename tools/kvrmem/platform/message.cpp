#include "tools/kvrmem/platform/message.h"

#include "kvrimage/diagnostics/visible_text.h"
#include "kvrimage/files/platform.h"
#include "tools/kvrmem/platform/progress.h"
#include "tools/kvrmem/platform/system.h"

#include <fmt/format.h>

#include <cstdio>
#include <string>

namespace kvrmem {

namespace {

std::string for_message(std::string_view text) {
    constexpr std::size_t longest = 2000;
    return kvrimage::make_visible(text.substr(0, longest)).text.append(text.size() > longest ? "..." : "");
}

} // namespace

void print_message(std::string_view text) {
    print_message_as_it_is(for_message(text) + "\n");
}

void print_failure(std::string_view text, color_choice choice) {
    const painter paint = painter_for(stderr, choice);
    print_message_as_it_is(
        fmt::format("{} {}\n", paint.paint(style::bold_red, "kvrmem:"), for_message(text)));
}

void print_message_as_it_is(std::string_view text) {
    const progress_pause pause;
    // A failure to write to standard error cannot be reported.
    static_cast<void>(kvrimage::platform::write_all(kvrimage::platform::standard_error, text));
}

} // namespace kvrmem
