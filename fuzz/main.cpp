// The entry points of libFuzzer. The program runs the target that it is named after: the build makes a link
// for each target.

#include "fuzz/target.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerInitialize(int* count, char*** words);
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
extern "C" const char* __asan_default_options(); // NOLINT(readability-identifier-naming): given

namespace {

const kvr_fuzz::target* chosen = nullptr; // NOLINT: the two functions of the interface share nothing else

const kvr_fuzz::target* find_target(std::string_view name) {
    for (const kvr_fuzz::target& each : kvr_fuzz::all_targets()) {
        if (each.name == name) {
            return &each;
        }
    }
    return nullptr;
}

[[noreturn]] void refuse(const std::string& name) {
    std::string message = name + " is none of the targets:";
    for (const kvr_fuzz::target& each : kvr_fuzz::all_targets()) {
        message += " " + std::string(each.name);
    }
    static_cast<void>(std::fprintf(stderr, "%s\n", message.c_str()));
    std::exit(EXIT_FAILURE);
}

/// The default options, which the command line overrides. They are the options of the target and one that
/// writes findings to the folder in which the program started, even if the working directory changes.
std::vector<std::string> own_options() {
    std::vector<std::string> options = {"-artifact_prefix=" + std::filesystem::current_path().string() + "/"};
    std::istringstream stream(chosen->options);
    for (std::string option; stream >> option;) {
        options.push_back(option);
    }
    return options;
}

} // namespace

int LLVMFuzzerInitialize(int* count, char*** words) {
    const std::string name = std::filesystem::path(**words).filename().string();
    chosen = find_target(name);
    if (chosen == nullptr) {
        refuse(name);
    }
    static std::vector<std::string> texts = own_options();
    static std::vector<char*> pointers = {**words};
    for (std::string& text : texts) {
        pointers.push_back(text.data());
    }
    pointers.insert(pointers.end(), *words + 1, *words + *count);
    *count = static_cast<int>(pointers.size());
    pointers.push_back(nullptr);
    *words = pointers.data();
    return 0;
}

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    chosen->run({reinterpret_cast<const char*>(data), size});
    return 0;
}

/// Inputs are allocated and freed by the thousand, so a small quarantine of freed blocks is enough.
const char* __asan_default_options() {
    return "quarantine_size_mb=8:thread_local_quarantine_size_kb=256:malloc_context_size=12";
}
