#pragma once

#include "kvrimage/formats/format.h"

namespace kvrimage {

extern const format coe_format;

} // namespace kvrimage
