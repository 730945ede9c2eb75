#pragma once

/// @file
/// Delimited lists.

#include "kvr/export.h"

#include <string>

/// Removes the next token from the front of @p rest, so that repeated calls iterate over a delimited list.
/// Nothing is trimmed, quoted or escaped, and letter case counts.
///
/// @param rest       set to the text after the delimiter; "" if none was found.
/// @param delimiters each character is a delimiter, and exactly one is consumed, so that adjacent ones
///                   enclose an empty token. "" is never found.
/// @param multi_char_delimiter true: all of @p delimiters is one delimiter instead.
/// @return the text before the delimiter, or all of @p rest if there is none. For a delimiter of several
///         characters, occurrences of its first character in the text matter: the token begins after the last
///         but one of those before the delimiter ("a,b,c,xd" at ",x" gives "b,c"); callers rely on it.
KVR_API std::string kvr_get_token(std::string& rest, const std::string& delimiters,
                                  bool multi_char_delimiter);

/// Same as kvr_get_token() with each character of @p delimiters a delimiter.
/// @param found_delimiter a string distinct from the others, set to the character that ended the token; "" if
///                        there was none.
KVR_API std::string kvr_get_token_with_delimiter(std::string& rest, const std::string& delimiters,
                                                 std::string& found_delimiter);

/// Returns token number @p index, from 0, of the list @p text, whose tokens are separated by "|"; "" for a
/// negative index and beyond the last token.
KVR_API std::string kvr_get_token_at_index(const std::string& text, int index);
