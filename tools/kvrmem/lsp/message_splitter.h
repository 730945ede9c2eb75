#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kvrmem::lsp {

/// The maximum bytes of a message, of a skipped message, and of a header.
struct message_limits {
    std::size_t message = std::size_t{96} << 20U;
    std::uint64_t skipped = std::uint64_t{4} << 30U;
    std::size_t header = std::size_t{4} << 10U;
};

/// The next item in a stream.
struct framed_message {
    enum class kind : std::uint8_t {
        complete,
        bad_header, ///< no valid Content-Length; the following bytes are parsed as the next header
        too_long,   ///< above the limit; skipped
        endless     ///< too long to skip; nothing more is read
    } what = kind::complete;
    std::string text = {}; ///< of a complete message
};

/// Splits a stream of bytes into messages, each preceded by a header with its length:
///
///     Content-Length: 52\r\n\r\n{"jsonrpc":"2.0", ...
///
/// Buffers at most one message, one header and the bytes of the last feed().
class message_splitter {
public:
    explicit message_splitter(const message_limits& limits_of_stream = {}) : limits(limits_of_stream) {}

    /// Adds the next bytes of the stream, split anywhere.
    void feed(std::string_view bytes);
    /// Returns the next complete message; nothing if more bytes are needed.
    [[nodiscard]] std::optional<framed_message> next();

private:
    [[nodiscard]] std::string_view waiting() const { return std::string_view(buffer).substr(done); }
    [[nodiscard]] std::optional<framed_message> take_header();
    [[nodiscard]] std::optional<framed_message> take_body();
    void skip_body();

    message_limits limits;
    std::string buffer;
    std::size_t done = 0;                  ///< bytes of it already consumed
    std::optional<std::size_t> body_bytes; ///< of the message whose header was read
    std::uint64_t bytes_to_skip = 0;
    bool header_is_too_long = false;
};

} // namespace kvrmem::lsp
