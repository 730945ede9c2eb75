#pragma once

#include "kvrimage/export.h"
#include "kvrimage/image/word.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string_view>

namespace kvrimage {

struct ecc_code;

/// What the check bits of a scheme are good for, wherever in a word bits have changed.
struct ecc_strength {
    bool finds_single = false;    ///< one wrong bit is noticed
    bool corrects_single = false; ///< and it is known which
    bool finds_double = false;    ///< two wrong bits are noticed, and not taken for a single other one

    /// The same in all three.
    friend bool operator==(const ecc_strength&, const ecc_strength&) = default;
};

/// What the check bits say of a word.
struct ecc_result {
    /// In what state it is.
    enum class state : std::uint8_t {
        intact,                       ///< the check bits are those of the data
        corrected,                    ///< one bit was wrong
        damaged                       ///< the data are not known
    } what = state::intact;           ///< the state of this word
    word data;                        ///< for `damaged` as they stand
    std::optional<std::uint32_t> bit; ///< of the protected word, for `corrected`: which one was wrong
};

/// A scheme that is known by name.
struct ecc_scheme_name {
    std::string_view name;        ///< "hamming"
    std::string_view description; ///< for help
};

/// A way to protect words by check bits. A value type; a copy costs nothing.
///
/// Even parity makes the number of ones even, odd parity makes it odd: over a word, its bit on top of the
/// data; or over each 8 bits, where the check bit follows its byte (9, 18, 36 bits), or all of them are on
/// top.
///
/// `hamming` numbers the bits of the protected word from 0 on: those at powers of two are the check bits of
/// the classic code, bit 0 is the parity of all others, and the data fill the rest in order (32 bits become
/// 39).
///
/// The other schemes put check bits on top of the data, each the parity of the data bits of a mask, so that
/// all columns have an odd number of ones (M. Y. Hsiao, "A class of optimal minimum odd-weight-column SEC-DED
/// codes", 1970). Those named `-inverted` invert the check bits 1, 3 and 5.
class KVRIMAGE_API ecc_scheme {
public:
    /// @param name of known()
    /// @param data_width bits of a word before it is protected
    /// @throws std::invalid_argument when there is no such scheme, or it is not for words of that width
    [[nodiscard]] static ecc_scheme named(std::string_view name, std::uint32_t data_width);
    /// The scheme @p name whose protected words have @p width bits.
    /// @throws std::invalid_argument when there is none
    [[nodiscard]] static ecc_scheme of_protected(std::string_view name, std::uint32_t width);
    /// The scheme in which check bit i, bit data_width + i of the protected word, is the parity of the data
    /// bits that are 1 in @p masks [i].
    /// @param masks 1 to 64, of one width, which is that of the data, at most 1,024 bits
    /// @param inverted the check bits to invert
    /// @throws std::invalid_argument for masks that are not so
    [[nodiscard]] static ecc_scheme of_masks(std::span<const word> masks, std::uint64_t inverted = 0);
    /// All that have names.
    [[nodiscard]] static std::span<const ecc_scheme_name> known();

    /// Bits of a word before it is protected.
    [[nodiscard]] std::uint32_t data_width() const noexcept;
    /// Bits of a protected word.
    [[nodiscard]] std::uint32_t width() const noexcept;
    /// What the check bits are good for.
    [[nodiscard]] ecc_strength strength() const noexcept;

    /// The protected word of @p data.
    /// @throws std::invalid_argument when @p data has another width than data_width()
    /// @throws std::domain_error when it has don't-care bits
    [[nodiscard]] word encoded(const word& data) const;
    /// What the check bits of @p value say of it.
    /// @throws std::invalid_argument when @p value has another width than width()
    /// @throws std::domain_error when it has don't-care bits
    [[nodiscard]] ecc_result decoded(const word& value) const;

    /// For the library's own parts.
    ///@{
    explicit ecc_scheme(ecc_code&& of);
    [[nodiscard]] const ecc_code& as_code() const noexcept { return *code; }
    ///@}

private:
    std::shared_ptr<const ecc_code> code;
};

} // namespace kvrimage
