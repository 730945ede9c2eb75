#include "kvrimage/files/file_error.h"

namespace kvrimage {

// Out of line, so that the type is one and the same in every program that links the library.
file_error::~file_error() = default;

} // namespace kvrimage
