#pragma once

#include "kvrimage/exchange/text_piece.h"
#include "kvrimage/formats/memory_file.h"
#include "tools/kvrmem/lsp/json_rpc.h"
#include "tools/kvrmem/lsp/settings.h"
#include "tools/kvrmem/lsp/text_buffer.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace kvrmem::lsp {

/// Returns the file name in @p uri, without its folder.
[[nodiscard]] std::string file_name_of(std::string_view uri);

/// The capabilities of a client.
struct client_abilities {
    position_encoding encoding = position_encoding::utf16;
    bool takes_versions = false; ///< of the documents to edit
};

/// A document open in the client, with its contents. Results are computed on demand, once for each state of
/// the text.
class document {
public:
    document(std::string uri, json version_of_text, std::string text, const client_abilities& of_client);

    [[nodiscard]] const std::string& uri() const noexcept { return name; }
    [[nodiscard]] const json& version() const noexcept { return number; }
    [[nodiscard]] const text_buffer& buffer() const noexcept { return lines; }
    [[nodiscard]] const std::string& text() const noexcept { return lines.text(); }
    [[nodiscard]] const file_settings& settings() const noexcept { return given; }

    /// Applies the changes of a notification in order.
    /// @throws request_error if one is invalid; the changes before it stay applied
    void change(const json& version, const json& changes);
    void use(const file_settings& of_file);

    /// Returns the result of check(). Its image has the readable part of a broken file.
    [[nodiscard]] const kvrimage::read_result& result();
    /// Returns the diagnostics of check() with all repairs.
    [[nodiscard]] const std::vector<kvrimage::diagnostic>& repairable();
    /// Returns the options used for reading the text, including its format.
    [[nodiscard]] const kvrimage::read_options& reading();
    /// Returns whether memory addresses differ from those in the text.
    [[nodiscard]] bool has_base();
    /// Returns whether there are errors, so that result() may lack words.
    [[nodiscard]] bool is_broken();
    /// Returns whether the text has a line-based format. Only such documents have features.
    [[nodiscard]] bool is_text();
    /// Returns whether diagnostics were not published since the last change.
    [[nodiscard]] bool needs_check() const noexcept { return !is_published; }
    void set_published() noexcept { is_published = true; }

    /// Calls @p take with the pieces of the text; with none if the format cannot find them.
    void for_each_piece(const kvrimage::piece_taker& take);
    /// Returns the word or address that contains @p offset or ends there, if any.
    [[nodiscard]] std::optional<kvrimage::text_piece> piece_at(std::size_t offset);
    /// Returns the place of the word that sets @p address last, within its line.
    [[nodiscard]] std::optional<kvrimage::place> place_of(std::uint64_t address);

    [[nodiscard]] json position(std::uint64_t offset) const;
    [[nodiscard]] json range(const kvrimage::span& where) const;
    /// Converts a range of the protocol to bytes.
    /// @throws request_error if it is invalid
    [[nodiscard]] kvrimage::span span_of(const json& range) const;
    /// Converts a position of the protocol to an offset.
    /// @throws request_error if it is invalid
    [[nodiscard]] std::size_t offset_of(const json& position) const;
    /// Converts edits to the form of the protocol.
    [[nodiscard]] json edits(const std::vector<kvrimage::text_edit>& changes) const;
    /// Converts edits to a WorkspaceEdit, with the version of the text if the client supports it.
    [[nodiscard]] json workspace_edit(const std::vector<kvrimage::text_edit>& changes) const;

private:
    void forget();

    std::string name;
    json number;
    text_buffer lines;
    client_abilities client;
    file_settings given;
    std::optional<kvrimage::read_result> checked;
    std::optional<std::vector<kvrimage::diagnostic>> with_repairs;
    kvrimage::read_options options;
    bool is_published = false;
};

} // namespace kvrmem::lsp
