#pragma once

#include "kvrimage/formats/format.h"

namespace kvrimage {

// Word lists for Verilog's $readmemh and $readmemb.

extern const format readmemh_format;
extern const format readmemb_format;

} // namespace kvrimage
