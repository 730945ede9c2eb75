#pragma once

#include "kvrimage/formats/format.h"

/// A format for tests: "toy WIDTH", then a line "ADDRESS VALUE" for each word, with one hexadecimal digit for
/// the address and two for the value. "?" after a value marks it for a repair, which removes the mark. Any
/// other line is broken. The first call adds the format to the registry.
const kvrimage::format& toy_format();
