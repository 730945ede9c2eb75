#include "tools/kvrmem/operations/operation.h"

#include <algorithm>

namespace kvrmem {

reshape_words* last_reshape(std::vector<operation>& operations) {
    const auto last = std::find_if(operations.rbegin(), operations.rend(), [](const operation& each) {
        return std::holds_alternative<reshape_words>(each.what);
    });
    return last != operations.rend() ? &std::get<reshape_words>(last->what) : nullptr;
}

bool change_words(const std::vector<operation>& operations) {
    return !std::ranges::all_of(
        operations, [](const operation& each) { return std::holds_alternative<fill_rest>(each.what); });
}

bool move_addresses(const std::vector<operation>& operations) {
    return std::ranges::any_of(operations, [](const operation& each) {
        return std::holds_alternative<move_words>(each.what) ||
               std::holds_alternative<reshape_words>(each.what) ||
               std::holds_alternative<protect_words>(each.what) ||
               std::holds_alternative<strip_protection>(each.what);
    });
}

} // namespace kvrmem
