#pragma once

#include "kvrimage/formats/memory_file.h"
#include "kvrimage/formats/text_piece.h"
#include "tools/kvrmem/lsp/json_rpc.h"
#include "tools/kvrmem/lsp/settings.h"
#include "tools/kvrmem/lsp/text_buffer.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace kvrmem::lsp {

/// The name of the file that @p uri is of, without its folder.
[[nodiscard]] std::string file_name_of(std::string_view uri);

/// What a client takes.
struct client_abilities {
    position_encoding encoding = position_encoding::utf16;
    bool takes_versions = false; ///< of the documents that are to be edited
};

/// A document that is open in the client, and what its text holds. What is asked for is found out when it is
/// asked for, once for each state of the text.
class document {
public:
    document(std::string uri, json version_of_text, std::string text, const client_abilities& of_client);

    [[nodiscard]] const std::string& uri() const noexcept { return name; }
    [[nodiscard]] const json& version() const noexcept { return number; }
    [[nodiscard]] const text_buffer& buffer() const noexcept { return lines; }
    [[nodiscard]] const std::string& text() const noexcept { return lines.text(); }
    [[nodiscard]] const file_settings& settings() const noexcept { return given; }

    /// Makes the changes of a notification, in order.
    /// @throws request_error when one is none, with those before it made
    void change(const json& version, const json& changes);
    void use(const file_settings& of_file);

    /// What check() finds, whose image holds what can be read of a broken file, too.
    [[nodiscard]] const kvrimage::read_result& result();
    /// The diagnostics of check() with all repairs.
    [[nodiscard]] const std::vector<kvrimage::diagnostic>& repairable();
    /// As the text was read: with the format that it has.
    [[nodiscard]] const kvrimage::read_options& reading();
    /// True when the addresses of the memory are not those of the text.
    [[nodiscard]] bool has_base();
    /// True when it has errors, so that result() may lack words.
    [[nodiscard]] bool is_broken();
    /// True for a text of a format that has lines: there is something to say of it.
    [[nodiscard]] bool is_text();
    /// True when diagnostics were not published since the last change.
    [[nodiscard]] bool needs_check() const noexcept { return !is_published; }
    void set_published() noexcept { is_published = true; }

    /// Calls @p take with the pieces of the text, none where the format has no way to find them.
    void for_each_piece(const kvrimage::piece_taker& take);
    /// The word or address that @p offset is in or follows; nothing where there is none.
    [[nodiscard]] std::optional<kvrimage::text_piece> piece_at(std::size_t offset);
    /// The piece of a word that sets @p address last, by the place of its line.
    [[nodiscard]] std::optional<kvrimage::place> place_of(std::uint64_t address);

    [[nodiscard]] json position(std::uint64_t offset) const;
    [[nodiscard]] json range(const kvrimage::span& where) const;
    /// The bytes of a range of the protocol.
    /// @throws request_error when it is none
    [[nodiscard]] kvrimage::span span_of(const json& range) const;
    /// The offset of a position of the protocol.
    /// @throws request_error when it is none
    [[nodiscard]] std::size_t offset_of(const json& position) const;
    /// The edits of the text as the protocol has them.
    [[nodiscard]] json edits(const std::vector<kvrimage::text_edit>& changes) const;
    /// The same as a WorkspaceEdit, with the version of the text that is edited where the client takes it.
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
