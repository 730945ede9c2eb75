#include "tools/kvrmem/platform/terminal.h"

#include "tools/kvrmem/platform/system.h"

#include <fmt/format.h>

#include <array>
#include <cstdlib>

namespace kvrmem {

namespace {

/// The attributes of each style, in the order of the enumeration (ECMA-48, select graphic rendition).
constexpr std::array<const char*, 11> attributes = {"0",  "1",  "2",  "31",   "32",  "33",
                                                    "34", "35", "36", "1;31", "1;35"};

bool wants_color(std::FILE* stream) {
    const char* no_color = std::getenv("NO_COLOR");
    const char* terminal = std::getenv("TERM");
    return is_terminal(stream) && (no_color == nullptr || *no_color == '\0') &&
           (terminal == nullptr || std::string_view(terminal) != "dumb");
}

} // namespace

std::optional<color_choice> color_choice_of_name(std::string_view name) {
    if (name == "auto") {
        return color_choice::automatic;
    }
    if (name == "always") {
        return color_choice::always;
    }
    if (name == "never") {
        return color_choice::never;
    }
    return std::nullopt;
}

std::string painter::paint(style how, std::string_view text) const {
    if (!on || how == style::plain) {
        return std::string(text);
    }
    return fmt::format("\x1B[{}m{}\x1B[0m", attributes[static_cast<std::size_t>(how)], text);
}

painter painter_for(std::FILE* stream, color_choice choice) {
    return painter(choice == color_choice::always ||
                   (choice == color_choice::automatic && wants_color(stream)));
}

bool is_terminal(std::FILE* stream) {
    return system::is_terminal(stream);
}

std::uint32_t columns_of(std::FILE* stream) {
    constexpr std::uint32_t usual = 80;
    const std::uint32_t columns = system::columns_of(stream);
    return columns > 0 ? columns : usual;
}

bool locale_has_utf8() {
    for (const char* name : {"LC_ALL", "LC_CTYPE", "LANG"}) {
        const char* value = std::getenv(name);
        if (value != nullptr && *value != '\0') {
            std::string folded;
            for (const char* at = value; *at != '\0'; ++at) {
                if (*at != '-') {
                    folded += static_cast<char>(*at | 0x20);
                }
            }
            return folded.find("utf8") != std::string::npos;
        }
    }
    return system::shows_utf8_by_itself;
}

} // namespace kvrmem
