#include "tests/models/message_splitter_operations.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <optional>
#include <stdexcept>

namespace kvr_test {

namespace {

using kvrmem::lsp::framed_message;
using kvrmem::lsp::message_splitter;

constexpr std::size_t longest_stream = 3000;

std::string shown_message(const framed_message& message) {
    switch (message.what) {
    case framed_message::kind::complete:
        return message.text;
    case framed_message::kind::bad_header:
        return "<bad header>";
    case framed_message::kind::too_long:
        return "<too long>";
    default:
        return "<endless>";
    }
}

std::string trimmed_field(std::string text) {
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t')) {
        text.pop_back();
    }
    text.erase(0, std::min(text.find_first_not_of(" \t"), text.size()));
    return text;
}

/// The number in the last field Content-Length of @p header; no value if there is none or if it is not a
/// number.
std::optional<std::uint64_t> plain_length(std::string header) {
    std::optional<std::uint64_t> length;
    header += "\r\n";
    for (std::size_t end = 0; (end = header.find("\r\n")) != std::string::npos; header.erase(0, end + 2)) {
        const std::string field = header.substr(0, end);
        const std::size_t colon = std::min(field.find(':'), field.size());
        std::string name = trimmed_field(field.substr(0, colon));
        for (char& letter : name) {
            letter = static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
        }
        if (name == "content-length") {
            const std::string digits = trimmed_field(field.substr(std::min(colon + 1, field.size())));
            const bool is_number =
                !digits.empty() && digits.find_first_not_of("0123456789") == std::string::npos;
            constexpr std::size_t most_digits = 19; // the numbers in this test have two
            length =
                is_number && digits.size() <= most_digits ? std::optional(std::stoull(digits)) : std::nullopt;
        }
    }
    return length;
}

} // namespace

std::vector<std::string> message_splitter_operations::plain_messages() const {
    std::vector<std::string> messages;
    for (std::string_view rest = stream;;) {
        const std::size_t header = rest.find("\r\n\r\n");
        if (header == std::string_view::npos) {
            return messages;
        }
        const auto length =
            header > limits.header ? std::nullopt : plain_length(std::string(rest.substr(0, header)));
        rest.remove_prefix(header + 4);
        if (!length) {
            messages.emplace_back("<bad header>");
        } else if (*length > limits.skipped) {
            messages.emplace_back("<endless>");
            return messages;
        } else if (*length > limits.message) {
            messages.emplace_back("<too long>");
            rest.remove_prefix(std::min<std::size_t>(*length, rest.size()));
        } else if (*length > rest.size()) {
            return messages;
        } else {
            messages.emplace_back(rest.substr(0, *length));
            rest.remove_prefix(*length);
        }
    }
}

std::string message_splitter_operations::more_bytes() {
    constexpr std::array<std::string_view, 9> pieces = {
        "\r\n", "\r\n\r\n", "\r", "\n", "Content-Length: ", "content-length:\t3 \r\n", "A: b\r\n", "{}", "x"};
    if (chosen.once_in(3)) {
        return std::string(chosen.one_of(pieces));
    }
    // Sizes around the limits for a message, for a skipped message and for a header.
    const std::uint32_t size = chosen.once_in(40)  ? 91
                               : chosen.once_in(6) ? chosen.between(38, 90)
                                                   : chosen.below(12);
    const std::size_t field = chosen.once_in(4) ? chosen.between(30, 70) : 0;
    return fmt::format("{}Content-Length: {}\r\n\r\n{}",
                       field != 0 ? fmt::format("{:a>{}}\r\n", "", field) : "", size, std::string(size, '{'));
}

void message_splitter_operations::step() {
    if (stream.size() > longest_stream) {
        compare_all();
        stream.clear();
        found.clear();
        splitter = message_splitter(limits);
    }
    const std::string added = more_bytes();
    stream += added;
    for (std::string_view rest = added; !rest.empty();) {
        const std::size_t size =
            chosen.once_in(2) ? rest.size() : chosen.between(1, static_cast<std::uint32_t>(rest.size()));
        splitter.feed(rest.substr(0, size));
        rest.remove_prefix(size);
        if (!chosen.once_in(4)) { // otherwise they wait
            split_messages();
        }
    }
}

void message_splitter_operations::split_messages() {
    while (const auto message = splitter.next()) {
        found.push_back(shown_message(*message));
    }
}

void message_splitter_operations::compare_all() {
    split_messages();
    const std::vector<std::string> expected = plain_messages();
    for (std::size_t index = 0; index < std::max(found.size(), expected.size()); ++index) {
        const std::string one = index < found.size() ? found[index] : "nothing";
        const std::string other = index < expected.size() ? expected[index] : "nothing";
        if (one != other) {
            throw std::logic_error(
                fmt::format("message {} is '{}', not '{}', of the stream {}", index, one, other, stream));
        }
    }
}

} // namespace kvr_test
