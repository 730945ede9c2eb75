#include "tools/kvrmem/lsp/json_rpc.h"

#include <fmt/format.h>

namespace kvrmem::lsp {

std::string text_of(const json& message) {
    return message.dump(-1, ' ', false, json::error_handler_t::replace);
}

const json& member(const json& object, const char* name) {
    static const json none;
    const auto found = object.is_object() ? object.find(name) : object.end();
    return found != object.end() ? *found : none;
}

const json& required(const json& object, const char* name) {
    const json& found = member(object, name);
    if (found.is_null()) {
        throw request_error(error_code::invalid_params, fmt::format("'{}' is missing", name));
    }
    return found;
}

const std::string& required_text(const json& object, const char* name) {
    const json& found = required(object, name);
    if (!found.is_string()) {
        throw request_error(error_code::invalid_params, fmt::format("'{}' is not a string", name));
    }
    return found.get_ref<const std::string&>();
}

std::uint64_t required_number(const json& object, const char* name) {
    const json& found = required(object, name);
    if (!found.is_number_unsigned()) {
        throw request_error(error_code::invalid_params, fmt::format("'{}' is not a natural number", name));
    }
    return found.get<std::uint64_t>();
}

} // namespace kvrmem::lsp
