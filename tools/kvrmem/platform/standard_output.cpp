#include "tools/kvrmem/platform/standard_output.h"

#include "kvrimage/files/file_error.h"
#include "kvrimage/files/platform.h"
#include "tools/kvrmem/platform/progress.h"
#include "tools/kvrmem/platform/system.h"
#include "tools/kvrmem/platform/terminal.h"

#include <fmt/format.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace kvrmem {

void print(std::string_view text) {
    const progress_pause pause;
    if (!kvrimage::platform::write_all(kvrimage::platform::standard_output, text)) {
        throw kvrimage::file_error(
            errno, fmt::format("standard output: cannot be written: {}", std::strerror(errno)));
    }
}

output_stream::output_stream() {
    if (is_terminal(stdout)) {
        end_progress();
    }
}

} // namespace kvrmem
