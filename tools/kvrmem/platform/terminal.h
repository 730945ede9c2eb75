#pragma once

#include <cstdint>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>

namespace kvrmem {

enum class color_choice : std::uint8_t { automatic, always, never };

/// Returns the choice named @p name: "auto", "always" or "never".
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

/// Adds color to texts for one stream, or leaves them unchanged.
class painter {
public:
    explicit painter(bool colored) : on(colored) {}
    [[nodiscard]] bool colored() const noexcept { return on; }
    [[nodiscard]] std::string paint(style how, std::string_view text) const;

private:
    bool on;
};

/// Returns the painter for @p stream. With color_choice::automatic, texts have color if the stream is a
/// terminal, NO_COLOR is unset or empty, and TERM is not "dumb".
[[nodiscard]] painter painter_for(std::FILE* stream, color_choice choice);

[[nodiscard]] bool is_terminal(std::FILE* stream);

/// Columns of the terminal that @p stream writes to; 80 if it is not a terminal.
[[nodiscard]] std::uint32_t columns_of(std::FILE* stream);

/// True if the terminal shows UTF-8 according to the first of LC_ALL, LC_CTYPE and LANG that is not empty. If
/// all are empty, the result depends on the system: false for the C locale of POSIX, which is ASCII, true on
/// Windows.
[[nodiscard]] bool locale_has_utf8();

} // namespace kvrmem
