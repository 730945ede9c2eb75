#include "tools/kvrmem/check/check_fault.h"

#include <algorithm>
#include <limits>
#include <string_view>
#include <tuple>

namespace kvrmem {

namespace {

std::uint64_t line_or_last(const check_fault& fault) {
    return fault.line != 0 ? fault.line : std::numeric_limits<std::uint64_t>::max();
}

bool stands_before(const check_fault& left, const check_fault& right) {
    return std::make_tuple(line_or_last(left), left.column) <
           std::make_tuple(line_or_last(right), right.column);
}

bool same_code(const char* left, const char* right) {
    return std::string_view(left) == right;
}

} // namespace

void fault_list::add(check_fault fault) {
    ++counts[index(fault.level)];
    if (has_room(fault.level) && (kept_kind == keeping::all || fault.mended)) {
        kept[index(fault.level)].push_back(std::move(fault));
    } else if (fault.level == severity::warning) {
        const auto known =
            std::find_if(dropped_warnings.begin(), dropped_warnings.end(),
                         [&fault](const auto& entry) { return same_code(entry.first, fault.code); });
        if (known != dropped_warnings.end()) {
            ++known->second;
        } else {
            dropped_warnings.emplace_back(fault.code, 1);
        }
    }
}

void fault_list::withdraw_warnings(const char* code) {
    auto& warnings = kept[index(severity::warning)];
    auto& number = counts[index(severity::warning)];
    number -= std::erase_if(warnings, [code](const auto& fault) { return same_code(fault.code, code); });
    for (auto& [dropped_code, dropped_count] : dropped_warnings) {
        if (same_code(dropped_code, code)) {
            number -= dropped_count;
            dropped_count = 0;
        }
    }
}

std::uint64_t fault_list::dropped(severity level) const noexcept {
    return counts[index(level)] - kept[index(level)].size();
}

std::vector<check_fault> fault_list::sorted() const {
    std::vector<check_fault> all = kept[index(severity::error)];
    const auto& warnings = kept[index(severity::warning)];
    all.insert(all.end(), warnings.begin(), warnings.end());
    std::stable_sort(all.begin(), all.end(), stands_before);
    return all;
}

} // namespace kvrmem
