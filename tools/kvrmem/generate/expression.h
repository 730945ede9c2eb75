#pragma once

#include "kvrimage/generate/numbers.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>

struct lua_State;

namespace kvrmem {

/// Thrown for an expression without a value; what() states the reason.
class expression_error : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The remaining resources of the interpreter.
struct expression_limits {
    std::uint64_t most_steps = 0;
    std::uint64_t steps_left = most_steps;
    std::size_t used_bytes = 0;

    /// Consumes @p steps steps. Returns false if too few remain; then none remain.
    bool spend(std::uint64_t steps) noexcept {
        const bool is_enough = steps < steps_left;
        steps_left = is_enough ? steps_left - steps : 0;
        return is_enough;
    }
};

/// A Lua expression of the address of a word: "round(32767 * sin(2 * pi * a / n))". Variables are `a`
/// (address), `n` (number of words) and `w` (bits of a word). Functions and constants are those of Lua's
/// library `math`, except random numbers, and round, trunc, cbrt, log2, log10, sinh, cosh and tanh.
class expression {
public:
    /// @throws expression_error if @p text is not a valid expression
    expression(const std::string& text, std::uint64_t depth, std::uint32_t width);
    ~expression();
    expression(const expression&) = delete;
    expression& operator=(const expression&) = delete;

    /// Returns the value for @p address. Integers of up to 64 bits are exact, other numbers are doubles;
    /// `true` is 1 and `false` is 0.
    /// @throws expression_error if there is not exactly one value, or if it needs more than 16 MiB of memory,
    /// a string of more than 1 KiB, or more steps than the total for all words: 64 million, and 200 per word.
    /// A step is an instruction of the interpreter. Instructions count more in proportion to the memory in
    /// use, and allocated memory counts as well.
    [[nodiscard]] kvrimage::generated_number value_at(std::uint64_t address);

private:
    struct closer {
        void operator()(lua_State* state) const noexcept;
    };

    expression_limits limits; ///< of the interpreter, which it must outlive
    std::unique_ptr<lua_State, closer> state;
};

} // namespace kvrmem
