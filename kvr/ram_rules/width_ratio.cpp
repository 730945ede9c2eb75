#include "kvr/ram_rules/width_ratio.h"

#include "kvr/ram_rules/device_families.h"
#include "kvr/ram_rules/folded_key.h"

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <string_view>

namespace kvr {

namespace {

// A set of ratios below 64: bit r represents ratio r.
using ratio_set = std::uint64_t;

constexpr ratio_set ratios(std::initializer_list<int> members) {
    ratio_set set = 0;
    for (const int ratio : members) {
        set |= ratio_set{1} << ratio;
    }
    return set;
}

constexpr ratio_set never = ratios({});
constexpr ratio_set s1 = ratios({1});
constexpr ratio_set s2 = ratios({1, 2});
constexpr ratio_set s4 = ratios({1, 2, 4});
constexpr ratio_set s8 = ratios({1, 2, 4, 8});
constexpr ratio_set s16 = ratios({1, 2, 4, 8, 16});
constexpr ratio_set s32 = ratios({1, 2, 4, 8, 16, 32});

// The widths of the two ports, neither of them 0. In 64 bits, quotients and remainders do not overflow.
struct port_widths {
    std::int64_t a;
    std::int64_t b;

    [[nodiscard]] std::int64_t wider() const noexcept { return a > b ? a : b; }
    [[nodiscard]] std::int64_t narrower() const noexcept { return a > b ? b : a; }
};

bool has_ratio_in(ratio_set set, const port_widths& widths) noexcept {
    const std::int64_t ratio = widths.wider() / widths.narrower();
    const bool exact = widths.wider() % widths.narrower() == 0;
    return exact && ratio >= 0 && ratio < 64 && (set >> ratio & 1U) != 0;
}

bool are_multiples_of(std::int64_t size, const port_widths& widths) noexcept {
    return widths.a % size == 0 && widths.b % size == 0;
}

enum class ram_block : std::uint8_t {
    unknown,
    automatic,
    automatic_large, // "AUTO" if a large block is possible
    kblk_a,
    kblk_b,
    kblk_c,
    kblk_d,
    kblk_e,
    kblk_f,
    kblk_g,
    kblk_l,
};
constexpr std::size_t ram_block_count = 11;

struct block_name {
    constexpr block_name(std::string_view text, ram_block named) : key(text), block(named) {}

    folded_key key;
    ram_block block;
};

constexpr block_name block_names[] = {
    {"AUTO", ram_block::automatic}, {"KBLK-A", ram_block::kblk_a}, {"KBLK-B", ram_block::kblk_b},
    {"KBLK-C", ram_block::kblk_c},  {"KBLK-D", ram_block::kblk_d}, {"KBLK-E", ram_block::kblk_e},
    {"KBLK-F", ram_block::kblk_f},  {"KBLK-G", ram_block::kblk_g}, {"KBLK-L", ram_block::kblk_l},
};

ram_block find_ram_block(std::string_view text, bool large_block_possible) noexcept {
    if (text.size() > folded_key::longest_text) {
        return ram_block::unknown;
    }
    const folded_key key(text);
    for (const block_name& name : block_names) {
        if (name.key == key) {
            const bool large = name.block == ram_block::automatic && large_block_possible;
            return large ? ram_block::automatic_large : name.block;
        }
    }
    return ram_block::unknown;
}

// Checks that there is one rule for each block type, at its index.
template <class rule>
constexpr bool in_block_order(const rule (&rules)[ram_block_count]) {
    for (std::size_t i = 0; i < ram_block_count; ++i) {
        if (static_cast<std::size_t>(rules[i].block) != i) {
            return false;
        }
    }
    return true;
}

template <class rule>
constexpr const rule& rule_of(ram_block block, const rule (&rules)[ram_block_count]) noexcept {
    return rules[static_cast<std::size_t>(block)];
}

// The restriction of the ratios by byte enables.
enum class narrowing : std::uint8_t {
    wider_a,          // if port A is the wider one
    wider_a_or_early, // the same, and always for an early family
};

struct one_way_rule {
    ram_block block;
    ratio_set narrowed;
    ratio_set otherwise;
    narrowing narrowed_by;
    bool byte_aligned; // with byte enables, widths must be multiples of the byte size
};

constexpr narrowing wider_a = narrowing::wider_a;
constexpr narrowing wider_a_or_early = narrowing::wider_a_or_early;
constexpr bool byte_aligned = true;
constexpr bool any_alignment = false;

// "AUTO" is not restricted for early families, and "KBLK-A" allows any alignment; callers rely on both.
constexpr one_way_rule older_one_way_rules[] = {
    // clang-format off
    {ram_block::unknown,         never, never, wider_a_or_early, byte_aligned},
    {ram_block::automatic,       s4,    s32,   wider_a,          byte_aligned},
    {ram_block::automatic_large, s8,    s8,    wider_a,          byte_aligned},
    {ram_block::kblk_a,          s2,    s16,   wider_a_or_early, any_alignment},
    {ram_block::kblk_b,          s4,    s32,   wider_a_or_early, byte_aligned},
    {ram_block::kblk_c,          never, never, wider_a_or_early, byte_aligned},
    {ram_block::kblk_d,          never, never, wider_a_or_early, byte_aligned},
    {ram_block::kblk_e,          never, never, wider_a_or_early, byte_aligned},
    {ram_block::kblk_f,          never, never, wider_a_or_early, byte_aligned},
    {ram_block::kblk_g,          s8,    s8,    wider_a_or_early, byte_aligned},
    {ram_block::kblk_l,          never, never, wider_a_or_early, byte_aligned},
    // clang-format on
};
static_assert(in_block_order(older_one_way_rules));

constexpr one_way_rule newer_one_way_rules[] = {
    // clang-format off
    {ram_block::unknown,         never, never, wider_a_or_early, byte_aligned},
    {ram_block::automatic,       s4,    s32,   wider_a_or_early, byte_aligned},
    {ram_block::automatic_large, s4,    s32,   wider_a_or_early, byte_aligned},
    {ram_block::kblk_a,          never, never, wider_a_or_early, byte_aligned},
    {ram_block::kblk_b,          never, never, wider_a_or_early, byte_aligned},
    {ram_block::kblk_c,          s4,    s32,   wider_a_or_early, byte_aligned},
    {ram_block::kblk_d,          s4,    s32,   wider_a_or_early, byte_aligned},
    {ram_block::kblk_e,          s4,    s32,   wider_a_or_early, byte_aligned},
    {ram_block::kblk_f,          s8,    s8,    wider_a_or_early, byte_aligned},
    {ram_block::kblk_g,          s8,    s8,    wider_a_or_early, byte_aligned},
    {ram_block::kblk_l,          s1,    s1,    wider_a_or_early, any_alignment},
    // clang-format on
};
static_assert(in_block_order(newer_one_way_rules));

bool is_narrowed(narrowing narrowed_by, const port_widths& widths, family_group groups) noexcept {
    return widths.a > widths.b || (narrowed_by == wider_a_or_early && includes(groups, family_group::early));
}

bool one_way_allows(const one_way_rule& rule, const port_widths& widths, family_group groups,
                    bool use_byte_enable, int byte_size) noexcept {
    if (!use_byte_enable) {
        return has_ratio_in(rule.otherwise, widths);
    }
    const bool narrowed = is_narrowed(rule.narrowed_by, widths, groups);
    return has_ratio_in(narrowed ? rule.narrowed : rule.otherwise, widths) &&
           (!rule.byte_aligned || are_multiples_of(byte_size, widths));
}

struct two_way_rule {
    ram_block block;
    ratio_set narrowed; // for byte enables on the wider port, or on any port of an early family
    ratio_set otherwise;
    bool ratio8_by_group; // with byte enables on the narrower port, ratio 8 requires the group bidir_ratio8
};

constexpr bool ratio8_by_group = true;
constexpr bool any_family = false;

// An unknown block type, or one that the family does not have, is not an error here; callers rely on it.
constexpr two_way_rule older_two_way_rules[] = {
    // clang-format off
    {ram_block::unknown,         s2, s16, any_family},
    {ram_block::automatic,       s2, s16, any_family},
    {ram_block::automatic_large, s8, s8,  ratio8_by_group},
    {ram_block::kblk_a,          s2, s16, any_family},
    {ram_block::kblk_b,          s2, s16, any_family},
    {ram_block::kblk_c,          s2, s16, any_family},
    {ram_block::kblk_d,          s2, s16, any_family},
    {ram_block::kblk_e,          s2, s16, any_family},
    {ram_block::kblk_f,          s2, s16, any_family},
    {ram_block::kblk_g,          s8, s8,  ratio8_by_group},
    {ram_block::kblk_l,          s2, s16, any_family},
    // clang-format on
};
static_assert(in_block_order(older_two_way_rules));

constexpr two_way_rule newer_two_way_rules[] = {
    // clang-format off
    {ram_block::unknown,         s2, s16, any_family},
    {ram_block::automatic,       s2, s16, any_family},
    {ram_block::automatic_large, s4, s4,  any_family},
    {ram_block::kblk_a,          s2, s16, any_family},
    {ram_block::kblk_b,          s2, s16, any_family},
    {ram_block::kblk_c,          s2, s16, any_family},
    {ram_block::kblk_d,          s2, s16, any_family},
    {ram_block::kblk_e,          s2, s16, any_family},
    {ram_block::kblk_f,          s4, s4,  any_family},
    {ram_block::kblk_g,          s4, s4,  any_family},
    {ram_block::kblk_l,          s2, s16, any_family},
    // clang-format on
};
static_assert(in_block_order(newer_two_way_rules));

struct byte_enables {
    bool a;
    bool b;
};

bool on_wider_port(byte_enables enables, const port_widths& widths) noexcept {
    return (enables.a && widths.a > widths.b) || (enables.b && widths.b > widths.a);
}

bool on_narrower_port(byte_enables enables, const port_widths& widths) noexcept {
    return (enables.a && widths.a < widths.b) || (enables.b && widths.b < widths.a);
}

bool two_way_allows(const two_way_rule& rule, const port_widths& widths, family_group groups,
                    byte_enables enables, int byte_size) noexcept {
    if (!enables.a && !enables.b) {
        return has_ratio_in(rule.otherwise, widths);
    }
    const bool narrowed = on_wider_port(enables, widths) || includes(groups, family_group::early);
    const bool without_8 = rule.ratio8_by_group && on_narrower_port(enables, widths) &&
                           !includes(groups, family_group::bidir_ratio8);
    const ratio_set set = (narrowed ? rule.narrowed : rule.otherwise) & ~(without_8 ? ratios({8}) : never);
    return has_ratio_in(set, widths) && are_multiples_of(byte_size, widths);
}

bool can_be_divided(int width_a, int width_b, bool any_byte_enable, int byte_size) noexcept {
    return width_a != 0 && width_b != 0 && (!any_byte_enable || byte_size != 0);
}

} // namespace

} // namespace kvr

bool is_valid_dual_port_memory_width_ratio_in_hardware(int width_a, int width_b,
                                                       const std::string& ram_block_type,
                                                       const std::string& device_family,
                                                       bool large_block_possible, bool use_byte_enable,
                                                       int byte_size) {
    using namespace kvr;
    if (!can_be_divided(width_a, width_b, use_byte_enable, byte_size)) {
        return false;
    }
    const ram_block block = find_ram_block(ram_block_type, large_block_possible);
    const family_group groups = family_groups(device_family);
    const auto& rules = includes(groups, family_group::newer) ? newer_one_way_rules : older_one_way_rules;
    return one_way_allows(rule_of(block, rules), {width_a, width_b}, groups, use_byte_enable, byte_size);
}

bool is_valid_dual_port_memory_width_ratio(int width_a, int width_b, const std::string& ram_block_type,
                                           const std::string& device_family, bool large_block_possible,
                                           bool use_byte_enable, int byte_size) {
    if (is_valid_dual_port_memory_width_ratio_in_hardware(width_a, width_b, ram_block_type, device_family,
                                                          large_block_possible, use_byte_enable, byte_size)) {
        return true;
    }
    const bool retry = use_byte_enable && byte_size != 0 && width_a < width_b;
    return retry && is_valid_dual_port_memory_width_ratio_in_hardware(
                        width_a, width_b, ram_block_type, device_family, large_block_possible, false, 8);
}

bool is_valid_bidir_dual_port_memory_width_ratio(int width_a, int width_b, const std::string& ram_block_type,
                                                 const std::string& device_family, bool large_block_possible,
                                                 bool byte_enable_a, bool byte_enable_b, int byte_size) {
    using namespace kvr;
    if (!can_be_divided(width_a, width_b, byte_enable_a || byte_enable_b, byte_size)) {
        return false;
    }
    const ram_block block = find_ram_block(ram_block_type, large_block_possible);
    const family_group groups = family_groups(device_family);
    const auto& rules = includes(groups, family_group::newer) ? newer_two_way_rules : older_two_way_rules;
    return two_way_allows(rule_of(block, rules), {width_a, width_b}, groups, {byte_enable_a, byte_enable_b},
                          byte_size);
}
