#pragma once

#include "tools/kvrmem/lsp/json_rpc.h"
#include "tools/kvrmem/lsp/server.h"

#include <string>
#include <string_view>
#include <vector>

namespace lsp_tests {

using kvrmem::lsp::json;

/// @p content with a header.
[[nodiscard]] std::string framed(std::string_view content);

/// A client and a server in one process.
class session {
public:
    explicit session(const kvrmem::lsp::file_settings& of_command_line = {});

    /// Sends bytes without a header.
    void send_bytes(std::string_view bytes) { running.take(bytes); }
    void send(const json& message);
    void notify(const std::string& method, const json& params);
    /// The response to a request, with "result" or "error".
    json request(const std::string& method, const json& params);
    /// The result of a successful request.
    json result(const std::string& method, const json& params);
    /// The error code of a failing request.
    int error_of(const std::string& method, const json& params);

    /// Initializes the server with @p options and returns its capabilities.
    json initialize(const json& options = nullptr, const json& capabilities = json::object());
    void open(const std::string& uri, const std::string& text);
    /// Replaces a range, given as lines and characters: {1, 2, 1, 5}.
    void edit(const std::string& uri, const std::vector<int>& range, const std::string& text);
    /// "2:4-6 error: the message" for each diagnostic that is published next for the document; lines count
    /// from 1.
    std::vector<std::string> diagnostics(const std::string& uri);

    /// Makes the server check changed documents and returns the messages that it has sent since the last
    /// call.
    std::vector<json> received();
    /// @p text after the last edit that the server has requested.
    [[nodiscard]] std::string applied(const std::string& uri, const std::string& text);

    [[nodiscard]] kvrmem::lsp::server& server() noexcept { return running; }

private:
    std::vector<json> messages; ///< received, but not yet returned
    kvrmem::lsp::server running;
    int last_id = 0;
};

/// @p text after @p edits of the protocol, whose positions count ASCII characters.
[[nodiscard]] std::string with_protocol_edits(const std::string& text, const json& edits);

/// {"line": ..., "character": ...}
[[nodiscard]] json position(int line, int character);
/// The parameters of a request about a position of a document.
[[nodiscard]] json at(const std::string& uri, int line, int character);

} // namespace lsp_tests
