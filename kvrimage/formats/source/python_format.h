#pragma once

#include "kvrimage/formats/format.h"

namespace kvrimage {

extern const format python_format;

} // namespace kvrimage
