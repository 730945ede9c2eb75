#pragma once

#include "kvrimage/image/radix.h"

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace kvrimage {

/// Detects that all numbers are written in another radix than the stated one.
class mif_radix_trial {
public:
    /// The result of parsing a text in a radix.
    enum class reading : std::uint8_t { fits, too_large, no_number };

    explicit mif_radix_trial(radix stated) : declared(stated) {}

    /// Adds the next number. @p read (text, radix) returns its reading.
    template <class Read>
    void take(std::string_view text, Read&& read) {
        ++numbers;
        for (std::size_t i = 0; i < fits.size(); ++i) {
            const auto tried = static_cast<radix>(i);
            if (fits[i] || tried == declared) {
                const reading found = read(text, tried);
                fits[i] = fits[i] && found == reading::fits;
                note(text, tried, found);
            }
        }
    }

    /// Returns the only radix that fits all numbers, if many numbers are invalid in the stated radix.
    [[nodiscard]] std::optional<radix> other() const;
    /// Returns a number that is invalid in the stated radix.
    [[nodiscard]] const std::string& example() const noexcept { return first_misfit; }

private:
    void note(std::string_view text, radix tried, reading found);

    radix declared;
    std::array<bool, 5> fits = {true, true, true, true, true};
    std::uint64_t numbers = 0;
    std::uint64_t misfits = 0;
    std::string first_misfit;
};

} // namespace kvrimage
