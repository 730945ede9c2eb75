#pragma once

#include <unistd.h>
#include <utility>

namespace kvrimage {

/// A descriptor that is closed in the end; -1: none.
class open_descriptor {
public:
    explicit open_descriptor(int opened = -1) noexcept : number(opened) {}
    open_descriptor(open_descriptor&& other) noexcept : number(std::exchange(other.number, -1)) {}
    open_descriptor& operator=(open_descriptor&& other) noexcept {
        std::swap(number, other.number);
        return *this;
    }
    ~open_descriptor() {
        if (number >= 0) {
            close(number);
        }
    }
    [[nodiscard]] int get() const noexcept { return number; }
    /// Returns the descriptor, which the caller closes from then on.
    int release() noexcept { return std::exchange(number, -1); }

private:
    int number;
};

} // namespace kvrimage
