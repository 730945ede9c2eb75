#pragma once

#include "kvrimage/image/radix.h"
#include "kvrimage/image/word.h"

#include <cstdint>
#include <optional>
#include <pybind11/pybind11.h>
#include <string>
#include <vector>

namespace kvr_python {

namespace py = pybind11;

// Words in Python: an int, without a sign; the digits "0", "1", "X" of all bits where one is don't care; None
// where no word is set.

[[nodiscard]] py::object object_of(const std::optional<kvrimage::word>& value);

/// The word of an int, negative ones in two's complement, or of the digits of all bits.
/// @throws OverflowError with the value and the limits
[[nodiscard]] kvrimage::word word_of(py::handle value, std::uint32_t width);
[[nodiscard]] std::vector<kvrimage::word> words_of(const py::list& values, std::uint32_t width);
/// The same, and nothing for None.
[[nodiscard]] std::optional<kvrimage::word> optional_word_of(const py::object& value, std::uint32_t width);

/// "little" or "big".
/// @throws ValueError for another name
[[nodiscard]] kvrimage::byte_order order_of(const std::string& name);
[[nodiscard]] kvrimage::radix radix_called(const std::string& name);

} // namespace kvr_python
