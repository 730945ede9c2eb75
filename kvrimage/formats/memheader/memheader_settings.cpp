#include "kvrimage/formats/memheader/memheader_settings.h"

#include "kvr/util/letter_case.h"
#include "kvrimage/image/memory_image.h"
#include "kvrimage/image/word.h"

#include <algorithm>
#include <array>

namespace kvrimage {

namespace {

constexpr auto memheader_settings = std::to_array<memheader_setting>({
    {memheader_setting_name::format, "Format", 0, 0, "Bin, Hex or AddrHex"},
    {memheader_setting_name::depth, "Depth", 1, deepest_memory, "a decimal number from 1 to 4294967296"},
    {memheader_setting_name::width, "Width", 1, widest_word, "a decimal number from 1 to 1048576"},
    {memheader_setting_name::address_radix, "AddrRadix", 0, 3,
     "0 (binary), 1 (octal), 2 (decimal) or 3 (hexadecimal)"},
    {memheader_setting_name::data_radix, "DataRadix", 0, 3,
     "0 (binary), 1 (octal), 2 (decimal) or 3 (hexadecimal)"},
});
static_assert(memheader_settings.size() == memheader_setting_count);

constexpr auto memheader_layouts = std::to_array<memheader_layout>({
    {"Bin", radix::bin, false},
    {"Hex", radix::hex, false},
    {"AddrHex", radix::hex, true},
});

/// Returns the entry of @p table with this name.
template <class Table>
const typename Table::value_type* of_memheader_name(const Table& table, std::string_view name) noexcept {
    const auto* const found = std::ranges::find_if(
        table, [name](const auto& each) { return kvr::equal_ignoring_case(name, each.name); });
    return found != table.end() ? &*found : nullptr;
}

} // namespace

const memheader_setting& memheader_setting_of(memheader_setting_name name) noexcept {
    return memheader_settings[static_cast<std::size_t>(name)];
}

const memheader_setting* memheader_setting_of(std::string_view name) noexcept {
    return of_memheader_name(memheader_settings, name);
}

const memheader_layout* memheader_layout_of(std::string_view name) noexcept {
    return of_memheader_name(memheader_layouts, name);
}

} // namespace kvrimage
