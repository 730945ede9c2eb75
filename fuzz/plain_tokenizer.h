#pragma once

#include <string>

namespace kvr_fuzz {

/// A token and the rest of the text after its delimiter.
struct plain_token {
    std::string token;
    std::string rest;
    std::string delimiter; ///< the character that ended the token; "" if none did

    friend bool operator==(const plain_token&, const plain_token&) = default;
};

/// The token before the first character of @p delimiters.
[[nodiscard]] plain_token token_before_any_of(const std::string& text, const std::string& delimiters);

/// The token before the first occurrence of the whole @p delimiter. The text is split into pieces at the
/// delimiter's first character; of these, only the piece before the last one is kept in front of the token.
[[nodiscard]] plain_token token_before_whole(const std::string& text, const std::string& delimiter);

} // namespace kvr_fuzz
