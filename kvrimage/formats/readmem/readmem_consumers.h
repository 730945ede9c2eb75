#pragma once

#include "kvrimage/formats/format.h"

#include <string_view>
#include <vector>

namespace kvrimage {

// Implement consumer::check for both formats: what these programs reject or read differently, also in broken
// files.

[[nodiscard]] std::vector<diagnostic>
check_readmem_for_icarus(std::string_view contents, const read_options& options, const read_result& ours);
[[nodiscard]] std::vector<diagnostic>
check_readmem_for_verilator(std::string_view contents, const read_options& options, const read_result& ours);
[[nodiscard]] std::vector<diagnostic>
check_readmem_for_yosys(std::string_view contents, const read_options& options, const read_result& ours);

} // namespace kvrimage
