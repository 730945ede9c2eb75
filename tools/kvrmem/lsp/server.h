#pragma once

#include "tools/kvrmem/lsp/dispatcher.h"
#include "tools/kvrmem/lsp/document.h"
#include "tools/kvrmem/lsp/settings.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace kvrmem::lsp {

/// A language server for memory files: takes bytes of its client, and makes those for it. It reads and
/// writes nothing by itself.
class server {
public:
    /// @param sender takes the texts of messages to the client
    /// @param of_command_line holds until the client says otherwise
    server(dispatcher::message_sender sender, const file_settings& of_command_line);
    server(const server&) = delete;
    server& operator=(const server&) = delete;
    ~server() = default;

    /// Queues the messages that the next bytes of the client complete. What they cancel, and was not handled
    /// yet, is not done.
    void receive(std::string_view bytes);
    /// Handles the message that waits longest; false when there is none.
    bool handle_next() { return messages.handle_next(); }
    /// See dispatcher.
    ///@{
    [[nodiscard]] bool has_waiting() const noexcept { return messages.has_waiting(); }
    [[nodiscard]] bool is_full() const noexcept { return messages.is_full(); }
    ///@}
    /// Does both, until nothing waits.
    void take(std::string_view bytes);
    /// Checks what has changed, once nothing more has arrived.
    void check_changed();

    [[nodiscard]] bool has_ended() const noexcept { return messages.has_ended(); }
    /// See dispatcher::was_shut_down().
    [[nodiscard]] bool was_shut_down() const noexcept { return messages.was_shut_down(); }

private:
    [[nodiscard]] json initialize(const json& params);
    void open(const json& params);
    void change(const json& params);
    void close(const json& params);
    void configure(const json& params);
    [[nodiscard]] json find_symbols(const json& params);
    [[nodiscard]] json execute(const json& params);

    void add_requests();
    void add_notifications();
    void use_settings(const json& given);
    [[nodiscard]] document& document_of(const json& params);
    [[nodiscard]] document& document_of_uri(const std::string& uri);

    message_splitter splitter;
    dispatcher messages;
    settings given;
    client_abilities client;
    std::map<std::string, document> documents; ///< by their URIs
};

} // namespace kvrmem::lsp
