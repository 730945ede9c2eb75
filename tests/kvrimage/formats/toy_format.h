#pragma once

#include "kvrimage/formats/format.h"

/// A format of this test program's own: "toy WIDTH", then a line "ADDRESS VALUE" for each word, of one
/// hexadecimal digit for the address and two for the value. "?" after a value marks it for a repair, which
/// takes the mark away; each line that is none of these is broken. It is added to the registry by the first
/// call.
const kvrimage::format& toy_format();
