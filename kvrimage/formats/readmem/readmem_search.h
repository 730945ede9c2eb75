#pragma once

#include "kvrimage/diagnostics/span.h"
#include "kvrimage/formats/format.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>

namespace kvrimage {

// Implement format::find_word and format::find_comments.

[[nodiscard]] std::optional<place> find_readmemh_word(std::string_view contents, const read_options& options,
                                                      std::uint64_t address);
[[nodiscard]] std::optional<place> find_readmemb_word(std::string_view contents, const read_options& options,
                                                      std::uint64_t address);

void find_readmem_comments(std::string_view contents, const std::function<void(const span&)>& take);

} // namespace kvrimage
