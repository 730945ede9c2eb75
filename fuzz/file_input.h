#pragma once

#include "fuzz/input_bytes.h"
#include "kvrimage/formats/format.h"

namespace kvr_fuzz {

/// Takes from the front of an input how the rest is read: a byte chooses the format, "0" the first of those
/// that can be read, the next what a user says of the file, which may be choices on the first line.
[[nodiscard]] kvrimage::read_options choose_read_options(input_bytes& settings);

} // namespace kvr_fuzz
