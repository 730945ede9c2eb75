#pragma once

#include "kvrimage/formats/format.h"

namespace kvrimage {

extern const format titxt_format;

} // namespace kvrimage
