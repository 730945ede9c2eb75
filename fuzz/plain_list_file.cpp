#include "fuzz/plain_list_file.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <filesystem>
#include <optional>
#include <system_error>

namespace kvr_fuzz {

namespace {

struct plain_entry {
    std::string name;
    std::string library;
    std::string extra;
};

/// A path ends at its first NUL.
bool exists(const std::string& path) {
    std::error_code ignored;
    return std::filesystem::exists(path.c_str(), ignored);
}

bool is_ignored(std::string_view line) {
    return line.empty() || line[0] == '\r' || line.starts_with("//");
}

std::optional<plain_entry> entry_in(std::string_view line) {
    constexpr std::size_t too_long = 100;
    const auto equals = std::count(line.begin(), line.end(), '=');
    const std::size_t at = line.find('=');
    const std::size_t semicolon = std::min(line.find(';'), line.size());
    const bool is_entry = line.size() < too_long && equals == 1 && at > 0 && at + 1 < line.size() &&
                          semicolon > at && line.find_first_of(" \t") == line.npos;
    if (!is_entry) {
        return std::nullopt;
    }
    return plain_entry{std::string(line.substr(0, at)), std::string(line.substr(at + 1, semicolon - at - 1)),
                       std::string(line.substr(std::min(semicolon + 1, line.size())))};
}

std::string with_extension(const std::string& path) {
    std::string extension = path.substr(std::min(path.find('.'), path.size() - 1) + 1);
    std::transform(extension.begin(), extension.end(), extension.begin(),
                   [](unsigned char character) { return static_cast<char>(std::tolower(character)); });
    return path.find('.') != path.npos && extension == ".dll" ? path : path + ".dll";
}

} // namespace

list_file_reading read_list_plainly(std::string_view text, const std::string& folder,
                                    const std::string& list_path, bool key_by_path) {
    list_file_reading reading;
    while (reading.well_formed && !text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        const std::string_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        if (is_ignored(line) && line.size() < 100) {
            continue;
        }
        const std::optional<plain_entry> entry = entry_in(line);
        reading.well_formed = entry.has_value();
        if (!entry || !exists(folder + entry->name + ".tdf")) {
            continue;
        }
        const std::string design = folder + entry->name + ".tdf";
        const std::string& key = key_by_path ? design : entry->name;
        const std::string library = with_extension(folder + entry->library);
        reading.libraries[key] = exists(library) ? library : entry->library;
        reading.origins[design] = list_path;
        if (!entry->extra.empty()) {
            reading.extras[key] = entry->extra;
        }
    }
    return reading;
}

} // namespace kvr_fuzz
