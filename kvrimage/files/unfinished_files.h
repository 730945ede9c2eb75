#pragma once

#include "kvrimage/export.h"

namespace kvrimage {

/// Removes the files that are being written beside their places (see write()) and not complete yet. The
/// library installs no signal handler; a program's own, which ends the program, may call this: it is safe in
/// a handler. What is written on after it is lost.
KVRIMAGE_API void remove_temporary_files() noexcept;

} // namespace kvrimage
