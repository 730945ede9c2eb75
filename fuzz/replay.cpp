// Runs the target that the program is named after on the files of a folder and on small mutations of them,
// the same ones each time. Does not use libFuzzer, which contains templates of the standard library that were
// compiled without the memory sanitizer.

#include "fuzz/target.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <string>
#include <string_view>
#include <sys/types.h>
#include <unistd.h>

namespace {

std::string_view name_in(std::string_view path) {
    return path.substr(path.rfind('/') + 1);
}

/// Exits the program if the file cannot be read.
std::string contents_of(const std::string& path) {
    const int descriptor = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    std::string bytes;
    std::array<char, 65536> block{};
    ssize_t size = 0;
    while ((size = read(descriptor, block.data(), block.size())) > 0) {
        bytes.append(block.data(), static_cast<std::size_t>(size));
    }
    if (size < 0) {
        std::perror(path.c_str());
        std::exit(EXIT_FAILURE);
    }
    close(descriptor);
    return bytes;
}

/// Runs @p target on @p input, on its prefixes, and on copies with one byte replaced. In a long input, some
/// hundred places are changed. Returns the number of runs.
long run_on(const kvr_fuzz::target& target, const std::string& input) {
    constexpr std::string_view replacements("0F:; \n\xFF");
    const std::size_t step = input.size() / 300 + 1;
    target.run(input);
    long count = 1;
    for (std::size_t at = 0; at < input.size(); at += step) {
        target.run(std::string_view(input).substr(0, at));
        std::string changed = input;
        for (const char replacement : replacements) {
            changed[at] = replacement;
            target.run(changed);
        }
        count += 1 + static_cast<long>(replacements.size());
    }
    return count;
}

long run_on_all(const kvr_fuzz::target& target, const std::string& folder) {
    const std::unique_ptr<DIR, int (*)(DIR*)> entries(opendir(folder.c_str()), closedir);
    long count = 0;
    while (const dirent* entry = entries != nullptr ? readdir(entries.get()) : nullptr) {
        if (entry->d_name[0] != '.') {
            count += run_on(target, contents_of(folder + "/" + entry->d_name));
        }
    }
    return count;
}

} // namespace

int main(int count, char** words) {
    for (const kvr_fuzz::target& each : kvr_fuzz::all_targets()) {
        if (count == 2 && each.name == name_in(words[0])) {
            const long runs = run_on_all(each, words[1]);
            std::printf("%ld runs\n", runs);
            return runs != 0 ? EXIT_SUCCESS : EXIT_FAILURE;
        }
    }
    static_cast<void>(std::fputs("usage: TARGET FOLDER\n", stderr));
    return EXIT_FAILURE;
}
