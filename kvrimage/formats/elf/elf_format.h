#pragma once

#include "kvrimage/formats/format.h"

namespace kvrimage {

/// ELF files (read only).
extern const format elf_format;

} // namespace kvrimage
