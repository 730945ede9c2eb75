#pragma once

#include <cerrno>
#include <cstddef>
#include <string_view>
#include <unistd.h>

namespace kvrmem {

/// Writes @p text to @p descriptor at once, past every buffer; a signal handler may call it, too. What a
/// signal interrupts is taken up again.
/// @return false when not everything could be written.
inline bool write_all(int descriptor, std::string_view text) noexcept {
    while (!text.empty()) {
        const ssize_t written = ::write(descriptor, text.data(), text.size());
        if (written > 0) {
            text.remove_prefix(static_cast<std::size_t>(written));
        } else if (written == 0 || errno != EINTR) {
            return false;
        }
    }
    return true;
}

} // namespace kvrmem
