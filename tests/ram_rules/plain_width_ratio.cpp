#include "tests/ram_rules/plain_width_ratio.h"

#include <set>

namespace plain {

namespace {

bool is_early(const std::string& family) {
    static const std::set<std::string> members = {"SERIES_A1", "SERIES_A1X", "SERIES_A1H", "SERIES_B1"};
    return members.count(family) != 0;
}

bool is_newer(const std::string& family) {
    static const std::set<std::string> members = {"SERIES_A3",  "SERIES_A4",  "SERIES_A5",  "SERIES_B3",
                                                  "SERIES_B3L", "SERIES_B4E", "SERIES_B4X", "SERIES_B5",
                                                  "SERIES_C2",  "SERIES_C2Z", "SERIES_C3",  "SERIES_C3Z",
                                                  "SERIES_C4",  "SERIES_D2",  "SERIES_D3",  "SERIES_E1"};
    return members.count(family) != 0;
}

bool takes_ratio_8_both_ways(const std::string& family) {
    static const std::set<std::string> members = {"SERIES_A2", "SERIES_A2X", "SERIES_B2", "SERIES_C1",
                                                  "SERIES_D1"};
    return members.count(family) != 0 || is_newer(family);
}

long long ratio(long long a, long long b) {
    if (b > a) {
        return b / a;
    }
    return a / b;
}

bool divides(long long a, long long b) {
    if (a <= b) {
        return b % a == 0;
    }
    return a % b == 0;
}

bool aligned(long long a, long long b, long long byte_size) {
    return a % byte_size == 0 && b % byte_size == 0;
}

bool up_to_2(long long r) {
    return r == 1 || r == 2;
}

bool up_to_4(long long r) {
    return up_to_2(r) || r == 4;
}

bool up_to_8(long long r) {
    return up_to_4(r) || r == 8;
}

bool up_to_16(long long r) {
    return up_to_8(r) || r == 16;
}

bool up_to_32(long long r) {
    return up_to_16(r) || r == 32;
}

} // namespace

bool one_way_in_hardware(int width_a, int width_b, const std::string& block, const std::string& family,
                         bool large_block_possible, bool use_byte_enable, int byte_size) {
    if (width_a == 0 || width_b == 0) {
        return false;
    }
    if (use_byte_enable && byte_size == 0) {
        return false;
    }
    const long long r = ratio(width_a, width_b);
    const bool d = divides(width_a, width_b);
    const bool b = !use_byte_enable || aligned(width_a, width_b, byte_size);
    const bool n = use_byte_enable && (width_a > width_b || is_early(family));
    if (!is_newer(family)) {
        if (block == "KBLK-B") {
            return (n ? up_to_4(r) : up_to_32(r)) && b && d;
        }
        if (block == "KBLK-G") {
            return up_to_8(r) && b && d;
        }
        if (block == "KBLK-A") {
            return (n ? up_to_2(r) : up_to_16(r)) && d;
        }
        if (block == "AUTO") {
            if (large_block_possible) {
                return up_to_8(r) && b && d;
            }
            if (use_byte_enable && width_a > width_b) {
                return up_to_4(r) && b && d;
            }
            return up_to_32(r) && b && d;
        }
        return false;
    }
    if (block == "KBLK-L") {
        return width_a == width_b;
    }
    if (block == "KBLK-C" || block == "KBLK-E" || block == "KBLK-D" || block == "AUTO") {
        return (n ? up_to_4(r) : up_to_32(r)) && b && d;
    }
    if (block == "KBLK-G" || block == "KBLK-F") {
        return up_to_8(r) && b && d;
    }
    return false;
}

bool one_way(int width_a, int width_b, const std::string& block, const std::string& family,
             bool large_block_possible, bool use_byte_enable, int byte_size) {
    if (use_byte_enable && byte_size == 0) {
        return false;
    }
    if (one_way_in_hardware(width_a, width_b, block, family, large_block_possible, use_byte_enable,
                            byte_size)) {
        return true;
    }
    if (use_byte_enable && width_a < width_b) {
        return one_way_in_hardware(width_a, width_b, block, family, large_block_possible, false, 8);
    }
    return false;
}

bool two_way(int width_a, int width_b, const std::string& block, const std::string& family,
             bool large_block_possible, bool byte_enable_a, bool byte_enable_b, int byte_size) {
    if (width_a == 0 || width_b == 0) {
        return false;
    }
    if ((byte_enable_a || byte_enable_b) && byte_size == 0) {
        return false;
    }
    const long long r = ratio(width_a, width_b);
    const bool d = divides(width_a, width_b);
    const bool b2 = (!byte_enable_a && !byte_enable_b) || aligned(width_a, width_b, byte_size);
    const bool n2 = (byte_enable_a && (width_a > width_b || is_early(family))) ||
                    (byte_enable_b && (width_b > width_a || is_early(family)));
    const bool generic = n2 ? up_to_2(r) : up_to_16(r);
    const bool automatic_large = block == "AUTO" && large_block_possible;
    bool ratio_allowed = generic;
    if (!is_newer(family)) {
        if (block == "KBLK-G" || automatic_large) {
            ratio_allowed = up_to_8(r);
            const bool enables_on_narrower_port =
                (width_a > width_b && byte_enable_b) || (width_b > width_a && byte_enable_a);
            if (r == 8 && enables_on_narrower_port && !takes_ratio_8_both_ways(family)) {
                ratio_allowed = false;
            }
        }
    } else if (block == "KBLK-G" || block == "KBLK-F" || automatic_large) {
        ratio_allowed = up_to_4(r);
    }
    return ratio_allowed && b2 && d;
}

} // namespace plain
