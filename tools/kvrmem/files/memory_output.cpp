#include "tools/kvrmem/files/memory_output.h"

#include "kvrimage/files/file_name.h"
#include "kvrimage/files/replacement_file.h"
#include "kvrimage/formats/memory_file.h"
#include "tools/kvrmem/files/broken_file.h"
#include "tools/kvrmem/surroundings/progress.h"

#include <optional>
#include <sys/stat.h>
#include <utility>
#include <vector>

namespace kvrmem {

namespace {

/// Why @p image cannot be written; nothing when it can.
std::optional<kvrimage::diagnostic> obstacle_to(const kvrimage::memory_image& image,
                                                const kvrimage::write_options& options) {
    std::vector<kvrimage::diagnostic> obstacles = kvrimage::can_write(image, options);
    return obstacles.empty() ? std::nullopt : std::optional(std::move(obstacles.front()));
}

} // namespace

void require_writable(const arguments& given, const memory_input& input,
                      const kvrimage::write_options& options) {
    std::optional<kvrimage::diagnostic> obstacle = obstacle_to(input.image(), options);
    if (!obstacle) {
        return;
    }
    if (obstacle->address && input.options.as->find_word != nullptr) {
        const auto line =
            input.options.as->find_word(input.file.contents(), input.options, *obstacle->address);
        obstacle->where = line.value_or(kvrimage::place{});
    }
    throw broken_file(given, *obstacle, input.name(), input.file.contents());
}

void require_writable(const arguments& given, const kvrimage::memory_image& image, const std::string& target,
                      const kvrimage::write_options& options) {
    if (const auto obstacle = obstacle_to(image, options)) {
        throw broken_file(given, *obstacle, kvrimage::title_of_output(target), "");
    }
}

void write_image(const std::string& target, const kvrimage::memory_image& image,
                 const kvrimage::write_options& options) {
    kvrimage::replacement_file file(target, show_writing);
    options.as->write(image, options, file);
    file.commit();
}

void write_text(const std::string& target, std::string_view text) {
    kvrimage::replacement_file file(target, show_writing);
    file.write(text);
    file.commit();
}

bool is_regular_file(const std::string& path) {
    struct stat status {};
    return path != "-" && stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

} // namespace kvrmem
