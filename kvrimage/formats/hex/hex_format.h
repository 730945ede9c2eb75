#pragma once

#include "kvrimage/formats/format.h"

namespace kvrimage {

extern const format hex_format;

} // namespace kvrimage
