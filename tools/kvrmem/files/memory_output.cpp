#include "tools/kvrmem/files/memory_output.h"

#include "kvrimage/files/file_name.h"
#include "kvrimage/files/replacement_file.h"
#include "kvrimage/formats/memory_file.h"
#include "tools/kvrmem/files/broken_file.h"
#include "tools/kvrmem/surroundings/progress.h"
#include "tools/kvrmem/surroundings/tool_error.h"

#include <fmt/format.h>

#include <sys/stat.h>
#include <utility>
#include <vector>

namespace kvrmem {

namespace {

/// Why @p image cannot be written; none when it can.
std::vector<kvrimage::diagnostic> obstacles_to(const kvrimage::memory_image& image,
                                               const kvrimage::write_options& options) {
    if (options.as->write == nullptr) {
        usage_error(fmt::format("{} cannot be written", options.as->title));
    }
    return kvrimage::can_write(image, options);
}

} // namespace

void require_writable(const arguments& given, const memory_input& input,
                      const kvrimage::write_options& options) {
    std::vector<kvrimage::diagnostic> obstacles = obstacles_to(input.image(), options);
    if (obstacles.empty()) {
        return;
    }
    kvrimage::diagnostic& first = obstacles.front();
    if (first.address && input.options.as->find_word != nullptr) {
        const auto line = input.options.as->find_word(input.file.contents(), input.options, *first.address);
        first.where = line.value_or(kvrimage::place{});
    }
    throw broken_file(given, first, input.name(), input.file.contents(), remedy_of(given, obstacles));
}

void require_writable(const arguments& given, const kvrimage::memory_image& image, const std::string& target,
                      const kvrimage::write_options& options) {
    const std::vector<kvrimage::diagnostic> obstacles = obstacles_to(image, options);
    if (!obstacles.empty()) {
        throw broken_file(given, obstacles.front(), kvrimage::title_of_output(target), "",
                          remedy_of(given, obstacles));
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
