// The tokenizer, compared with a second one, from the first token of a text to the last.

#include "kvr/util/tokenizer.h"

#include "fuzz/expectation.h"
#include "fuzz/input_bytes.h"
#include "fuzz/library_targets.h"
#include "fuzz/plain_tokenizer.h"
#include "fuzz/resource_limits.h"

#include <string>

namespace kvr_fuzz {

namespace {

void take_all_tokens_before_any_of(const std::string& text, const std::string& delimiters) {
    std::string rest = text;
    std::string put_together;
    while (!rest.empty()) {
        const plain_token expected = token_before_any_of(rest, delimiters);
        std::string other_rest = rest;
        std::string delimiter = "before";
        const std::string token = kvr_get_token_with_delimiter(other_rest, delimiters, delimiter);
        expect(plain_token{token, other_rest, delimiter} == expected,
               "a token with its delimiter is another one");
        expect(kvr_get_token(rest, delimiters, false) == token && rest == other_rest,
               "the two ways to a token differ");
        put_together += token + delimiter;
    }
    expect(put_together == text, "the tokens and their delimiters are not the text");
}

void take_all_tokens_before_whole(const std::string& text, const std::string& delimiter) {
    std::string rest = text;
    while (!rest.empty()) {
        const plain_token expected = token_before_whole(rest, delimiter);
        const std::string token = kvr_get_token(rest, delimiter, true);
        expect(token == expected.token && rest == expected.rest,
               "a token before a whole delimiter is another one");
    }
}

void take_token_at_index(const std::string& text, int index) {
    expect(kvr_get_token_at_index(text, -1 - index).empty(), "there is a token at a negative index");
    std::string rest = text;
    std::string expected;
    for (int taken = 0; taken <= index; ++taken) {
        const plain_token next = token_before_any_of(rest, "|");
        expected = next.token;
        rest = next.rest;
    }
    expect(kvr_get_token_at_index(text, index) == expected, "the token at an index is another one");
}

} // namespace

void try_tokenizer(std::string_view input) {
    const resource_limits limits(input.size());
    input_bytes settings(input);
    const int index = static_cast<int>(settings.number() % 32);
    const std::string delimiters = settings.line();
    const std::string text(settings.rest());
    take_all_tokens_before_any_of(text, delimiters);
    take_all_tokens_before_whole(text, delimiters);
    take_token_at_index(text, index);
}

} // namespace kvr_fuzz
