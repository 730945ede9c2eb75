#pragma once

#include "kvrimage/formats/format.h"

namespace kvrimage {

extern const format logisim_format;

} // namespace kvrimage
