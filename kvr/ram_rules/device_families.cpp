#include "kvr/ram_rules/device_families.h"

#include "kvr/ram_rules/folded_key.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

namespace kvr {

namespace {

// The accepted spellings of each family, the identifier first.
constexpr std::string_view series_a1[] = {"SERIES_A1", "SERIES A1"};
constexpr std::string_view series_a1x[] = {"SERIES_A1X", "SERIES A1X", "SERIESA1X", "Thimble"};
constexpr std::string_view series_a1h[] = {"SERIES_A1H"};
constexpr std::string_view series_a2[] = {"SERIES_A2", "SERIES A2", "SERIESA2"};
constexpr std::string_view series_a2x[] = {"SERIES_A2X", "SERIES A2X"};
constexpr std::string_view series_a3[] = {"SERIES_A3", "SERIES A3", "SERIESA3", "Bobbin"};
constexpr std::string_view series_a4[] = {
    "SERIES_A4",      "SERIES A4",     "SERIESA4",       "SERIES_A4(LP)",   "SERIES A4 (LP)",
    "SERIESA4(LP)",   "SERIES_A4(HS)", "SERIES A4 (HS)", "SERIESA4(HS)",    "SERIES_A4(IO)",
    "SERIES A4 (IO)", "SERIESA4(IO)",  "SERIES_A4(DSP)", "SERIES A4 (DSP)", "SERIESA4(DSP)",
    "SERIES_A4(2)",   "SERIES A4 (2)", "SERIESA4(2)",    "Trivet",          "Trivet Plus"};
constexpr std::string_view series_a5[] = {
    "SERIES_A5",      "SERIES A5",       "SERIESA5",      "SERIES_A5(LP)", "SERIES A5 (LP)", "SERIESA5(LP)",
    "SERIES_A5(HS)",  "SERIES A5 (HS)",  "SERIESA5(HS)",  "SERIES_A5(IO)", "SERIES A5 (IO)", "SERIESA5(IO)",
    "SERIES_A5(DSP)", "SERIES A5 (DSP)", "SERIESA5(DSP)", "SERIES_A5(RT)", "SERIES A5 (RT)", "SERIESA5(RT)",
    "SERIES_A5(ES)",  "SERIES A5 (ES)",  "SERIESA5(ES)",  "SERIES_A5(2)",  "SERIES A5 (2)",  "SERIESA5(2)",
    "SERIES_A5(3)",   "SERIES A5 (3)",   "SERIESA5(3)",   "SERIES_A5(4)",  "SERIES A5 (4)",  "SERIESA5(4)",
    "SERIES_A5(5)",   "SERIES A5 (5)",   "SERIESA5(5)",   "Ladle",         "Ladle Plus",     "Ladle Twin"};
constexpr std::string_view series_b1[] = {"SERIES_B1", "SERIES B1", "SERIESB1", "Napkin"};
constexpr std::string_view series_b2[] = {"SERIES_B2", "SERIES B2", "SERIESB2", "Pencil"};
constexpr std::string_view series_b3[] = {"SERIES_B3", "SERIES B3", "SERIESB3", "Crayon", "Crayon Plus"};
constexpr std::string_view series_b3l[] = {"SERIES_B3L",      "SERIES B3L",    "SERIESB3L", "SERIES_B3L(LP)",
                                           "SERIES B3L (LP)", "SERIESB3L(LP)", "Eraser"};
constexpr std::string_view series_b4e[] = {"SERIES_B4E", "SERIES B4E", "SERIESB4E", "Doorknob"};
constexpr std::string_view series_b4x[] = {
    "SERIES_B4X",      "SERIES B4X",     "SERIESB4X",       "SERIES_B4X(LP)",   "SERIES B4X (LP)",
    "SERIESB4X(LP)",   "SERIES_B4X(HS)", "SERIES B4X (HS)", "SERIESB4X(HS)",    "SERIES_B4X(IO)",
    "SERIES B4X (IO)", "SERIESB4X(IO)",  "SERIES_B4X(DSP)", "SERIES B4X (DSP)", "SERIESB4X(DSP)",
    "Teaspoon",        "Teaspoon Plus"};
constexpr std::string_view series_b5[] = {
    "SERIES_B5",      "SERIES B5",       "SERIESB5",      "SERIES_B5(LP)", "SERIES B5 (LP)", "SERIESB5(LP)",
    "SERIES_B5(HS)",  "SERIES B5 (HS)",  "SERIESB5(HS)",  "SERIES_B5(IO)", "SERIES B5 (IO)", "SERIESB5(IO)",
    "SERIES_B5(DSP)", "SERIES B5 (DSP)", "SERIESB5(DSP)", "Wardrobe",      "Wardrobe Plus",  "Wardrobe Twin"};
constexpr std::string_view series_c1[] = {"SERIES_C1", "SERIES C1", "SERIESC1", "Button"};
constexpr std::string_view series_c2[] = {"SERIES_C2",     "SERIES C2",      "SERIESC2",
                                          "SERIES_C2(LP)", "SERIES C2 (LP)", "SERIESC2(LP)",
                                          "Zipper",        "Zipper Plus",    "Zipper Twin"};
constexpr std::string_view series_c2z[] = {"SERIES_C2Z", "SERIES C2Z", "SERIESC2Z", "Mitten"};
constexpr std::string_view series_c3[] = {
    "SERIES_C3",      "SERIES C3",     "SERIESC3",       "SERIES_C3(LP)", "SERIES C3 (LP)",
    "SERIESC3(LP)",   "SERIES_C3(HS)", "SERIES C3 (HS)", "SERIESC3(HS)",  "SERIES_C3(IO)",
    "SERIES C3 (IO)", "SERIESC3(IO)",  "Saucer",         "Saucer Plus"};
constexpr std::string_view series_c3z[] = {"SERIES_C3Z", "SERIES C3Z"};
constexpr std::string_view series_c4[] = {
    "SERIES_C4",      "SERIES C4",     "SERIESC4",       "SERIES_C4(LP)", "SERIES C4 (LP)",
    "SERIESC4(LP)",   "SERIES_C4(HS)", "SERIES C4 (HS)", "SERIESC4(HS)",  "SERIES_C4(IO)",
    "SERIES C4 (IO)", "SERIESC4(IO)",  "Kettle",         "Kettle Plus"};
constexpr std::string_view series_d1[] = {"SERIES_D1", "SERIES D1", "SERIESD1"};
constexpr std::string_view series_d2[] = {"SERIES_D2", "SERIES D2", "SERIESD2"};
constexpr std::string_view series_d3[] = {"SERIES_D3",      "SERIES D3",    "SERIESD3",      "SERIES_D3(LP)",
                                          "SERIES D3 (LP)", "SERIESD3(LP)", "SERIES_D3(HS)", "SERIES D3 (HS)",
                                          "SERIESD3(HS)",   "Cushion",      "Cushion Plus"};
constexpr std::string_view series_e1[] = {
    "SERIES_E1",      "SERIES E1",     "SERIESE1",       "SERIES_E1(LP)", "SERIES E1 (LP)",
    "SERIESE1(LP)",   "SERIES_E1(HS)", "SERIES E1 (HS)", "SERIESE1(HS)",  "SERIES_E1(IO)",
    "SERIES E1 (IO)", "SERIESE1(IO)",  "Hinge",          "Hinge Plus",    "Hinge Twin"};

constexpr family_group early = family_group::early;
constexpr family_group newer = family_group::newer;
constexpr family_group bidir_ratio8 = family_group::bidir_ratio8;

constexpr device_family families[] = {
    {early, series_a1},
    {early, series_a1x},
    {early, series_a1h},
    {bidir_ratio8, series_a2},
    {bidir_ratio8, series_a2x},
    {newer | bidir_ratio8, series_a3},
    {newer | bidir_ratio8, series_a4},
    {newer | bidir_ratio8, series_a5},
    {early, series_b1},
    {bidir_ratio8, series_b2},
    {newer | bidir_ratio8, series_b3},
    {newer | bidir_ratio8, series_b3l},
    {newer | bidir_ratio8, series_b4e},
    {newer | bidir_ratio8, series_b4x},
    {newer | bidir_ratio8, series_b5},
    {bidir_ratio8, series_c1},
    {newer | bidir_ratio8, series_c2},
    {newer | bidir_ratio8, series_c2z},
    {newer | bidir_ratio8, series_c3},
    {newer | bidir_ratio8, series_c3z},
    {newer | bidir_ratio8, series_c4},
    {bidir_ratio8, series_d1},
    {newer | bidir_ratio8, series_d2},
    {newer | bidir_ratio8, series_d3},
    {newer | bidir_ratio8, series_e1},
};

constexpr std::size_t spelling_count = [] {
    std::size_t count = 0;
    for (const device_family& family : families) {
        count += family.spellings.size();
    }
    return count;
}();

struct spelling {
    folded_key key;
    const device_family* family;
};

constexpr auto spellings = [] {
    std::array<spelling, spelling_count> all{};
    std::size_t next = 0;
    for (const device_family& family : families) {
        for (const std::string_view text : family.spellings) {
            all[next++] = {folded_key(text), &family};
        }
    }
    return all;
}();

static_assert(std::all_of(spellings.begin(), spellings.end(),
                          [](const spelling& each) { return each.key.size <= folded_key::longest_text; }));

// A closed hash table of indexes into `spellings`, built at compile time.
constexpr std::size_t slot_count = 1024;
constexpr std::uint8_t empty_slot = 0xFF;
static_assert(spelling_count < empty_slot, "the places fit a slot, and most slots are empty");

constexpr auto slots = [] {
    std::array<std::uint8_t, slot_count> table{};
    table.fill(empty_slot);
    for (std::size_t place = 0; place < spelling_count; ++place) {
        std::size_t slot = spellings[place].key.hash() % slot_count;
        while (table[slot] != empty_slot) {
            slot = (slot + 1) % slot_count;
        }
        table[slot] = static_cast<std::uint8_t>(place);
    }
    return table;
}();

} // namespace

std::span<const device_family> device_families() noexcept {
    return families;
}

const device_family* find_device_family(std::string_view text) noexcept {
    if (text.size() > folded_key::longest_text) {
        return nullptr;
    }
    const folded_key key(text);
    for (std::size_t slot = key.hash() % slot_count; slots[slot] != empty_slot;
         slot = (slot + 1) % slot_count) {
        const spelling& candidate = spellings[slots[slot]];
        if (candidate.key == key) {
            return candidate.family;
        }
    }
    return nullptr;
}

family_group family_groups(std::string_view text) noexcept {
    const device_family* family = find_device_family(text);
    return family != nullptr ? family->groups : family_group::none;
}

} // namespace kvr
