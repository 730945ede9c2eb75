#include "kvrimage/compare/fingerprint.h"

#include "kvrimage/image/mixed_bits.h"
#include "kvrimage/image/word_runs.h"

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string_view>

namespace kvrimage {

namespace {

std::uint64_t number_of(std::string_view text) noexcept {
    std::uint64_t number = text.size();
    while (!text.empty()) {
        std::uint64_t block = 0;
        const std::size_t size = std::min(text.size(), sizeof block);
        std::memcpy(&block, text.data(), size);
        text.remove_prefix(size);
        number = mixed_bits(number + block);
    }
    return number;
}

} // namespace

std::uint64_t fingerprint_of(const memory_image& image) {
    // A sum, since it must not depend on how the words are divided into rows and runs.
    std::uint64_t sum = mixed_bits(mixed_bits(mixed_bits(image.width()) + image.depth()) + image.base());
    for_each_row_or_run(
        image.words(),
        [&sum](const kvr::word_row& row, std::uint64_t first) {
            for (std::uint32_t index = 0; index < row.count; ++index) {
                sum += mixed_bits(number_of(row[index]) + mixed_bits(first + index));
            }
            return row.count;
        },
        [&sum](const text_run& run) {
            const std::uint64_t number = number_of(run.text);
            for (std::uint64_t address = run.first; address <= run.last; ++address) {
                sum += mixed_bits(number + mixed_bits(address));
            }
        });
    return sum;
}

} // namespace kvrimage
