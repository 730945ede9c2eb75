#include "kvrimage/generate/patterns.h"

#include "kvrimage/generate/word_bytes.h"
#include "kvrimage/image/mixed_bits.h"
#include "kvrimage/image/number_of_bytes.h"
#include "kvrimage/image/radix.h"
#include "kvrimage/image/word_text.h"

#include <fmt/format.h>

#include <cstddef>
#include <stdexcept>
#include <string>

namespace kvrimage {

namespace {

void require_depth(std::uint64_t depth) {
    static_cast<void>(memory_image(1, depth)); // throws if the depth is invalid
}

/// Adds @p step to @p sum. Both are little-endian and have the same length.
void add_bytes(std::string& sum, std::string_view step) {
    unsigned carry = 0;
    for (std::size_t index = 0; index < sum.size(); ++index) {
        carry += static_cast<unsigned char>(sum[index]);
        carry += static_cast<unsigned char>(step[index]);
        sum[index] = static_cast<char>(carry);
        carry >>= bits_per_byte;
    }
}

/// Reads a little-endian number limb by limb, lowest first.
class limb_reader {
public:
    explicit limb_reader(std::string_view number) : rest(number) {}
    std::uint64_t next() {
        const std::string_view bytes = rest.substr(0, sizeof(std::uint64_t));
        rest.remove_prefix(bytes.size());
        return number_of_bytes(bytes, byte_order::little);
    }

private:
    std::string_view rest;
};

/// Returns number @p index of the splitmix64 sequence with @p seed.
std::uint64_t random_number(std::uint64_t seed, std::uint64_t index) noexcept {
    return mixed_bits(seed + (index + 1) * 0x9E3779B97F4A7C15U);
}

} // namespace

memory_image ramp(const word& start, const word& step, std::uint64_t depth) {
    if (start.width() != step.width() || start.has_dont_care() || step.has_dont_care()) {
        throw std::invalid_argument(
            fmt::format("a ramp of words of {} bits in steps of {}; both must be plain and as wide",
                        start.width(), step.width()));
    }
    require_depth(depth);
    generated_words words(start.width(), depth);
    std::string current = start.to_bytes(byte_order::little).value();
    const std::string increment = step.to_bytes(byte_order::little).value();
    for (std::uint64_t address = 0; address < depth; ++address) {
        limb_reader limbs(current);
        words.add_limbs([&limbs] { return limbs.next(); });
        add_bytes(current, increment); // carries into surplus bits stay there
    }
    return words.take();
}

memory_image random_words(std::uint32_t width, std::uint64_t depth, std::uint64_t seed) {
    require_depth(depth);
    generated_words words(width, depth);
    std::uint64_t index = 0;
    for (std::uint64_t address = 0; address < depth; ++address) {
        words.add_limbs([&index, seed] { return random_number(seed, index++); });
    }
    return words.take();
}

memory_image text_words(std::string_view text, std::uint32_t width) {
    if (text.empty()) {
        throw std::invalid_argument("the text is empty");
    }
    generated_words words(width, text.size());
    if (const auto wide = find_wide_byte(text, width)) {
        throw std::overflow_error(
            fmt::format("the byte 0x{:02X} at address 0x{:X} does not fit words of {} bits (0..0x{:X})",
                        static_cast<unsigned char>(text[*wide]), *wide, width, (1U << width) - 1));
    }
    for (const char byte : text) {
        words.add(static_cast<unsigned char>(byte));
    }
    return words.take();
}

} // namespace kvrimage
