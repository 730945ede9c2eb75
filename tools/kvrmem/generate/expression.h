#pragma once

#include "kvrimage/generate/numbers.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>

struct lua_State;

namespace kvrmem {

/// Why an expression has no value.
class expression_error : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// What the interpreter may still use.
struct expression_limits {
    std::uint64_t most_steps = 0;
    std::uint64_t steps_left = most_steps;
    std::size_t used_bytes = 0;

    /// Takes @p steps off those that are left; false when they are too few, and then none are left.
    bool spend(std::uint64_t steps) noexcept {
        const bool is_enough = steps < steps_left;
        steps_left = is_enough ? steps_left - steps : 0;
        return is_enough;
    }
};

/// An expression of Lua over the address of a word: "round(32767 * sin(2 * pi * a / n))". It knows `a`, the
/// address, `n`, the number of words, and `w`, the bits of a word; the functions and numbers of Lua's library
/// `math`, apart from its random numbers, and round, trunc, cbrt, log2, log10, sinh, cosh and tanh.
class expression {
public:
    /// @throws expression_error when @p text is no expression
    expression(const std::string& text, std::uint64_t depth, std::uint32_t width);
    ~expression();
    expression(const expression&) = delete;
    expression& operator=(const expression&) = delete;

    /// The value for @p address: whole numbers of up to 64 bits are exact, all others are a double. `true` is
    /// 1 and `false` is 0.
    /// @throws expression_error when it has none, more than one, or needs more than 16 MiB of memory, a text
    /// of more than 1 KiB, or more steps than all words have together: 64 million, and 200 for each word. A
    /// step is an instruction of the interpreter; instructions count for more in proportion to the memory in
    /// use, and allocated memory counts as well.
    [[nodiscard]] kvrimage::generated_number value_at(std::uint64_t address);

private:
    struct closer {
        void operator()(lua_State* state) const noexcept;
    };

    expression_limits limits; ///< of the interpreter; outlive it
    std::unique_ptr<lua_State, closer> state;
};

} // namespace kvrmem
