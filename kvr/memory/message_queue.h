#pragma once

#include <cstddef>
#include <deque>
#include <string>

namespace kvr {

/// A list of messages with a read position, which is at a message or at the end. If it is at the end, a
/// message added later is not returned before the next reset().
class message_queue {
public:
    void add(const std::string& message) {
        // A position at the end stays at the end.
        const bool at_end = cursor == messages.size();
        messages.push_back(message);
        if (at_end) {
            cursor = messages.size();
        }
    }
    [[nodiscard]] bool empty() const noexcept { return messages.empty(); }
    void reset() noexcept { cursor = 0; }
    /// Returns the message at the position and advances; "" at the end.
    std::string next() { return cursor < messages.size() ? messages[cursor++] : std::string(); }

private:
    std::deque<std::string> messages;
    std::size_t cursor = 0; ///< at the end until the first reset()
};

} // namespace kvr
