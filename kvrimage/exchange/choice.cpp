#include "kvrimage/exchange/choice.h"

#include <algorithm>

namespace kvrimage {

std::optional<std::string_view> chosen(std::span<const choice> choices, std::string_view name) {
    const auto found = std::find_if(choices.rbegin(), choices.rend(),
                                    [name](const choice& each) { return each.name == name; });
    return found != choices.rend() ? std::optional<std::string_view>(found->value) : std::nullopt;
}

} // namespace kvrimage
