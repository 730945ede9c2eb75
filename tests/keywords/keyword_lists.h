#pragma once

#include <fstream>
#include <string>
#include <vector>

namespace kvr::test {

/// The lines of the list @p name in @p folder, in order, without their line ends.
inline std::vector<std::string> read_list(const std::string& folder, const std::string& name) {
    std::ifstream file(folder + "/" + name + ".txt");
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);) {
        if (!line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        if (!line.empty()) {
            lines.push_back(line);
        }
    }
    return lines;
}

/// The three lists of a folder.
struct keyword_lists {
    explicit keyword_lists(const std::string& folder)
        : plexfunctions(read_list(folder, "plexfunction_names")),
          primitives(read_list(folder, "velkora_primitive_names")),
          wysiwygs(read_list(folder, "wysiwyg_names")) {}

    /// Every line of the three lists, in the order in which a registry adds them.
    [[nodiscard]] std::vector<std::string> all() const {
        std::vector<std::string> names = plexfunctions;
        names.insert(names.end(), primitives.begin(), primitives.end());
        names.insert(names.end(), wysiwygs.begin(), wysiwygs.end());
        return names;
    }

    std::vector<std::string> plexfunctions;
    std::vector<std::string> primitives;
    std::vector<std::string> wysiwygs;
};

} // namespace kvr::test
