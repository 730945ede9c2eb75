#include "tools/kvrmem/memory/file_format.h"

#include <algorithm>
#include <array>

namespace kvrmem {

namespace {

struct format_name {
    std::string_view name;
    KVR_FILE_TYPES format;
};

/// Also the extensions of file names.
constexpr std::array<format_name, 4> format_names = {
    {{"mif", FILE_TYPE_MIF}, {"hex", FILE_TYPE_HEX}, {"ihex", FILE_TYPE_HEX}, {"rif", FILE_TYPE_RIF}}};

struct radix_entry {
    std::string_view name;
    std::string_view title;
    KVR_MEMORY_RADIXES radix;
};

constexpr std::array<radix_entry, 5> radixes = {{{"bin", "BIN", RADIX_BIN},
                                                 {"oct", "OCT", RADIX_OCT},
                                                 {"dec", "DEC", RADIX_DEC},
                                                 {"uns", "UNS", RADIX_UNS},
                                                 {"hex", "HEX", RADIX_HEX}}};

char lower(char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

bool same_name(std::string_view left, std::string_view right) {
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](char a, char b) { return lower(a) == lower(b); });
}

} // namespace

std::optional<KVR_FILE_TYPES> format_of_name(std::string_view name) {
    for (const format_name& entry : format_names) {
        if (same_name(entry.name, name)) {
            return entry.format;
        }
    }
    return std::nullopt;
}

std::optional<KVR_FILE_TYPES> format_of_path(std::string_view path) {
    const std::size_t dot = path.find_last_of("./");
    if (dot == std::string_view::npos || path[dot] != '.') {
        return std::nullopt;
    }
    return format_of_name(path.substr(dot + 1));
}

std::string_view format_title(KVR_FILE_TYPES format) {
    switch (format) {
    case FILE_TYPE_MIF:
        return "MIF";
    case FILE_TYPE_HEX:
        return "Intel HEX";
    default:
        return "RIF";
    }
}

std::optional<KVR_MEMORY_RADIXES> radix_of_name(std::string_view name) {
    for (const radix_entry& entry : radixes) {
        if (same_name(entry.name, name)) {
            return entry.radix;
        }
    }
    return std::nullopt;
}

std::string_view radix_title(KVR_MEMORY_RADIXES radix) {
    for (const radix_entry& entry : radixes) {
        if (entry.radix == radix) {
            return entry.title;
        }
    }
    return "none";
}

} // namespace kvrmem
