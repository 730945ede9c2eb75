#pragma once

#include "kvrimage/formats/format.h"

namespace kvrimage {

extern const format mif_format;

} // namespace kvrimage
