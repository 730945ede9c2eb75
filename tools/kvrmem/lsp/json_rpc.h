#pragma once

#include <nlohmann/json.hpp>

#include <exception>
#include <string>
#include <utility>

namespace kvrmem::lsp {

/// A message or a part of one. Members are found by their names in logarithmic time, however many a client
/// sends.
using json = nlohmann::json;

/// What an error response says by its number.
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

/// Ends a request: the error of its response.
class request_error : public std::exception {
public:
    request_error(error_code number, std::string message) : which(number), text(std::move(message)) {}
    [[nodiscard]] error_code code() const noexcept { return which; }
    [[nodiscard]] const char* what() const noexcept override { return text.c_str(); }

private:
    error_code which;
    std::string text;
};

/// @p message as text in UTF-8, with U+FFFD for what is none in it.
[[nodiscard]] std::string text_of(const json& message);

/// The member @p name of @p object; null where there is none, or that is no object.
[[nodiscard]] const json& member(const json& object, const char* name);

/// Members that a request needs.
/// @throws request_error (invalid parameters) when there is none of that type, or @p object is none
///@{
[[nodiscard]] const json& required(const json& object, const char* name);
[[nodiscard]] const std::string& required_text(const json& object, const char* name);
[[nodiscard]] std::uint64_t required_number(const json& object, const char* name);
///@}

} // namespace kvrmem::lsp
