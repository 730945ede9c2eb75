#pragma once

#include "kvrimage/formats/format.h"

namespace kvrimage {

extern const format hex_format;
/// Intel HEX whose addresses always count bytes.
extern const format hexbytes_format;

} // namespace kvrimage
