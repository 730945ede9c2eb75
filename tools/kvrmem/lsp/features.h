#pragma once

#include "kvrimage/image/address_range.h"
#include "tools/kvrmem/lsp/document.h"
#include "tools/kvrmem/lsp/json_rpc.h"

#include <span>
#include <string>
#include <vector>

namespace kvrmem::lsp {

// The features of the server for a document, with one source file each. @p params are those of the request.
// All functions throw request_error or json::exception for invalid requests.

/// Returns the diagnostics of check().
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
/// Returns the names of the token types, in the order of their numbers.
[[nodiscard]] json semantic_token_legend();
/// "textDocument/formatting": the canonical layout. Layout options in @p params are ignored.
[[nodiscard]] json formatting_in(document& of, const json& params);
/// "textDocument/codeAction"
[[nodiscard]] json code_actions_in(document& of, const json& params);

/// "workspace/symbol": the places in all documents that set the address in @p query.
[[nodiscard]] json symbols_of_address(std::span<document* const> all, const std::string& query);

/// Returns whether a command may set this many words of @p of. In a format without ranges each word needs a
/// text.
[[nodiscard]] bool may_set(document& of, const kvrimage::address_range& addresses);
/// Returns the commands for "workspace/executeCommand".
[[nodiscard]] std::vector<std::string> command_names();
/// Returns the edits that the command @p name makes in @p of.
/// @param arguments of the command, beginning with the URI of the document
/// @throws request_error if the command is unknown or fails
[[nodiscard]] std::vector<kvrimage::text_edit> edits_of_command(document& of, const std::string& name,
                                                                const json& arguments);

} // namespace kvrmem::lsp
