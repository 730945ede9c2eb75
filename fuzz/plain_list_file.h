#pragma once

#include "kvr/util/string_order.h"

#include <string>
#include <string_view>

namespace kvr_fuzz {

/// The contents of a list file.
struct list_file_reading {
    bool well_formed = true;
    KVR_STRING_MAP libraries;
    KVR_STRING_MAP origins;
    KVR_STRING_MAP extras;

    friend bool operator==(const list_file_reading&, const list_file_reading&) = default;
};

/// A second reader of list files: @p text is at @p list_path in @p folder, whose name ends in a slash.
[[nodiscard]] list_file_reading read_list_plainly(std::string_view text, const std::string& folder,
                                                  const std::string& list_path, bool key_by_path);

} // namespace kvr_fuzz
