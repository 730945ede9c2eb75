#pragma once

#include "tools/kvrmem/lsp/dispatcher.h"
#include "tools/kvrmem/lsp/document.h"
#include "tools/kvrmem/lsp/settings.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace kvrmem::lsp {

/// A language server for memory files. Converts bytes from the client to bytes for the client; it does no
/// input or output itself.
class server {
public:
    /// @param sender sends the texts of messages to the client
    /// @param of_command_line used until the client sends settings
    server(dispatcher::message_sender sender, const file_settings& of_command_line);
    server(const server&) = delete;
    server& operator=(const server&) = delete;
    ~server() = default;

    /// Queues the messages completed by the next bytes from the client. A cancellation applies to requests
    /// not yet handled.
    void receive(std::string_view bytes);
    /// Handles the oldest waiting message. Returns false if there is none.
    bool handle_next() { return messages.handle_next(); }
    /// See dispatcher.
    ///@{
    [[nodiscard]] bool has_waiting() const noexcept { return messages.has_waiting(); }
    [[nodiscard]] bool is_full() const noexcept { return messages.is_full(); }
    ///@}
    /// Receives @p bytes and handles messages until none waits.
    void take(std::string_view bytes);
    /// Checks the changed documents. Call when no more input is pending.
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
    std::map<std::string, document> documents; ///< by URI
};

} // namespace kvrmem::lsp
