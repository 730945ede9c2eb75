#include "kvr/util/list_file.h"

#include "kvr/util/file_system.h"
#include "kvr/util/letter_case.h"
#include "kvr/util/text_lines.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace kvr {

namespace {

constexpr std::size_t longest_list_line = 99;
constexpr std::string_view not_in_entries = "\t ";

struct list_entry {
    std::string name;
    std::string library;
    std::string extra;
};

struct list_maps {
    KVR_STRING_MAP& library;
    KVR_STRING_MAP& origin;
    KVR_STRING_MAP& extra;
};

bool says_nothing(std::string_view line) {
    return line.empty() || line.front() == '\r' || line.substr(0, 2) == "//";
}

// Returns nothing for a line that is not an entry.
std::optional<list_entry> parse_entry(const std::string& line) {
    constexpr std::size_t none = std::string::npos;
    const std::size_t equals = line.find('=');
    if (equals == none || equals == 0 || equals + 1 == line.size() || line.find('=', equals + 1) != none ||
        line.find_first_of(not_in_entries) != none) {
        return std::nullopt;
    }
    const std::size_t semicolon = line.find(';');
    if (semicolon < equals) {
        return std::nullopt;
    }
    return list_entry{line.substr(0, equals), line.substr(equals + 1, semicolon - equals - 1),
                      semicolon == none ? "" : line.substr(semicolon + 1)};
}

// Compares the text after the first "." of the whole path with ".dll", which has a "." of its own.
std::string library_path(const std::string& directory, const std::string& library) {
    std::string path = directory + library;
    const std::size_t dot = path.find('.');
    if (dot == std::string::npos || !equal_ignoring_case(std::string_view(path).substr(dot + 1), ".dll")) {
        path += ".dll";
    }
    return path;
}

struct list_reading {
    const std::string& directory;
    const std::string& list_path;
    list_maps maps;
    bool key_by_tdf_path;
};

void add_entry(const list_entry& entry, const list_reading& reading) {
    const std::string design_path = reading.directory + entry.name + ".tdf";
    if (!kvr_file_exists(design_path)) {
        return;
    }
    const std::string& key = reading.key_by_tdf_path ? design_path : entry.name;
    const std::string path = library_path(reading.directory, entry.library);
    reading.maps.library[key] = kvr_file_exists(path) ? path : entry.library;
    reading.maps.origin[design_path] = reading.list_path;
    if (!entry.extra.empty()) {
        reading.maps.extra[key] = entry.extra;
    }
}

bool process_line(const std::string& line, const list_reading& reading) {
    if (line.size() > longest_list_line) {
        return false;
    }
    if (says_nothing(line)) {
        return true;
    }
    const std::optional<list_entry> entry = parse_entry(line);
    if (entry) {
        add_entry(*entry, reading);
    }
    return entry.has_value();
}

} // namespace

} // namespace kvr

bool kvr_process_lst_file(const std::string& directory, const std::string& list_file_name,
                          KVR_STRING_MAP& library_map, KVR_STRING_MAP& origin_map, KVR_STRING_MAP& extra_map,
                          bool key_by_tdf_path) {
    std::string path = directory;
    add_trailing_slashes_to_directory_name(path);
    const std::string list_path = path + list_file_name;
    const kvr::list_reading reading{path, list_path, {library_map, origin_map, extra_map}, key_by_tdf_path};
    kvr::text_lines lines(list_path.c_str());
    bool well_formed = lines.is_open();
    std::string line;
    // One character more than allowed, to detect a longer line.
    while (well_formed && lines.next(line, kvr::longest_list_line + 1)) {
        well_formed = kvr::process_line(line, reading);
    }
    return well_formed && !lines.failed();
}
