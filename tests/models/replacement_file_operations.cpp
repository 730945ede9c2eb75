#include "tests/models/replacement_file_operations.h"

#include "tests/models/operation_table.h"
#include "tools/kvrmem/files/output_files.h"

#include <fmt/format.h>

#include <array>
#include <filesystem>
#include <stdexcept>
#include <utility>

namespace kvr_test {

namespace {

using kvrimage::replacement_file;

constexpr std::array<std::string_view, 4> file_names = {"a", "b", "c.mif", "d"};
constexpr std::array<file_permissions, 4> file_modes = {0600, 0644, 0604, 0755};

/// More files than the list of temporary files holds.
constexpr std::size_t most_open = 11;

// Around the size from which a text bypasses the buffer, and around the size of the buffer.
constexpr std::array<std::uint32_t, 9> write_sizes = {0, 1, 100, 4095, 4096, 4097, 65535, 65536, 70000};

} // namespace

void replacement_file_operations::step() {
    using operation = void (replacement_file_operations::*)();
    static constexpr std::array operations = {
        table_operation<operation>{"begin", &replacement_file_operations::begin, 6},
        table_operation<operation>{"write", &replacement_file_operations::write, 10},
        table_operation<operation>{"commit", &replacement_file_operations::commit, 4},
        table_operation<operation>{"give up", &replacement_file_operations::give_up, 1},
        table_operation<operation>{"commit together", &replacement_file_operations::commit_together, 1},
        table_operation<operation>{"remove", &replacement_file_operations::remove, 1},
        table_operation<operation>{"change permissions", &replacement_file_operations::change_permissions, 1},
        table_operation<operation>{"write in place", &replacement_file_operations::write_in_place, 1},
    };
    const table_operation<operation>& next = choose_operation(operations, chosen);
    change = next.name;
    (this->*next.run)();
    compare_all();
}

std::string replacement_file_operations::any_name() {
    return std::string(chosen.one_of(file_names));
}

std::string replacement_file_operations::any_contents() {
    const std::uint32_t size = chosen.once_in(3) ? chosen.one_of(write_sizes) : chosen.below(30);
    return std::string(size, static_cast<char>('a' + chosen.below(26)));
}

std::optional<file_permissions> replacement_file_operations::permissions_of(const std::string& name) const {
    const auto found = model.find(name);
    return found == model.end() ? std::nullopt : std::optional(found->second.permissions);
}

void replacement_file_operations::store(const std::string& name, std::string contents,
                                        std::optional<file_permissions> permissions) {
    model[name] = {std::move(contents), permissions.value_or(permissions_of_new_file())};
}

void replacement_file_operations::begin() {
    if (open.size() < most_open) {
        const std::string name = any_name();
        open.push_back(
            {name, "", permissions_of(name), std::make_unique<replacement_file>(folder.path(name))});
    }
}

void replacement_file_operations::write() {
    if (!open.empty()) {
        unfinished& to = open[chosen.below(static_cast<std::uint32_t>(open.size()))];
        const std::string added = any_contents();
        to.contents += added;
        to.file->write(added);
    }
}

replacement_file_operations::unfinished replacement_file_operations::take_any() {
    const auto at = open.begin() + chosen.below(static_cast<std::uint32_t>(open.size()));
    unfinished taken = std::move(*at);
    open.erase(at);
    return taken;
}

void replacement_file_operations::commit() {
    if (!open.empty()) {
        unfinished done = take_any();
        done.file->commit();
        store(done.name, std::move(done.contents), done.permissions);
    }
}

void replacement_file_operations::give_up() {
    if (!open.empty()) {
        static_cast<void>(take_any());
    }
}

/// Writes files together: in the end all of them exist, or none.
void replacement_file_operations::commit_together() {
    kvrmem::output_files files;
    std::vector<unfinished> added;
    for (std::uint32_t count = chosen.between(1, 4); count > 0; --count) {
        const std::string name = any_name();
        added.push_back({name, any_contents(), permissions_of(name), nullptr});
        files.add(folder.path(name), added.back().contents);
    }
    if (!chosen.once_in(3)) {
        files.commit();
        for (unfinished& each : added) {
            store(each.name, std::move(each.contents), each.permissions);
        }
    }
}

void replacement_file_operations::remove() {
    const std::string name = any_name();
    std::filesystem::remove(folder.path(name));
    model.erase(name);
}

void replacement_file_operations::change_permissions() {
    const std::string name = any_name();
    const auto found = model.find(name);
    if (found != model.end()) {
        found->second.permissions = with_permissions(folder.path(name), chosen.one_of(file_modes));
    }
}

/// Writes as another program may do.
void replacement_file_operations::write_in_place() {
    const std::string name = any_name();
    const std::string contents = any_contents();
    folder.write(name, contents);
    store(name, contents, permissions_of(name));
}

void replacement_file_operations::compare_all() const {
    const auto files = static_cast<std::size_t>(folder.count_files());
    expect(files == model.size() + open.size(), "how many files there are", std::to_string(files));
    for (const std::string_view each : file_names) {
        const std::string name(each);
        const auto expected = model.find(name);
        expect(std::filesystem::exists(folder.path(name)) == (expected != model.end()), "whether it is there",
               name);
        if (expected != model.end()) {
            expect(folder.read(name) == expected->second.contents, "the contents", name);
            expect(permissions_on_disk(folder.path(name)) == expected->second.permissions, "the permissions",
                   name);
        }
    }
}

void replacement_file_operations::expect(bool holds, std::string_view what, std::string_view name) const {
    if (!holds) {
        throw std::logic_error(fmt::format("{} of {} after {}", what, name, change));
    }
}

} // namespace kvr_test
