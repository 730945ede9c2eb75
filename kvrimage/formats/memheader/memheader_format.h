#pragma once

#include "kvrimage/formats/format.h"

namespace kvrimage {

extern const format memheader_format;

} // namespace kvrimage
