#pragma once

#include "kvr/keywords/folded_text.h"
#include "kvr/util/string_order.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>

namespace kvr {

/// The keywords that a registry has in addition to the fixed ones, and the new values of fixed ones. Keys
/// compare as in KVR_STRING_MAP: up to their first NUL, ASCII letter case ignored.
class added_keywords {
public:
    /// Allocates nothing.
    [[nodiscard]] bool contains(std::string_view name) const noexcept { return values_.contains(name); }

    /// An existing key keeps its spelling; its value becomes @p spelling. No effect when it throws.
    void set(std::string_view spelling) {
        values_.insert_or_assign(std::string(spelling), std::string(spelling));
    }

    void erase(std::string_view name) noexcept {
        if (const auto found = values_.find(name); found != values_.end()) {
            values_.erase(found);
        }
    }

    /// Adds every entry to @p map; existing keys keep their spelling and take the value.
    void copy_to(KVR_STRING_MAP& map) const {
        for (const auto& [key, value] : values_) {
            map[key] = value;
        }
    }

private:
    static std::string_view up_to_nul(std::string_view text) noexcept {
        return text.substr(0, text.find('\0'));
    }

    struct hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view text) const noexcept { return folded_hash(up_to_nul(text)); }
    };
    struct equal {
        using is_transparent = void;
        bool operator()(std::string_view left, std::string_view right) const noexcept {
            return equal_folded(up_to_nul(left), up_to_nul(right));
        }
    };

    std::unordered_map<std::string, std::string, hash, equal> values_;
};

} // namespace kvr
