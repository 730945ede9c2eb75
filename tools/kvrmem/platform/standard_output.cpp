#include "tools/kvrmem/platform/standard_output.h"

#include "kvrimage/files/file_error.h"
#include "tools/kvrmem/platform/progress.h"
#include "tools/kvrmem/platform/terminal.h"
#include "tools/kvrmem/platform/write_all.h"

#include <fmt/format.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <unistd.h>

namespace kvrmem {

void print(std::string_view text) {
    const progress_pause pause;
    if (!write_all(STDOUT_FILENO, text)) {
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
