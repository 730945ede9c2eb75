#include "tools/kvrmem/standard_output.h"

#include "tools/kvrmem/tool_error.h"

#include <cstdio>

namespace kvrmem {

void print(std::string_view text) {
    if (std::fwrite(text.data(), 1, text.size(), stdout) != text.size() || std::fflush(stdout) != 0) {
        throw tool_error(exit_code::input_output, "standard output: cannot be written");
    }
}

} // namespace kvrmem
