#pragma once

#include <cstdint>
#include <random>

namespace kvr_test {

/// 32-bit numbers, the same ones in every run.
class random_numbers {
public:
    explicit random_numbers(std::uint32_t start) : engine(start) {}
    std::uint32_t operator()() { return static_cast<std::uint32_t>(engine()); }

private:
    std::mt19937 engine;
};

} // namespace kvr_test
