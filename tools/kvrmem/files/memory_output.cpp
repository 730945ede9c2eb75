#include "tools/kvrmem/files/memory_output.h"

#include "kvrimage/files/replacement_file.h"
#include "kvrimage/formats/memory_file.h"
#include "tools/kvrmem/surroundings/progress.h"
#include "tools/kvrmem/surroundings/tool_error.h"

#include <fmt/format.h>

#include <sys/stat.h>
#include <vector>

namespace kvrmem {

void require_writable(const kvrimage::memory_image& image, const kvrimage::write_options& options,
                      std::string_view subject) {
    const std::vector<kvrimage::diagnostic> faults = kvrimage::can_write(image, options);
    if (!faults.empty()) {
        const kvrimage::diagnostic& first = faults.front();
        throw tool_error(exit_code::bad_input, fmt::format("{}: error: {}{}{}", subject, first.message,
                                                           first.hint.empty() ? "" : "; ", first.hint));
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
