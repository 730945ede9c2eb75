#include "tools/kvrmem/lsp/dispatcher.h"

#include <fmt/format.h>

#include <new>
#include <string_view>
#include <utility>

namespace kvrmem::lsp {

namespace {

/// Maximum nesting of objects and arrays; messages of the protocol are not nested deeper.
constexpr int deepest_nesting = 100;

/// Parses @p text as JSON; discarded if it is invalid. @p excess names an exceeded limit, else "".
json parsed(const std::string& text, std::size_t most_values, std::string_view& excess) {
    std::size_t values = 0;
    const auto within_limit = [&](int depth, json::parse_event_t /*event*/, json& /*value*/) {
        if (depth > deepest_nesting) {
            excess = "the message is nested too deeply";
        } else if (++values > 2 * most_values) { // most values have two events
            excess = "the message has too many values";
        }
        return excess.empty();
    };
    return json::parse(text, within_limit, false);
}

bool is_id(const json& id) {
    return id.is_number_integer() || id.is_string();
}

/// Returns the id for answering a faulty @p message; null if it has none.
json id_of(const json& message) {
    const json& id = member(message, "id");
    return is_id(id) ? id : json();
}

bool is_response(const json& message) {
    return message.contains("id") && !message.contains("method") &&
           (message.contains("result") || message.contains("error"));
}

/// Returns why @p message is not a valid request or notification; "" if it is valid.
std::string fault_of(const json& message) {
    if (!message.is_object()) {
        return message.is_array() ? "batches are not supported by the protocol"
                                  : "a message must be an object";
    }
    if (member(message, "jsonrpc") != "2.0") {
        return "jsonrpc must be 2.0";
    }
    if (!is_response(message) && !member(message, "method").is_string()) {
        return "a message must have a method";
    }
    if (message.contains("id") && !is_id(message["id"]) && !is_response(message)) {
        return "an id must be an integer or a string";
    }
    const json& params = member(message, "params");
    if (!params.is_null() && !params.is_structured()) {
        return "params must be an object or an array";
    }
    return "";
}

} // namespace

void dispatcher::on_request(const std::string& method, request_handler handler) {
    requests[method] = std::move(handler);
}

void dispatcher::on_notification(const std::string& method, notification_handler handler) {
    notifications[method] = std::move(handler);
}

void dispatcher::take(const framed_message& message) {
    if (message.what == framed_message::kind::bad_header) {
        answer_error(json(), error_code::parse_error, "a header without a usable Content-Length");
        return;
    }
    if (message.what == framed_message::kind::too_long) {
        answer_error(json(), error_code::invalid_request, "the message is too long");
        return;
    }
    if (message.what == framed_message::kind::endless) {
        answer_error(json(), error_code::invalid_request,
                     "the message is too long to be skipped: the session ends");
        state = session_state::ended;
        is_shut_down = false;
        return;
    }
    std::string_view excess;
    json content = parsed(message.text, most_values, excess);
    if (!excess.empty()) {
        answer_error(json(), error_code::invalid_request, std::string(excess));
    } else if (content.is_discarded()) {
        answer_error(json(), error_code::parse_error, "the message is not JSON");
    } else if (const std::string fault = fault_of(content); !fault.empty()) {
        answer_error(id_of(content), error_code::invalid_request, fault);
    } else if (!is_response(content)) {
        queue(std::move(content), message.text.size());
    }
}

void dispatcher::queue(json message, std::size_t bytes) {
    if (message["method"] == "$/cancelRequest" && !message.contains("id")) {
        cancel(member(member(message, "params"), "id"));
    } else {
        waiting.push_back({std::move(message), bytes});
        waiting_bytes += bytes;
    }
}

void dispatcher::cancel(const json& id) {
    for (queued_message& each : waiting) {
        if (is_id(id) && each.content.contains("id") && each.content["id"] == id) {
            each.is_cancelled = true;
            return;
        }
    }
}

bool dispatcher::handle_next() {
    if (waiting.empty() || has_ended()) {
        return false;
    }
    const queued_message message = std::move(waiting.front());
    waiting.pop_front();
    waiting_bytes -= message.bytes;
    if (message.content.contains("id")) {
        handle_request(message);
    } else {
        handle_notification(message.content["method"].get_ref<const std::string&>(),
                            member(message.content, "params"));
    }
    return true;
}

void dispatcher::handle_request(const queued_message& message) {
    const json& id = message.content["id"];
    if (message.is_cancelled) {
        answer_error(id, error_code::request_cancelled, "the request was cancelled");
        return;
    }
    const auto& method = message.content["method"].get_ref<const std::string&>();
    try {
        json result = result_of(method, member(message.content, "params"));
        send(text_of({{"jsonrpc", "2.0"}, {"id", id}, {"result", std::move(result)}}));
    } catch (const request_error& error) {
        answer_error(id, error.code(), error.what());
    } catch (const json::exception& error) {
        answer_error(id, error_code::invalid_params, error.what());
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& error) {
        answer_error(id, error_code::internal_error, error.what());
    }
}

json dispatcher::result_of(const std::string& method, const json& params) {
    require_session_for(method);
    if (method == "shutdown") {
        state = session_state::shut_down;
        is_shut_down = true;
        return {};
    }
    const auto handler = requests.find(method);
    if (handler == requests.end()) {
        throw request_error(error_code::method_not_found, fmt::format("there is no request '{}'", method));
    }
    json result = handler->second(params);
    if (method == "initialize") {
        state = session_state::running;
    }
    return result;
}

void dispatcher::require_session_for(const std::string& method) const {
    if (state == session_state::before && method != "initialize") {
        throw request_error(error_code::server_not_initialized, "the first request must be 'initialize'");
    }
    if (state == session_state::shut_down) {
        throw request_error(error_code::invalid_request, "the server was shut down");
    }
    if (state == session_state::running && method == "initialize") {
        throw request_error(error_code::invalid_request, "the server is already initialized");
    }
}

void dispatcher::handle_notification(const std::string& method, const json& params) {
    if (method == "exit") {
        state = session_state::ended;
        return;
    }
    const auto handler = notifications.find(method);
    if (state != session_state::running || handler == notifications.end()) {
        return;
    }
    try {
        handler->second(params);
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception&) { // notifications have no response
    }
}

void dispatcher::notify(const std::string& method, json params) const {
    send(text_of({{"jsonrpc", "2.0"}, {"method", method}, {"params", std::move(params)}}));
}

void dispatcher::request(const std::string& method, json params) {
    send(text_of({{"jsonrpc", "2.0"},
                  {"id", fmt::format("kvrmem-{}", ++requests_sent)},
                  {"method", method},
                  {"params", std::move(params)}}));
}

void dispatcher::answer_error(const json& id, error_code code, const std::string& message) const {
    send(text_of({{"jsonrpc", "2.0"},
                  {"id", id},
                  {"error", {{"code", static_cast<int>(code)}, {"message", message}}}}));
}

} // namespace kvrmem::lsp
