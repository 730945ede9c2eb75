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

/// The error detection and correction that a scheme guarantees for any position of the wrong bits.
struct ecc_strength {
    bool finds_single = false;    ///< detects a single wrong bit
    bool corrects_single = false; ///< locates a single wrong bit
    bool finds_double = false;    ///< detects two wrong bits, without mistaking them for a single one

    /// Compares all three members.
    friend bool operator==(const ecc_strength&, const ecc_strength&) = default;
};

/// The result of decoding a word.
struct ecc_result {
    /// The state of a word.
    enum class state : std::uint8_t {
        intact,                       ///< the check bits match the data
        corrected,                    ///< one wrong bit was corrected
        damaged                       ///< the data cannot be recovered
    } what = state::intact;           ///< the state of this word
    word data;                        ///< the data; uncorrected if `damaged`
    std::optional<std::uint32_t> bit; ///< for `corrected`, the wrong bit of the protected word
};

/// The name of a scheme.
struct ecc_scheme_name {
    std::string_view name;        ///< "hamming"
    std::string_view description; ///< one line for help texts
};

/// A scheme that protects words by check bits. This is a value type; copies are cheap.
///
/// Even parity makes the number of ones even, odd parity makes it odd. A parity bit covers the whole word and
/// is placed above the data, or it covers 8 bits. In the latter case each parity bit follows its byte (9, 18,
/// 36 bits), or all of them are placed above the data.
///
/// `hamming` numbers the bits of the protected word from 0. The bits at powers of two are the check bits of
/// the classic code, bit 0 is the parity of all other bits, and the data bits fill the other positions in
/// order (32 bits become 39).
///
/// The other schemes place the check bits above the data. Each is the parity of the data bits in a mask. The
/// masks are chosen so that all columns have an odd number of ones (M. Y. Hsiao, "A class of optimal minimum
/// odd-weight-column SEC-DED codes", 1970). The schemes named `-inverted` invert check bits 1, 3 and 5.
class KVRIMAGE_API ecc_scheme {
public:
    /// Returns the scheme @p name for words of @p data_width bits.
    /// @param name a name of known()
    /// @param data_width word width before protection, in bits
    /// @throws std::invalid_argument if there is no such scheme, or it does not support the width
    [[nodiscard]] static ecc_scheme named(std::string_view name, std::uint32_t data_width);
    /// Returns the scheme @p name for protected words of @p width bits.
    /// @throws std::invalid_argument if there is none
    [[nodiscard]] static ecc_scheme of_protected(std::string_view name, std::uint32_t width);
    /// Returns the scheme with a check bit for each mask. Check bit i is bit data_width + i of the protected
    /// word, and the parity of the data bits that are 1 in @p masks [i].
    /// @param masks 1 to 64 masks of the same width, which is the data width, at most 1,024 bits
    /// @param inverted bit i inverts check bit i
    /// @throws std::invalid_argument if the masks do not meet these conditions
    [[nodiscard]] static ecc_scheme of_masks(std::span<const word> masks, std::uint64_t inverted = 0);
    /// Returns all named schemes.
    [[nodiscard]] static std::span<const ecc_scheme_name> known();

    /// Returns the word width before protection, in bits.
    [[nodiscard]] std::uint32_t data_width() const noexcept;
    /// Returns the width of a protected word in bits.
    [[nodiscard]] std::uint32_t width() const noexcept;
    /// Returns what the scheme detects and corrects.
    [[nodiscard]] ecc_strength strength() const noexcept;

    /// Returns the protected word of @p data.
    /// @throws std::invalid_argument if the width of @p data is not data_width()
    /// @throws std::domain_error if @p data has don't-care bits
    [[nodiscard]] word encoded(const word& data) const;
    /// Decodes the protected word @p value.
    /// @throws std::invalid_argument if the width of @p value is not width()
    /// @throws std::domain_error if @p value has don't-care bits
    [[nodiscard]] ecc_result decoded(const word& value) const;

    /// For internal use.
    ///@{
    explicit ecc_scheme(ecc_code&& of);
    [[nodiscard]] const ecc_code& as_code() const noexcept { return *code; }
    ///@}

private:
    std::shared_ptr<const ecc_code> code;
};

} // namespace kvrimage
