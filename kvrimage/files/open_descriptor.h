#pragma once

#include <unistd.h>
#include <utility>

namespace kvrimage {

/// Owns a descriptor and closes it; -1: none.
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
    /// Gives up the descriptor: the caller has to close it.
    int release() noexcept { return std::exchange(number, -1); }

private:
    int number;
};

} // namespace kvrimage
