#pragma once

#include "kvrimage/export.h"

namespace kvrimage {

/// Removes the temporary files of outputs that are not complete yet (see write()). It is meant for a signal
/// handler that ends the program, and safe there; the library installs no handler. Output that is written
/// after this call is lost.
KVRIMAGE_API void remove_temporary_files() noexcept;

} // namespace kvrimage
