#pragma once

#include <algorithm>
#include <memory>
#include <string_view>

namespace kvr_fuzz {

/// A copy of a text without any memory after it: the sanitizer detects a read past its end.
class exact_bytes {
public:
    explicit exact_bytes(std::string_view text)
        : size(text.size()),
          bytes(std::make_unique_for_overwrite<char[]>(text.size())) {
        std::copy(text.begin(), text.end(), bytes.get());
    }
    [[nodiscard]] std::string_view view() const noexcept { return {bytes.get(), size}; }

private:
    std::size_t size;
    std::unique_ptr<char[]> bytes;
};

} // namespace kvr_fuzz
