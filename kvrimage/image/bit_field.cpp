#include "kvrimage/image/bit_field.h"

#include <fmt/format.h>

#include <stdexcept>
#include <string>

namespace kvrimage {

word with_field(const word& whole, const bit_field& field, const word& value) {
    if (field.low > field.high || field.high >= whole.width()) {
        throw std::invalid_argument(
            fmt::format("bits {} to {} of a word of {}", field.high, field.low, whole.width()));
    }
    if (value.width() != field.width()) {
        throw std::invalid_argument(
            fmt::format("a value of {} bits for a field of {}", value.width(), field.width()));
    }
    std::string bits = whole.to_text(radix::bin).value();
    bits.replace(whole.width() - 1 - field.high, field.width(), value.to_text(radix::bin).value());
    return word::parse(bits, radix::bin, whole.width()).value.value();
}

} // namespace kvrimage
