#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <string_view>

namespace kvr_test {

/// The source of the random decisions of a test: random numbers or the bytes of a fuzzer's input.
class choices {
public:
    choices() = default;
    choices(const choices&) = delete;
    choices& operator=(const choices&) = delete;
    virtual ~choices() = default;

    /// A number below @p count (at least 1).
    virtual std::uint32_t below(std::uint32_t count) = 0;

    /// A number from @p least to @p most, inclusive.
    std::uint32_t between(std::uint32_t least, std::uint32_t most) { return least + below(most - least + 1); }
    /// True with a probability of one in @p count.
    bool once_in(std::uint32_t count) { return below(count) == 0; }
    /// One of the elements of @p all.
    template <class Container>
    const auto& one_of(const Container& all) {
        return *(all.begin() + below(static_cast<std::uint32_t>(all.size())));
    }
};

/// The same sequence of choices for the same seed.
class random_choices final : public choices {
public:
    explicit random_choices(std::uint32_t seed) : engine(seed) {}
    std::uint32_t below(std::uint32_t count) override {
        return static_cast<std::uint32_t>((std::uint64_t{engine()} * count) >> 32U);
    }

private:
    std::mt19937 engine; // NOLINT(cert-msc51-cpp): seeded above
};

/// The choices of an input: one byte each, or more for larger numbers; 0 after the end of the input.
class input_choices final : public choices {
public:
    explicit input_choices(std::string_view input) noexcept : left(input) {}
    std::uint32_t below(std::uint32_t count) override {
        std::uint64_t number = 0;
        for (std::uint64_t reach = 1; reach < count; reach *= 256) {
            number = number * 256 + next_byte();
        }
        return static_cast<std::uint32_t>(number % count);
    }
    [[nodiscard]] bool are_used_up() const noexcept { return left.empty(); }

private:
    unsigned next_byte() noexcept {
        if (left.empty()) {
            return 0;
        }
        const auto byte = static_cast<unsigned char>(left.front());
        left.remove_prefix(1);
        return byte;
    }

    std::string_view left;
};

} // namespace kvr_test
