#pragma once

#include "kvrimage/files/replacement_file.h"
#include "tests/kvrimage/files/test_folder.h"
#include "tests/models/choices.h"
#include "tests/models/file_permissions.h"

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kvr_test {

/// Writes several files of a folder at the same time and completes or abandons them, while other files appear
/// and disappear. Compares the folder with the expected contents: at each moment, the old ones or the new
/// ones.
class replacement_file_operations {
public:
    /// @p source must outlive it.
    explicit replacement_file_operations(choices& source) : chosen(source) {}

    /// @throws std::logic_error that describes the difference and names the operation
    void step();
    /// @throws std::logic_error
    void compare_all() const;

private:
    struct stored_file {
        std::string contents;
        file_permissions permissions;
    };
    struct unfinished {
        std::string name;
        std::string contents;
        std::optional<file_permissions> permissions; ///< of the replaced file; no value for a new file
        std::unique_ptr<kvrimage::replacement_file> file;
    };

    void begin();
    void write();
    void commit();
    void give_up();
    void commit_together();
    void remove();
    void change_permissions();
    void write_in_place();

    [[nodiscard]] std::string any_name();
    [[nodiscard]] std::string any_contents();
    [[nodiscard]] unfinished take_any();
    [[nodiscard]] std::optional<file_permissions> permissions_of(const std::string& name) const;
    void store(const std::string& name, std::string contents, std::optional<file_permissions> permissions);
    void expect(bool holds, std::string_view what, std::string_view name) const;

    choices& chosen;
    test_folder folder;
    std::map<std::string, stored_file> model;
    std::vector<unfinished> open;
    std::string_view change; ///< the latest one
};

} // namespace kvr_test
