#pragma once

#include "fuzz/input_bytes.h"
#include "kvrimage/formats/format.h"

namespace kvr_fuzz {

/// Consumes the bytes at the front of an input that choose how to read the rest. The first byte chooses the
/// format: "0" is the first one that can be read. The second byte chooses what the user says about the file,
/// which may include choices on the first line.
[[nodiscard]] kvrimage::read_options choose_read_options(input_bytes& settings);

} // namespace kvr_fuzz
