#pragma once

#include "kvrimage/diagnostics/diagnostic_list.h"
#include "kvrimage/formats/mif/mif_numbers.h"
#include "kvrimage/formats/mif/mif_parser.h"

#include <array>

namespace kvrimage {

/// What the settings of a MIF mean.
class mif_header {
public:
    explicit mif_header(std::string_view contents) : text(contents) {}

    /// Takes a setting that the parser has found, and puts what is wrong with it into @p list.
    void take(const mif_setting& found, diagnostic_list& list);
    /// Finds what the library reads otherwise in the settings, which all are known, up to CONTENT at @p
    /// content.
    void compare_with_kvr(std::uint64_t content, diagnostic_list& list) const;

    /// True when the setting is there, whatever is wrong with it.
    [[nodiscard]] bool has(mif_keyword keyword) const { return at(keyword).is_stated; }
    [[nodiscard]] const span& value_of(mif_keyword keyword) const { return at(keyword).first.value; }
    /// Nothing: not stated, or not to be understood.
    [[nodiscard]] std::optional<std::uint64_t> number(mif_keyword keyword) const {
        return at(keyword).number;
    }
    [[nodiscard]] radix radix_of(mif_keyword keyword) const {
        return at(keyword).meaning.value_or(radix::hex);
    }
    /// False for a radix that is stated and is none.
    [[nodiscard]] bool knows_radix(mif_keyword keyword) const {
        return at(keyword).meaning || !at(keyword).is_stated;
    }

private:
    struct stated {
        bool is_stated = false;
        mif_setting first;
        std::optional<std::uint64_t> number; ///< of a width or depth
        std::optional<radix> meaning;        ///< of a radix
    };

    [[nodiscard]] const stated& at(mif_keyword keyword) const {
        return settings[static_cast<std::size_t>(keyword)];
    }
    [[nodiscard]] stated& at(mif_keyword keyword) { return settings[static_cast<std::size_t>(keyword)]; }
    void read_number(stated& one, const mif_setting& found, diagnostic_list& list) const;
    void read_radix(stated& one, const mif_setting& found, diagnostic_list& list) const;
    void report_repetition(const mif_setting& found, diagnostic_list& list) const;
    [[nodiscard]] bool has_line_end(const mif_setting& one) const;
    [[nodiscard]] bool follows_on_line(const mif_setting& one) const;
    [[nodiscard]] diagnostic split_setting_of(const mif_setting& one) const;

    std::string_view text;
    std::array<stated, mif_keyword_count> settings;
};

} // namespace kvrimage
