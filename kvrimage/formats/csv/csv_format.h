#pragma once

#include "kvrimage/formats/format.h"

namespace kvrimage {

extern const format csv_format;

} // namespace kvrimage
