#pragma once

#include "kvrimage/formats/format.h"

namespace kvrimage {

extern const format srec_format;

} // namespace kvrimage
