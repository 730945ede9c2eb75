#include "tools/kvrmem/lsp/message_splitter.h"

#include "kvr/util/letter_case.h"
#include "tools/kvrmem/platform/trimmed_text.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <system_error>

namespace kvrmem::lsp {

namespace {

constexpr std::string_view end_of_header = "\r\n\r\n";
constexpr std::string_view end_of_field = "\r\n";

std::optional<std::uint64_t> number_in(std::string_view text) {
    std::uint64_t number = 0;
    const auto [end, fault] = std::from_chars(text.data(), text.data() + text.size(), number);
    return fault == std::errc() && end == text.data() + text.size() && !text.empty() ? std::optional(number)
                                                                                     : std::nullopt;
}

/// What the field Content-Length of @p header says, the last one of several.
std::optional<std::uint64_t> length_in(std::string_view header) {
    std::optional<std::uint64_t> length;
    while (!header.empty()) {
        const std::string_view field = header.substr(0, header.find(end_of_field));
        header.remove_prefix(std::min(header.size(), field.size() + end_of_field.size()));
        const std::size_t colon = std::min(field.find(':'), field.size());
        if (kvr::equal_ignoring_case(trimmed(field.substr(0, colon)), "content-length")) {
            length = number_in(trimmed(field.substr(std::min(colon + 1, field.size()))));
        }
    }
    return length;
}

} // namespace

void message_splitter::feed(std::string_view bytes) {
    buffer.erase(0, done);
    done = 0;
    buffer.append(bytes);
    skip_body();
}

std::optional<framed_message> message_splitter::next() {
    skip_body();
    if (bytes_to_skip != 0) {
        return std::nullopt;
    }
    if (!body_bytes) {
        if (auto fault = take_header()) {
            return fault;
        }
    }
    return body_bytes ? take_body() : std::nullopt;
}

/// A header leaves the length of its message, or is at fault; or it has not come yet.
std::optional<framed_message> message_splitter::take_header() {
    const std::string_view text = waiting();
    const std::size_t size = text.find(end_of_header);
    if (size == std::string_view::npos) {
        constexpr std::size_t begun_end = end_of_header.size() - 1; // of the last bytes, these may be its end
        if (text.size() > limits.header + begun_end) {
            header_is_too_long = true;
            done = buffer.size() - begun_end;
        }
        return std::nullopt;
    }
    const bool is_too_long = header_is_too_long || size > limits.header;
    const auto length = is_too_long ? std::nullopt : length_in(text.substr(0, size));
    header_is_too_long = false;
    done += size + end_of_header.size();
    if (!length) {
        return framed_message{framed_message::kind::bad_header};
    }
    if (*length > limits.skipped) {
        bytes_to_skip = std::numeric_limits<std::uint64_t>::max();
        return framed_message{framed_message::kind::endless};
    }
    if (*length > limits.message) {
        bytes_to_skip = *length;
        return framed_message{framed_message::kind::too_long};
    }
    body_bytes = static_cast<std::size_t>(*length);
    return std::nullopt;
}

std::optional<framed_message> message_splitter::take_body() {
    if (buffer.size() - done < *body_bytes) {
        return std::nullopt;
    }
    framed_message message{framed_message::kind::complete, buffer.substr(done, *body_bytes)};
    done += *body_bytes;
    body_bytes.reset();
    return message;
}

void message_splitter::skip_body() {
    const std::uint64_t skipped = std::min<std::uint64_t>(bytes_to_skip, buffer.size() - done);
    done += static_cast<std::size_t>(skipped);
    bytes_to_skip -= skipped;
}

} // namespace kvrmem::lsp
