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
/// The registry as the ordered map that it represents: under each keyword in its first spelling, the
/// spelling it was last added with. For inspection inside the library; not exported.
KVR_STRING_MAP keyword_map(const KVR_UTIL_KEYWORD_REGR& registry);
} // namespace kvr

/// The names that a generated module must not give to its own entities: library modules (plexfunctions)
/// with their sub-modules, netlist primitives, device atoms, and those that the caller adds.
///
/// ASCII letter case never counts, bytes above 127 count as they are, and a name ends at its first NUL.
/// The fixed names are constants that all registries share, so a registry costs almost nothing to make,
/// and a copy only what was added. Several threads may query one registry at once; adding needs it alone.
class KVR_API KVR_UTIL_KEYWORD_REGR {
public:
    /// Holds all fixed names from the start.
    KVR_UTIL_KEYWORD_REGR();
    /// Independent of @p other from then on.
    KVR_UTIL_KEYWORD_REGR(const KVR_UTIL_KEYWORD_REGR& other);
    /// Drops every keyword that @p other does not have. Without effect when it throws.
    KVR_UTIL_KEYWORD_REGR& operator=(const KVR_UTIL_KEYWORD_REGR& other);
    ~KVR_UTIL_KEYWORD_REGR();

    /// Makes @p keyword, which may be empty, a reserved name. An existing keyword keeps its first
    /// spelling as the key and takes the new one as its value. Without effect when it throws.
    /// @throws std::bad_alloc
    void add_keyword(const std::string& keyword);

    /// True when @p name as a whole is a keyword: no part of one, no pattern, blanks count. False for a
    /// null pointer. Allocates nothing.
    bool is_keyword(const char* name);

    /// @name Fixed names
    /// These add the fixed names of their list once more, which were there from the start: no other name
    /// becomes a keyword, and each has the spelling of the list as its value again.
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

    std::unique_ptr<kvr::added_keywords> added; ///< what differs from the fixed names; null until needed
};
