#include "tools/kvrmem/files/output_files.h"

#include "tools/kvrmem/platform/progress.h"

namespace kvrmem {

void output_files::add(const std::string& target, const kvrimage::memory_image& image,
                       const kvrimage::write_options& options) {
    files.push_back(std::make_unique<kvrimage::replacement_file>(target, show_writing));
    options.as->write(image, options, *files.back());
}

void output_files::add(const std::string& target, std::string_view text) {
    files.push_back(std::make_unique<kvrimage::replacement_file>(target, show_writing));
    files.back()->write(text);
}

void output_files::commit() {
    for (const auto& file : files) {
        file->complete();
    }
    for (const auto& file : files) {
        file->commit();
    }
}

} // namespace kvrmem
