#pragma once

#include "kvrimage/formats/format.h"
#include "kvrimage/formats/mif/mif_parser.h"

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string_view>
#include <vector>

namespace kvrimage_tests {

/// A plain reader of valid MIF files, which uses the parser: a model for the tests of writing and editing.
struct mif_model : kvrimage::mif_sink {
    explicit mif_model(std::string_view file) : contents(file) { kvrimage::parse_mif(file, *this); }

    void setting(const kvrimage::mif_setting& found) override;
    void statement(const kvrimage::mif_statement& found) override;
    void end(const kvrimage::span& keyword, const kvrimage::span& semicolon) override;

    /// The same words in the form of read().
    [[nodiscard]] kvrimage::read_result result() const;

    std::string_view contents;
    std::uint32_t width = 8;
    std::uint64_t depth = 16;
    kvrimage::radix address_radix = kvrimage::radix::hex;
    kvrimage::radix data_radix = kvrimage::radix::hex;
    std::map<std::uint64_t, kvrimage::word> words;
    std::map<std::uint64_t, kvrimage::span> setters; ///< for each address, the last statement that sets it
    std::set<std::uint64_t> single_addresses;
    bool sets_twice = false; ///< an address has two statements with the same value
    std::optional<kvrimage::span> end_keyword;
};

} // namespace kvrimage_tests
