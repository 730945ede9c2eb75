#pragma once

#include "kvrimage/image/address_range.h"
#include "tools/kvrmem/lsp/document.h"
#include "tools/kvrmem/lsp/json_rpc.h"

#include <span>
#include <string>
#include <vector>

namespace kvrmem::lsp {

// What the server has to say of a document, a file for each feature. @p params are those of the request. All
// throw request_error, json::exception for what is no request of the protocol.

/// The diagnostics of check().
[[nodiscard]] json diagnostics_of(document& of);

/// "textDocument/hover"
[[nodiscard]] json hover_in(document& of, const json& params);
/// "textDocument/definition": the place that sets the word at the cursor last.
[[nodiscard]] json definition_in(document& of, const json& params);
/// "textDocument/foldingRange"
[[nodiscard]] json folding_ranges_in(document& of, const json& params);
/// "textDocument/documentSymbol"
[[nodiscard]] json symbols_in(document& of, const json& params);
/// "textDocument/inlayHint"
[[nodiscard]] json inlay_hints_in(document& of, const json& params);
/// "textDocument/semanticTokens/full", and "…/range"
///@{
[[nodiscard]] json semantic_tokens_in(document& of, const json& params);
[[nodiscard]] json semantic_tokens_in_range(document& of, const json& params);
///@}
/// What the numbers of semantic tokens mean.
[[nodiscard]] json semantic_token_legend();
/// "textDocument/formatting": the canonical layout, whatever options of layout are in @p params.
[[nodiscard]] json formatting_in(document& of, const json& params);
/// "textDocument/codeAction"
[[nodiscard]] json code_actions_in(document& of, const json& params);

/// "workspace/symbol": the places in all documents that set the address that @p query is.
[[nodiscard]] json symbols_of_address(std::span<document* const> all, const std::string& query);

/// True when a command may set so many words of @p of: those of a format without ranges get a text each.
[[nodiscard]] bool may_set(document& of, const kvrimage::address_range& addresses);
/// The commands that "workspace/executeCommand" takes.
[[nodiscard]] std::vector<std::string> command_names();
/// The edits of @p of that the command @p name makes.
/// @param arguments of the command, the URI of the document first
/// @throws request_error when there is no such command, or it cannot be carried out
[[nodiscard]] std::vector<kvrimage::text_edit> edits_of_command(document& of, const std::string& name,
                                                                const json& arguments);

} // namespace kvrmem::lsp
