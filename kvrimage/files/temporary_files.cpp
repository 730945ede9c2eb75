#include "kvrimage/files/temporary_files.h"

#include "kvrimage/files/platform.h"
#include "kvrimage/files/signal_pause.h"

#include <algorithm>
#include <atomic>
#include <cassert>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <random>
#include <string_view>

namespace kvrimage {

namespace {

enum class list_state : std::uint8_t { free, taken, listed };

/// Safe in a signal handler: static memory, and an atomic state that shows whether the path is valid.
struct list_entry {
    std::atomic<list_state> state = list_state::free;
    std::array<char, platform::longest_path> path{};
};
static_assert(std::atomic<list_state>::is_always_lock_free);

/// Further files are removed only by their owners.
constexpr std::size_t most_listed = 8;

// A signal handler has no parameter for it.
// NOLINTNEXTLINE(cppcoreguidelines-avoid-non-const-global-variables)
std::array<list_entry, most_listed> temporary_list;

/// Stores @p path in a free entry. Returns its number, or most_listed if no entry is free.
std::size_t enlist(const std::string& path) noexcept {
    assert(path.size() < platform::longest_path); // or the file would not have been opened
    for (std::size_t number = 0; number < most_listed; ++number) {
        list_entry& entry = temporary_list[number];
        list_state expected = list_state::free;
        if (entry.state.compare_exchange_strong(expected, list_state::taken)) {
            path.copy(entry.path.data(), path.size());
            entry.path[path.size()] = '\0';
            entry.state = list_state::listed;
            return number;
        }
    }
    return most_listed;
}

std::string random_name() {
    constexpr std::string_view letters = "abcdefghijklmnopqrstuvwxyz0123456789";
    constexpr std::size_t random_letters = 8;
    std::random_device source;
    std::uniform_int_distribution<std::size_t> any(0, letters.size() - 1);
    std::string name = ".kvrmem.";
    std::generate_n(std::back_inserter(name), random_letters, [&] { return letters[any(source)]; });
    return name;
}

} // namespace

void remove_temporary_files() noexcept {
    for (const list_entry& entry : temporary_list) {
        if (entry.state.load() == list_state::listed) {
            platform::remove_file(entry.path.data());
        }
    }
}

temporary_file::~temporary_file() {
    if (!name.empty()) {
        platform::remove_file(name.c_str());
        forget();
    }
}

int temporary_file::make_in(const std::string& folder, bool is_private) {
    constexpr int most_attempts = 1000; // an existing file rarely has the same random name
    const signal_pause pause;
    int descriptor = -1;
    int attempts = 0;
    do {
        // If the next name cannot be allocated, the destructor must not remove the file of the previous one.
        name.clear();
        name = platform::text_of(platform::path_of(folder) / random_name());
        descriptor = platform::make_file(name, is_private);
    } while (descriptor < 0 && errno == EEXIST && ++attempts < most_attempts);
    if (descriptor < 0) {
        name.clear();
    } else {
        listed = enlist(name);
    }
    return descriptor;
}

void temporary_file::keep() noexcept {
    if (!name.empty()) {
        forget();
    }
}

void temporary_file::forget() noexcept {
    if (listed < most_listed) {
        temporary_list[listed].state = list_state::free;
    }
    name.clear();
}

} // namespace kvrimage
