#pragma once

#include "kvrimage/formats/format.h"

namespace kvrimage {

extern const format verilog_format;

} // namespace kvrimage
