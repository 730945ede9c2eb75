#pragma once

#include "kvrimage/formats/format.h"

namespace kvrimage {

extern const format rif_format;

} // namespace kvrimage
