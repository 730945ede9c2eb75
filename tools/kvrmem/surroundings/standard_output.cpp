#include "tools/kvrmem/surroundings/standard_output.h"

#include "tools/kvrmem/surroundings/progress.h"
#include "tools/kvrmem/surroundings/terminal.h"
#include "tools/kvrmem/surroundings/tool_error.h"
#include "tools/kvrmem/surroundings/write_all.h"

#include <cstdio>
#include <unistd.h>

namespace kvrmem {

namespace {

[[noreturn]] void fail() {
    throw tool_error(exit_code::input_output, "standard output: cannot be written");
}

} // namespace

void print(std::string_view text) {
    const progress_pause pause;
    if (!write_all(STDOUT_FILENO, text)) {
        fail();
    }
}

// A descriptor of its own, so that closing it leaves the program's standard output open.
output_stream::output_stream() : file(fdopen(dup(STDOUT_FILENO), "wb")) {
    if (is_terminal(stdout)) {
        end_progress();
    }
}

void output_stream::finish() {
    if (!file.close()) {
        fail();
    }
}

} // namespace kvrmem
