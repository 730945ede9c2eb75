#pragma once

#include <nlohmann/json.hpp>

#include <exception>
#include <string>
#include <utility>

namespace kvrmem::lsp {

/// A message or a part of it. Members are found by name in logarithmic time, so a client cannot slow it down
/// with many members.
using json = nlohmann::json;

/// The error codes of responses.
enum class error_code : int {
    parse_error = -32700,
    invalid_request = -32600,
    method_not_found = -32601,
    invalid_params = -32602,
    internal_error = -32603,
    server_not_initialized = -32002,
    request_cancelled = -32800,
    request_failed = -32803,
};

/// The error of a response; ends the request.
class request_error : public std::exception {
public:
    request_error(error_code number, std::string message) : which(number), text(std::move(message)) {}
    [[nodiscard]] error_code code() const noexcept { return which; }
    [[nodiscard]] const char* what() const noexcept override { return text.c_str(); }

private:
    error_code which;
    std::string text;
};

/// Returns @p message as UTF-8 text. Invalid bytes become U+FFFD.
[[nodiscard]] std::string text_of(const json& message);

/// Returns the member @p name of @p object; null if it is missing or if @p object is not an object.
[[nodiscard]] const json& member(const json& object, const char* name);

/// Return a required member of a request.
/// @throws request_error (invalid parameters) if @p object is not an object or lacks a member of this type
///@{
[[nodiscard]] const json& required(const json& object, const char* name);
[[nodiscard]] const std::string& required_text(const json& object, const char* name);
[[nodiscard]] std::uint64_t required_number(const json& object, const char* name);
///@}

} // namespace kvrmem::lsp
