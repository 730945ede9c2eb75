#include "kvrimage/operations/error_correction/ecc_scheme.h"

#include "kvrimage/operations/error_correction/ecc_bits.h"
#include "kvrimage/operations/error_correction/ecc_code.h"
#include "kvrimage/operations/error_correction/ecc_known.h"

#include <fmt/format.h>

#include <algorithm>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace kvrimage {

namespace {

const known_ecc_scheme& scheme_of_name(std::string_view name) {
    const std::span<const known_ecc_scheme> all = known_ecc_schemes();
    const auto found =
        std::ranges::find(all, name, [](const known_ecc_scheme& one) { return one.called.name; });
    if (found == all.end()) {
        throw std::invalid_argument(fmt::format("there is no error-correction scheme {}", name));
    }
    return *found;
}

[[noreturn]] void refuse_width(std::string_view name, std::uint32_t width, std::string_view what) {
    throw std::invalid_argument(fmt::format("{} has no {} of {} bits", name, what, width));
}

void require_plain(const word& value, std::uint32_t width) {
    if (value.width() != width) {
        throw std::invalid_argument(fmt::format("a word of {} bits instead of {}", value.width(), width));
    }
    if (value.has_dont_care()) {
        throw std::domain_error("a word with don't-care bits cannot be checked");
    }
}

word word_of_bits(std::string_view bits) {
    return word::parse(bits, radix::bin, static_cast<std::uint32_t>(bits.size())).value.value();
}

ecc_check check_of_mask(const word& mask, std::uint32_t position, bool is_inverted) {
    return {position, is_inverted, 0, limbs_of_bits(mask.to_text(radix::bin).value())};
}

constexpr std::uint32_t most_masks = 64;
constexpr std::uint32_t widest_mask = 1024;

void require_masks(std::span<const word> masks) {
    if (masks.empty() || masks.size() > most_masks) {
        throw std::invalid_argument(fmt::format("{} masks: a scheme has 1 to {}", masks.size(), most_masks));
    }
    for (const word& mask : masks) {
        if (mask.width() != masks.front().width() || mask.width() > widest_mask) {
            throw std::invalid_argument(fmt::format(
                "a mask of {} bits: all have the width of the data, at most {}", mask.width(), widest_mask));
        }
        if (mask.has_dont_care()) {
            throw std::invalid_argument("a mask with don't-care bits");
        }
    }
}

std::vector<ecc_scheme_name> names_of_known_schemes() {
    std::vector<ecc_scheme_name> all;
    for (const known_ecc_scheme& one : known_ecc_schemes()) {
        all.push_back(one.called);
    }
    return all;
}

} // namespace

ecc_scheme::ecc_scheme(ecc_code&& of) : code(std::make_shared<const ecc_code>(std::move(of))) {}

ecc_scheme ecc_scheme::named(std::string_view name, std::uint32_t data_width) {
    const known_ecc_scheme& known = scheme_of_name(name);
    const std::uint32_t checks =
        data_width != 0 && data_width < widest_word ? known.check_count(data_width) : 0;
    if (checks == 0 || data_width + checks > widest_word) {
        refuse_width(name, data_width, "form for words");
    }
    return ecc_scheme(known.make(data_width));
}

ecc_scheme ecc_scheme::of_protected(std::string_view name, std::uint32_t width) {
    const known_ecc_scheme& known = scheme_of_name(name);
    std::uint32_t data_width = std::min(width, widest_word + 1);
    do {
        if (data_width-- <= 1) {
            refuse_width(name, width, "protected words");
        }
    } while (known.check_count(data_width) == 0 || data_width + known.check_count(data_width) != width);
    return ecc_scheme(known.make(data_width));
}

ecc_scheme ecc_scheme::of_masks(std::span<const word> masks, std::uint64_t inverted) {
    require_masks(masks);
    ecc_code code;
    const std::uint32_t data_width = masks.front().width();
    for (std::uint32_t bit = 0; bit < data_width; ++bit) {
        code.data_positions.push_back(bit);
    }
    for (std::uint32_t index = 0; index < masks.size(); ++index) {
        code.checks.push_back(check_of_mask(masks[index], data_width + index, (inverted >> index & 1U) != 0));
    }
    code.strength = strength_of(code);
    return ecc_scheme(std::move(code));
}

std::span<const ecc_scheme_name> ecc_scheme::known() {
    static const std::vector<ecc_scheme_name> names = names_of_known_schemes();
    return names;
}

std::uint32_t ecc_scheme::data_width() const noexcept {
    return code->data_width();
}

std::uint32_t ecc_scheme::width() const noexcept {
    return code->width();
}

ecc_strength ecc_scheme::strength() const noexcept {
    return code->strength;
}

word ecc_scheme::encoded(const word& data) const {
    require_plain(data, data_width());
    return word_of_bits(encoded_bits(*code, data.to_text(radix::bin).value()));
}

ecc_result ecc_scheme::decoded(const word& value) const {
    require_plain(value, width());
    const decoded_bits found = ecc_decoder(*code).decode(value.to_text(radix::bin).value());
    return {found.what, word_of_bits(found.data), found.bit};
}

} // namespace kvrimage
