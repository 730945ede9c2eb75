// Byte streams as a client may send them to the language server.

#include "fuzz/expectation.h"
#include "fuzz/tool_targets.h"
#include "tools/kvrmem/lsp/server.h"

#include <string>

namespace kvr_fuzz {

namespace {

/// @p input with each line as a message. A line that begins with "=" gets no header: it contains its own one.
std::string stream_of(std::string_view input) {
    std::string stream;
    while (!input.empty()) {
        const std::string_view line = input.substr(0, input.find('\n'));
        input.remove_prefix(line.size() == input.size() ? line.size() : line.size() + 1);
        if (line.starts_with('=')) {
            stream.append(line.substr(1)).append("\r\n");
        } else {
            stream.append("Content-Length: ")
                .append(std::to_string(line.size()))
                .append("\r\n\r\n")
                .append(line);
        }
    }
    return stream;
}

void expect_message(const std::string& text) {
    constexpr std::string_view header_end = "\r\n\r\n";
    const std::size_t end = text.find(header_end);
    expect(end != std::string::npos, "a message without a header");
    const auto message = kvrmem::lsp::json::parse(text.substr(end + header_end.size()), nullptr, false);
    expect(message.is_object() && message["jsonrpc"] == "2.0", "what the server sends is no message");
    const auto& error = kvrmem::lsp::member(message, "error");
    expect(error.is_null() || error["code"] != static_cast<int>(kvrmem::lsp::error_code::internal_error),
           "the server reports an internal error");
}

} // namespace

void try_language_server(std::string_view input) {
    kvrmem::lsp::server server(expect_message, {});
    const std::string stream = stream_of(input);
    // In two parts, so that a change is checked while others follow.
    server.take(std::string_view(stream).substr(0, stream.size() / 2));
    server.check_changed();
    server.take(std::string_view(stream).substr(stream.size() / 2));
    server.check_changed();
}

} // namespace kvr_fuzz
