#include "tools/kvrmem/lsp/server.h"

#include "tools/kvrmem/lsp/features.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <array>
#include <utility>

namespace kvrmem::lsp {

namespace {

/// A request for one document.
struct document_request {
    const char* method;
    json (*answer)(document& of, const json& params);
};
constexpr std::array<document_request, 9> document_requests = {{
    {"textDocument/hover", hover_in},
    {"textDocument/definition", definition_in},
    {"textDocument/foldingRange", folding_ranges_in},
    {"textDocument/documentSymbol", symbols_in},
    {"textDocument/inlayHint", inlay_hints_in},
    {"textDocument/semanticTokens/full", semantic_tokens_in},
    {"textDocument/semanticTokens/range", semantic_tokens_in_range},
    {"textDocument/formatting", formatting_in},
    {"textDocument/codeAction", code_actions_in},
}};

constexpr int incremental_changes = 2;
constexpr int warning_message = 2;

json capabilities(position_encoding encoding) {
    return {
        {"positionEncoding", encoding == position_encoding::utf8 ? "utf-8" : "utf-16"},
        {"textDocumentSync", {{"openClose", true}, {"change", incremental_changes}}},
        {"hoverProvider", true},
        {"definitionProvider", true},
        {"foldingRangeProvider", true},
        {"documentSymbolProvider", true},
        {"workspaceSymbolProvider", true},
        {"inlayHintProvider", true},
        {"documentFormattingProvider", true},
        {"semanticTokensProvider", {{"legend", semantic_token_legend()}, {"full", true}, {"range", true}}},
        {"codeActionProvider", {{"codeActionKinds", {"quickfix", "source.fixAll", "refactor.rewrite"}}}},
        {"executeCommandProvider", {{"commands", command_names()}}},
    };
}

position_encoding encoding_for(const json& client) {
    const json& offered = member(member(client, "general"), "positionEncodings");
    const bool accepts_utf8 =
        offered.is_array() && std::ranges::find(offered, json("utf-8")) != offered.end();
    return accepts_utf8 ? position_encoding::utf8 : position_encoding::utf16;
}

client_abilities abilities_of(const json& client) {
    const json& edits = member(member(client, "workspace"), "workspaceEdit");
    return {encoding_for(client), member(edits, "documentChanges") == true};
}

} // namespace

server::server(dispatcher::message_sender sender, const file_settings& of_command_line)
    : messages([send = std::move(sender)](const std::string& text) {
          send(fmt::format("Content-Length: {}\r\n\r\n{}", text.size(), text));
      }) {
    given.of_all = of_command_line;
    add_requests();
    add_notifications();
}

void server::add_requests() {
    messages.on_request("initialize", [this](const json& params) { return initialize(params); });
    messages.on_request("workspace/symbol", [this](const json& params) { return find_symbols(params); });
    messages.on_request("workspace/executeCommand", [this](const json& params) { return execute(params); });
    for (const document_request& each : document_requests) {
        messages.on_request(each.method, [this, answer = each.answer](const json& params) {
            return answer(document_of(params), params);
        });
    }
}

void server::add_notifications() {
    messages.on_notification("textDocument/didOpen", [this](const json& params) { open(params); });
    messages.on_notification("textDocument/didChange", [this](const json& params) { change(params); });
    messages.on_notification("textDocument/didClose", [this](const json& params) { close(params); });
    messages.on_notification("workspace/didChangeConfiguration",
                             [this](const json& params) { configure(params); });
}

void server::receive(std::string_view bytes) {
    splitter.feed(bytes);
    while (const auto message = splitter.next()) {
        messages.take(*message);
    }
}

void server::take(std::string_view bytes) {
    receive(bytes);
    while (handle_next()) {
    }
}

void server::check_changed() {
    for (auto& [uri, changed] : documents) {
        if (changed.needs_check()) {
            json params = {{"uri", uri}, {"diagnostics", diagnostics_of(changed)}};
            if (!changed.version().is_null()) {
                params["version"] = changed.version();
            }
            messages.notify("textDocument/publishDiagnostics", std::move(params));
            changed.set_published();
        }
    }
}

json server::initialize(const json& params) {
    client = abilities_of(member(params, "capabilities"));
    use_settings(member(params, "initializationOptions"));
    return {{"capabilities", capabilities(client.encoding)},
            {"serverInfo", {{"name", "kvrmem"}, {"version", KVRMEM_VERSION}}}};
}

/// @param object the settings, or an object that contains them under the name of the tool
void server::use_settings(const json& object) {
    const json& own = member(object, "kvrmem");
    const json& chosen = own.is_null() ? object : own;
    if (chosen.is_null()) {
        return;
    }
    std::vector<std::string> faults;
    given = changed_settings(std::move(given), chosen, faults);
    if (!faults.empty()) {
        messages.notify("window/showMessage",
                        {{"type", warning_message}, {"message", fmt::format("{}", fmt::join(faults, "\n"))}});
    }
}

void server::configure(const json& params) {
    use_settings(member(member(params, "settings"), "kvrmem"));
    for (auto& [uri, each] : documents) {
        each.use(given.of(file_name_of(uri)));
    }
}

void server::open(const json& params) {
    const json& item = required(params, "textDocument");
    const std::string& uri = required_text(item, "uri");
    document opened(uri, member(item, "version"), required_text(item, "text"), client);
    opened.use(given.of(file_name_of(uri)));
    documents.insert_or_assign(uri, std::move(opened));
}

void server::change(const json& params) {
    document_of(params).change(member(required(params, "textDocument"), "version"),
                               required(params, "contentChanges"));
}

void server::close(const json& params) {
    const std::string uri = document_of(params).uri();
    documents.erase(uri);
    messages.notify("textDocument/publishDiagnostics", {{"uri", uri}, {"diagnostics", json::array()}});
}

document& server::document_of(const json& params) {
    return document_of_uri(required_text(required(params, "textDocument"), "uri"));
}

document& server::document_of_uri(const std::string& uri) {
    const auto found = documents.find(uri);
    if (found == documents.end()) {
        throw request_error(error_code::invalid_params, fmt::format("{} is not open", uri));
    }
    return found->second;
}

json server::find_symbols(const json& params) {
    std::vector<document*> all;
    all.reserve(documents.size());
    for (auto& [uri, each] : documents) {
        all.push_back(&each);
    }
    return symbols_of_address(all, required_text(params, "query"));
}

json server::execute(const json& params) {
    const std::string& command = required_text(params, "command");
    const json& arguments = required(params, "arguments");
    if (!arguments.is_array() || arguments.empty() || !arguments[0].is_string()) {
        throw request_error(error_code::invalid_params, "the first argument must be the URI of a document");
    }
    document& of = document_of_uri(arguments[0].get_ref<const std::string&>());
    const std::vector<kvrimage::text_edit> edits = edits_of_command(of, command, arguments);
    if (!edits.empty()) {
        messages.request("workspace/applyEdit", {{"label", command}, {"edit", of.workspace_edit(edits)}});
    }
    return {};
}

} // namespace kvrmem::lsp
