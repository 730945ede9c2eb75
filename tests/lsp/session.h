#pragma once

#include "tools/kvrmem/lsp/json_rpc.h"
#include "tools/kvrmem/lsp/server.h"

#include <string>
#include <string_view>
#include <vector>

namespace lsp_tests {

using kvrmem::lsp::json;

/// @p content after its header.
[[nodiscard]] std::string framed(std::string_view content);

/// A client and a server in one process.
class session {
public:
    explicit session(const kvrmem::lsp::file_settings& of_command_line = {});

    /// Sends text as it is.
    void send_bytes(std::string_view bytes) { running.take(bytes); }
    void send(const json& message);
    void notify(const std::string& method, const json& params);
    /// The response to a request: with "result" or "error".
    json request(const std::string& method, const json& params);
    /// The result of one that succeeds.
    json result(const std::string& method, const json& params);
    /// The error number of one that does not.
    int error_of(const std::string& method, const json& params);

    /// Initializes the server with @p options; its capabilities.
    json initialize(const json& options = nullptr, const json& capabilities = json::object());
    void open(const std::string& uri, const std::string& text);
    /// Replaces a range of line and character: {1, 2, 1, 5}.
    void edit(const std::string& uri, const std::vector<int>& range, const std::string& text);
    /// "2:4-6 error: the message" for what is published next for the document; lines from 1.
    std::vector<std::string> diagnostics(const std::string& uri);

    /// Makes the server check, and takes what it has sent until now.
    std::vector<json> received();
    /// The edit that the server has asked for last, made in @p text.
    [[nodiscard]] std::string applied(const std::string& uri, const std::string& text);

    [[nodiscard]] kvrmem::lsp::server& server() noexcept { return running; }

private:
    std::vector<json> messages; ///< that were not looked at
    kvrmem::lsp::server running;
    int last_id = 0;
};

/// @p edits of the protocol made in @p text, whose positions count ASCII characters.
[[nodiscard]] std::string with_protocol_edits(const std::string& text, const json& edits);

/// {"line": ..., "character": ...}
[[nodiscard]] json position(int line, int character);
/// The parameters of a request on a document at a place.
[[nodiscard]] json at(const std::string& uri, int line, int character);

} // namespace lsp_tests
