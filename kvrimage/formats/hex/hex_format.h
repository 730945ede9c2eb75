#pragma once

#include "kvrimage/formats/format.h"

namespace kvrimage {

extern const format hex_format;
/// The same files where addresses always count bytes.
extern const format hexbytes_format;

} // namespace kvrimage
