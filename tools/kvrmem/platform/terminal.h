#pragma once

#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>

namespace kvrmem {

enum class color_choice : std::uint8_t { automatic, always, never };

/// The choice that a user calls @p name: "auto", "always", "never".
[[nodiscard]] std::optional<color_choice> color_choice_of_name(std::string_view name);

enum class style : std::uint8_t {
    plain,
    bold,
    dim,
    red,
    green,
    yellow,
    blue,
    magenta,
    cyan,
    bold_red,
    bold_magenta
};

/// Puts colour around texts for one stream, or leaves them as they are.
class painter {
public:
    explicit painter(bool colored) : on(colored) {}
    [[nodiscard]] bool colored() const noexcept { return on; }
    [[nodiscard]] std::string paint(style how, std::string_view text) const;

private:
    bool on;
};

/// Where the user leaves the choice to the tool, colour is for a terminal, unless NO_COLOR is set to
/// anything or TERM is "dumb". Each stream is judged for itself.
[[nodiscard]] painter painter_for(std::FILE* stream, color_choice choice);

[[nodiscard]] bool is_terminal(std::FILE* stream);

/// Columns of the terminal that @p stream writes to; 80 when it is none.
[[nodiscard]] std::uint32_t columns_of(std::FILE* stream);

/// True when the environment says that the terminal shows UTF-8: the first of LC_ALL, LC_CTYPE and LANG that
/// is set to anything decides. Where none is, the system does: it is the C locale, which is ASCII, or
/// Windows.
[[nodiscard]] bool locale_has_utf8();

} // namespace kvrmem
