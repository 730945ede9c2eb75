#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kvrmem::lsp {

/// The most bytes of a message, of one that is skipped, and of the lines before it.
struct message_limits {
    std::size_t message = std::size_t{96} << 20U;
    std::uint64_t skipped = std::uint64_t{4} << 30U;
    std::size_t header = std::size_t{4} << 10U;
};

/// What was found in a stream.
struct framed_message {
    enum class kind : std::uint8_t {
        complete,
        bad_header, ///< no usable Content-Length; what follows the header is taken for the next header
        too_long,   ///< more than the limit; it is skipped
        endless     ///< too long to be skipped: nothing that follows is read
    } what = kind::complete;
    std::string text = {}; ///< of a complete one
};

/// Splits a stream of bytes into its messages, each after a header with its length:
///
///     Content-Length: 52\r\n\r\n{"jsonrpc":"2.0", ...
///
/// It keeps no more than one message, one header and what was fed last.
class message_splitter {
public:
    explicit message_splitter(const message_limits& limits_of_stream = {}) : limits(limits_of_stream) {}

    /// Takes the next bytes of the stream, cut anywhere.
    void feed(std::string_view bytes);
    /// The next message that is complete; nothing: more bytes are needed.
    [[nodiscard]] std::optional<framed_message> next();

private:
    [[nodiscard]] std::string_view waiting() const { return std::string_view(buffer).substr(done); }
    [[nodiscard]] std::optional<framed_message> take_header();
    [[nodiscard]] std::optional<framed_message> take_body();
    void skip_body();

    message_limits limits;
    std::string buffer;
    std::size_t done = 0;                  ///< bytes of it that are used up
    std::optional<std::size_t> body_bytes; ///< of the message whose header was read
    std::uint64_t bytes_to_skip = 0;
    bool header_is_too_long = false;
};

} // namespace kvrmem::lsp
