#pragma once

#include "kvrimage/formats/format.h"

namespace kvrimage {

extern const format vhdl_format;

} // namespace kvrimage
