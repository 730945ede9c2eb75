#pragma once

#include "tools/kvrmem/lsp/json_rpc.h"
#include "tools/kvrmem/lsp/message_splitter.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace kvrmem::lsp {

/// Handles messages in the order of arrival. A request cancelled before its turn is not run. Enforces the
/// session order: "initialize" comes first, and only "exit" may follow "shutdown".
class dispatcher {
public:
    /// Returns the result of a request, or throws request_error.
    using request_handler = std::function<json(const json& params)>;
    /// Exceptions are ignored, except std::bad_alloc.
    using notification_handler = std::function<void(const json& params)>;
    /// Sends the text of a message to the client.
    using message_sender = std::function<void(const std::string& text)>;

    /// JSON values in one message. Even a small value needs a hundred bytes or more of memory.
    static constexpr std::size_t usual_most_values = 1000000;

    /// @param values maximum number of values in a message
    explicit dispatcher(message_sender sender, std::size_t values = usual_most_values)
        : send(std::move(sender)),
          most_values(values) {}

    void on_request(const std::string& method, request_handler handler);
    void on_notification(const std::string& method, notification_handler handler);

    /// Queues a message, or answers an invalid one.
    void take(const framed_message& message);
    /// Handles the oldest waiting message. Returns false if there is none.
    bool handle_next();
    /// Returns whether a message waits to be handled.
    [[nodiscard]] bool has_waiting() const noexcept { return !waiting.empty() && !has_ended(); }
    /// Returns whether so much is waiting that no more should be read for now.
    [[nodiscard]] bool is_full() const noexcept {
        constexpr std::size_t most_messages = 4096;
        constexpr std::size_t most_bytes = std::size_t{64} << 20U;
        return waiting.size() >= most_messages || waiting_bytes >= most_bytes;
    }

    /// Sends a notification to the client.
    void notify(const std::string& method, json params) const;
    /// Sends a request to the client; its response is ignored.
    void request(const std::string& method, json params);

    /// Returns whether "exit" was handled or the stream became unreadable. No more messages are handled then.
    [[nodiscard]] bool has_ended() const noexcept { return state == session_state::ended; }
    /// Returns whether "exit" followed "shutdown", as required.
    [[nodiscard]] bool was_shut_down() const noexcept { return is_shut_down; }

private:
    enum class session_state : std::uint8_t { before, running, shut_down, ended };
    struct queued_message {
        json content;
        std::size_t bytes = 0; ///< of its text
        bool is_cancelled = false;
    };

    void queue(json message, std::size_t bytes);
    void cancel(const json& id);
    void handle_request(const queued_message& message);
    [[nodiscard]] json result_of(const std::string& method, const json& params);
    void handle_notification(const std::string& method, const json& params);
    void require_session_for(const std::string& method) const;
    void answer_error(const json& id, error_code code, const std::string& message) const;

    message_sender send;
    std::size_t most_values;
    std::map<std::string, request_handler> requests;
    std::map<std::string, notification_handler> notifications;
    std::deque<queued_message> waiting;
    std::size_t waiting_bytes = 0;
    session_state state = session_state::before;
    bool is_shut_down = false;
    std::uint64_t requests_sent = 0;
};

} // namespace kvrmem::lsp
