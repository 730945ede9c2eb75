#pragma once

#include "kvrimage/formats/format.h"

namespace kvrimage {

// Lists of words for Verilog's $readmemh and $readmemb.

extern const format readmemh_format;
extern const format readmemb_format;

} // namespace kvrimage
