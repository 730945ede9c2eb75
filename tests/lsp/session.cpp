#include "tests/lsp/session.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>

namespace lsp_tests {

namespace {

constexpr std::string_view header_end = "\r\n\r\n";

std::string place_text(const json& range) {
    const auto number = [](const json& place, const char* name) {
        return std::to_string(place.at(name).get<int>() + 1);
    };
    return number(range.at("start"), "line") + ":" + number(range.at("start"), "character") + "-" +
           number(range.at("end"), "line") + ":" + number(range.at("end"), "character");
}

std::size_t offset_in(const std::string& text, const json& place) {
    std::size_t offset = 0;
    for (int line = place.at("line").get<int>(); line > 0; --line) {
        offset = std::min(text.find('\n', offset), text.size() - 1) + 1;
    }
    return offset + place.at("character").get<std::size_t>();
}

} // namespace

std::string framed(std::string_view content) {
    return "Content-Length: " + std::to_string(content.size()) + std::string(header_end) +
           std::string(content);
}

session::session(const kvrmem::lsp::file_settings& of_command_line)
    : running(
          [this](const std::string& text) {
              const std::size_t end = text.find(header_end);
              messages.push_back(json::parse(text.substr(end + header_end.size())));
          },
          of_command_line) {}

void session::send(const json& message) {
    send_bytes(framed(message.dump()));
}

void session::notify(const std::string& method, const json& params) {
    send({{"jsonrpc", "2.0"}, {"method", method}, {"params", params}});
}

json session::request(const std::string& method, const json& params) {
    const int id = ++last_id;
    send({{"jsonrpc", "2.0"}, {"id", id}, {"method", method}, {"params", params}});
    const auto answer = std::ranges::find_if(messages, [id](const json& each) {
        return each.contains("id") && each["id"] == id && !each.contains("method");
    });
    if (answer == messages.end()) {
        throw std::runtime_error("no answer to " + method);
    }
    json found = *answer;
    messages.erase(answer);
    return found;
}

json session::result(const std::string& method, const json& params) {
    const json answer = request(method, params);
    EXPECT_TRUE(answer.contains("result")) << answer;
    return answer.value("result", json());
}

int session::error_of(const std::string& method, const json& params) {
    const json answer = request(method, params);
    EXPECT_TRUE(answer.contains("error")) << answer;
    return answer.contains("error") ? answer["error"]["code"].get<int>() : 0;
}

json session::initialize(const json& options, const json& capabilities) {
    json found = result("initialize", {{"capabilities", capabilities}, {"initializationOptions", options}});
    notify("initialized", json::object());
    return found["capabilities"];
}

void session::open(const std::string& uri, const std::string& text) {
    notify("textDocument/didOpen",
           {{"textDocument", {{"uri", uri}, {"languageId", "x"}, {"version", 1}, {"text", text}}}});
}

void session::edit(const std::string& uri, const std::vector<int>& range, const std::string& text) {
    notify("textDocument/didChange",
           {{"textDocument", {{"uri", uri}, {"version", 2}}},
            {"contentChanges",
             {{{"range", {{"start", position(range[0], range[1])}, {"end", position(range[2], range[3])}}},
               {"text", text}}}}});
}

std::vector<json> session::received() {
    running.check_changed();
    return std::exchange(messages, {});
}

std::vector<std::string> session::diagnostics(const std::string& uri) {
    std::vector<std::string> found;
    for (const json& each : received()) {
        if (each.value("method", "") == "textDocument/publishDiagnostics" && each["params"]["uri"] == uri) {
            found.clear();
            for (const json& one : each["params"]["diagnostics"]) {
                const std::string level = one["severity"] == 1   ? "error"
                                          : one["severity"] == 2 ? "warning"
                                                                 : "note";
                found.push_back(place_text(one["range"]) + " " + level + ": " +
                                one["message"].get<std::string>());
            }
        }
    }
    return found;
}

std::string session::applied(const std::string& uri, const std::string& text) {
    const auto found = std::ranges::find_if(
        messages, [](const json& each) { return each.value("method", "") == "workspace/applyEdit"; });
    if (found == messages.end()) {
        return "<no edit>";
    }
    const json changes = (*found)["params"]["edit"]["changes"][uri];
    messages.erase(found);
    return with_protocol_edits(text, changes);
}

std::string with_protocol_edits(const std::string& text, const json& edits) {
    std::string made = text;
    for (auto each = edits.rbegin(); each != edits.rend(); ++each) {
        const std::size_t begin = offset_in(text, (*each)["range"]["start"]);
        const std::size_t end = offset_in(text, (*each)["range"]["end"]);
        made.replace(begin, end - begin, (*each)["newText"].get<std::string>());
    }
    return made;
}

json position(int line, int character) {
    return {{"line", line}, {"character", character}};
}

json at(const std::string& uri, int line, int character) {
    return {{"textDocument", {{"uri", uri}}}, {"position", position(line, character)}};
}

} // namespace lsp_tests
