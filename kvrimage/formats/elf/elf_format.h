#pragma once

#include "kvrimage/formats/format.h"

namespace kvrimage {

/// ELF files, which are read only.
extern const format elf_format;

} // namespace kvrimage
