#pragma once

#include <string>

namespace kvr_fuzz {

/// A token and the rest of the text after its delimiter.
struct plain_token {
    std::string token;
    std::string rest;
    std::string delimiter; ///< the character that ended the token; "" when none did

    friend bool operator==(const plain_token&, const plain_token&) = default;
};

/// The token before the first character that is one of @p delimiters.
[[nodiscard]] plain_token token_before_any_of(const std::string& text, const std::string& delimiters);

/// The token before the first occurrence of all of @p delimiter, found piece by piece: each piece ends at the
/// delimiter's first character, and only the piece before the last one is kept before the token.
[[nodiscard]] plain_token token_before_whole(const std::string& text, const std::string& delimiter);

} // namespace kvr_fuzz
