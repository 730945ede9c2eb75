#pragma once

/// @file
/// The registry of reserved names.

#include "kvr/export.h"
#include "kvr/util/string_order.h"

#include <memory>
#include <string>

class KVR_UTIL_KEYWORD_REGR;

namespace kvr {
class added_keywords;
/// Returns the registry as the ordered map that it represents: each keyword in its first spelling with the
/// spelling last added. For inspection inside the library; not exported.
KVR_STRING_MAP keyword_map(const KVR_UTIL_KEYWORD_REGR& registry);
} // namespace kvr

/// Names that a generated module must not use for its own entities: library modules (plexfunctions) with
/// their sub-modules, netlist primitives, device atoms, and names added by the caller.
///
/// ASCII letter case is ignored, bytes above 127 are compared unchanged, and a name ends at its first NUL.
/// All registries share the fixed names, so creating a registry costs almost nothing and copying one only the
/// added names. Several threads may query one registry concurrently; adding requires exclusive access.
class KVR_API KVR_UTIL_KEYWORD_REGR {
public:
    /// Contains all fixed names.
    KVR_UTIL_KEYWORD_REGR();
    /// The copy is independent of @p other.
    KVR_UTIL_KEYWORD_REGR(const KVR_UTIL_KEYWORD_REGR& other);
    /// Drops all keywords that @p other does not have. No effect if it throws.
    KVR_UTIL_KEYWORD_REGR& operator=(const KVR_UTIL_KEYWORD_REGR& other);
    ~KVR_UTIL_KEYWORD_REGR();

    /// Makes @p keyword, which may be empty, a reserved name. An existing keyword keeps its first spelling as
    /// the key and gets the new one as its value. No effect if it throws.
    /// @throws std::bad_alloc
    void add_keyword(const std::string& keyword);

    /// Returns whether the whole @p name is a keyword; blanks count and there are no patterns. False for a
    /// null pointer. Allocates nothing.
    bool is_keyword(const char* name);

    /// @name Fixed names
    /// Add the fixed names of one list again. No other name becomes a keyword, and the value of each name is
    /// reset to its spelling in the list.
    /// @throws std::bad_alloc
    /// @{

    /// Library modules and their sub-modules.
    void add_plexfunction_names();
    /// Netlist primitives.
    void add_velkora_primitives();
    /// Device atoms.
    void add_wysiwyg_names();
    /// @}

private:
    friend KVR_STRING_MAP kvr::keyword_map(const KVR_UTIL_KEYWORD_REGR& registry);

    std::unique_ptr<kvr::added_keywords> added; ///< differences from the fixed names; null until needed
};
