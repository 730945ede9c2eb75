#pragma once

#include "kvrimage/formats/format.h"

namespace kvrimage {

extern const format c_format;

} // namespace kvrimage
