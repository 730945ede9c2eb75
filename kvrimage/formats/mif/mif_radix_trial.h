#pragma once

#include "kvrimage/image/radix.h"

#include <array>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace kvrimage {

/// Finds out whether numbers are all of another radix than the one that is stated.
class mif_radix_trial {
public:
    /// What a text is in a radix.
    enum class reading : std::uint8_t { fits, too_large, no_number };

    explicit mif_radix_trial(radix stated) : declared(stated) {}

    /// Takes the next number. @p read(text, radix) says what it is.
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

    /// The radix that all numbers fit, where no other one does and many are none in the radix that is stated.
    [[nodiscard]] std::optional<radix> other() const;
    /// A number that is none in the radix that is stated.
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
