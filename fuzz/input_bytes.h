#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace kvr_fuzz {

/// Consumes settings at the front of an input, where they are easy to find and to edit. The rest is the text
/// under test.
class input_bytes {
public:
    explicit input_bytes(std::string_view input) noexcept : left(input) {}

    /// The first byte as a number; 0 if there is none.
    unsigned number() noexcept {
        if (left.empty()) {
            return 0;
        }
        const auto byte = static_cast<unsigned char>(left.front());
        left.remove_prefix(1);
        return byte;
    }

    /// The element of @p choices that the first byte selects.
    template <class Value, std::size_t count>
    const Value& choose(const std::array<Value, count>& choices) noexcept {
        return choices[number() % count];
    }

    /// The text before the first LF, which is consumed as well; the whole text if there is none.
    std::string line() {
        const std::size_t end = left.find('\n');
        std::string taken(left.substr(0, end));
        left.remove_prefix(end == left.npos ? left.size() : end + 1);
        return taken;
    }

    [[nodiscard]] std::string_view rest() const noexcept { return left; }

private:
    std::string_view left;
};

} // namespace kvr_fuzz
