// Uses the library like a program, for runs in which system calls fail: library_steps STEP FILE... Prints the
// results of the library. The exit code is 0 if the library reports success; otherwise it is 3, with a
// message on standard error.

#include "kvr/memory/memory_file.h"
#include "kvr/util/generated_files.h"
#include "kvr/util/list_file.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <string>
#include <string_view>
#include <unistd.h>

namespace {

KVR_FILE_TYPES type_of(std::string_view path) {
    if (path.ends_with(".mif")) {
        return FILE_TYPE_MIF;
    }
    return path.ends_with(".rif") ? FILE_TYPE_RIF : FILE_TYPE_HEX;
}

/// For RIF, the library always returns true; the flags and messages show a failure.
bool all_went_well(KVR_MEMORY_FILE& file, bool answer) {
    return answer && !file.get_file_not_found() && !file.get_error_occurred() && !file.has_error_messages();
}

void configure(KVR_MEMORY_FILE& file, const std::string& path) {
    file.set_file_type(type_of(path));
    file.set_file_name(path);
    file.set_word_size(8);
    file.set_memory_radix(RADIX_HEX);
    file.set_address_radix(RADIX_HEX);
}

bool read_words(const std::string& path, std::string& answer_text) {
    KVR_MEMORY_FILE file;
    configure(file, path);
    if (type_of(path) == FILE_TYPE_RIF) {
        file.set_number_of_words(16);
    }
    const bool succeeded = all_went_well(file, file.read_file());
    for (unsigned address = 0; succeeded && address < file.get_number_of_words(); ++address) {
        answer_text += file.get_data_word(address, RADIX_HEX) + ' ';
    }
    return succeeded;
}

bool write_words(const std::string& path, std::string& /*answer_text*/) {
    KVR_MEMORY_FILE file;
    configure(file, path);
    // The output has more than one block.
    file.set_number_of_words(100000);
    for (unsigned address = 0; address < 100000; ++address) {
        file.set_data_word(address, address % 2 == 0 ? "5" : "A5", RADIX_HEX);
    }
    return all_went_well(file, file.write_file());
}

bool look_at_wizard(const std::string& path, std::string& answer_text) {
    std::string name;
    std::string version;
    const bool answer = is_wizard_generated_file(path.c_str(), name, version);
    answer_text = name + ' ' + version;
    return answer && is_wizard_deferred_generation_file(path.c_str());
}

bool process_list(const std::string& path, std::string& answer_text) {
    KVR_STRING_MAP libraries;
    KVR_STRING_MAP origins;
    KVR_STRING_MAP extras;
    const bool answer = kvr_process_lst_file(".", path, libraries, origins, extras, false);
    for (const auto& [module, library] : libraries) {
        answer_text += module + '=' + library + ' ';
    }
    return answer;
}

/// Writes @p text and continues after interruptions.
bool print_text(int descriptor, std::string_view text) {
    while (!text.empty()) {
        const ssize_t written = ::write(descriptor, text.data(), text.size());
        if (written < 0 && errno != EINTR) {
            return false;
        }
        text.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(written, 0)));
    }
    return true;
}

struct step {
    std::string_view name;
    bool (*take)(const std::string& path, std::string& answer_text);
};

constexpr step steps[] = {
    {"read", read_words}, {"write", write_words}, {"wizard", look_at_wizard}, {"list", process_list}};

} // namespace

int main(int count, char** words) {
    // This call marks the start of the program's own work for the driver.
    static_cast<void>(std::signal(SIGINT, SIG_DFL));
    const auto* const found = std::find_if(std::begin(steps), std::end(steps), [&](const step& candidate) {
        return count == 3 && candidate.name == words[1];
    });
    if (found == std::end(steps)) {
        return 4;
    }
    std::string text;
    const bool succeeded = found->take(words[2], text);
    if (!succeeded) {
        print_text(STDERR_FILENO, "the library reports a failure\n");
        return 3;
    }
    if (!print_text(STDOUT_FILENO, text + "\n")) {
        print_text(STDERR_FILENO, "the answer cannot be printed\n");
        return 3;
    }
    return 0;
}
