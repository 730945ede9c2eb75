#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kvrmem {

/// Why a word of a RIF file is none, and which of its characters are at fault.
struct rif_word_fault {
    bool is_too_wide; ///< else a character in it is no digit
    std::size_t begin;
    std::size_t length;
    std::string message;
};

/// Tells whether the words of a RIF file are words of the width that a person gave or, without one, of any
/// width that the tool takes.
class rif_word_judge {
public:
    explicit rif_word_judge(const std::optional<std::uint32_t>& width_of_person)
        : given_width(width_of_person) {}

    /// What is wrong with @p text; nothing when it is a word.
    [[nodiscard]] std::optional<rif_word_fault> judge(std::string_view text);

private:
    std::optional<std::uint32_t> given_width;
    std::string word;
};

} // namespace kvrmem
