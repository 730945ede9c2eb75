#pragma once

#include "kvr/keywords/folded_text.h"
#include "kvr/util/string_order.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>

namespace kvr {

/// The keywords of a registry beyond the fixed ones, and new values of fixed ones. Keys compare as in
/// KVR_STRING_MAP: up to their first NUL, ignoring ASCII letter case.
class added_keywords {
public:
    /// Returns whether @p name is a key. Allocates nothing.
    [[nodiscard]] bool contains(std::string_view name) const noexcept { return values_.contains(name); }

    /// Adds a key or sets its value to @p spelling; an existing key keeps its spelling. No effect if it
    /// throws.
    void set(std::string_view spelling) {
        values_.insert_or_assign(std::string(spelling), std::string(spelling));
    }

    void erase(std::string_view name) noexcept {
        if (const auto found = values_.find(name); found != values_.end()) {
            values_.erase(found);
        }
    }

    /// Adds all entries to @p map; existing keys keep their spelling and get the value.
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
