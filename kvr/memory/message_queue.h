#pragma once

#include <cstddef>
#include <deque>
#include <string>

namespace kvr {

/// One list of messages with a reading position. The position is on a message or at the end; a message
/// that is added while it is at the end is not seen before the next reset().
class message_queue {
public:
    void add(const std::string& message) {
        // A cursor at the end stays at the end, after the new message.
        const bool at_end = cursor == messages.size();
        messages.push_back(message);
        if (at_end) {
            cursor = messages.size();
        }
    }
    [[nodiscard]] bool empty() const noexcept { return messages.empty(); }
    void reset() noexcept { cursor = 0; }
    /// The message under the cursor, which advances; "" at the end.
    std::string next() { return cursor < messages.size() ? messages[cursor++] : std::string(); }

private:
    std::deque<std::string> messages;
    std::size_t cursor = 0; ///< at the end until the first reset()
};

} // namespace kvr
