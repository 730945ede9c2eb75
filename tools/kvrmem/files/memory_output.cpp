#include "tools/kvrmem/files/memory_output.h"

#include "kvrimage/bytes/bytes_of_words.h"
#include "kvrimage/files/file_name.h"
#include "kvrimage/files/platform.h"
#include "kvrimage/files/replacement_file.h"
#include "kvrimage/formats/memory_file.h"
#include "kvrimage/operations/selection.h"
#include "tools/kvrmem/files/broken_file.h"
#include "tools/kvrmem/platform/progress.h"
#include "tools/kvrmem/platform/tool_error.h"

#include <fmt/format.h>

#include <utility>
#include <vector>

namespace kvrmem {

namespace {

/// Returns why @p image cannot be written; empty if it can.
std::vector<kvrimage::diagnostic> obstacles_to(const kvrimage::memory_image& image,
                                               const kvrimage::write_options& options) {
    if (options.as->write == nullptr) {
        usage_error(fmt::format("{} cannot be written", options.as->title));
    }
    return kvrimage::can_write(image, options);
}

/// Returns the memory from its first set word on, moved to address 0.
kvrimage::memory_image from_first_word(const kvrimage::memory_image& image,
                                       const kvrimage::address_range& bounds) {
    return kvrimage::with_depth(kvrimage::moved(image, bounds.first, image.base()),
                                bounds.last - bounds.first + 1);
}

/// Adds --base to an obstacle without another remedy, if the image can be written with it.
void offer_base(const arguments& given, const memory_input& input, const kvrimage::write_options& options,
                kvrimage::diagnostic& obstacle) {
    const auto bounds = input.image().bounds();
    if (!obstacle.hint.empty() || given.base || !bounds || bounds->first == input.image().base() ||
        !kvrimage::can_write(from_first_word(input.image(), *bounds), options).empty()) {
        return;
    }
    const std::uint64_t units = input.result.facts.unit == kvrimage::address_unit::byte
                                    ? kvrimage::bytes_of_width(input.image().width())
                                    : 1;
    obstacle.option = fmt::format("--base 0x{:X}", bounds->first * units);
    obstacle.hint = fmt::format("use {} to make the first word that is set word 0", obstacle.option);
}

} // namespace

void require_writable(const arguments& given, const memory_input& input,
                      const kvrimage::write_options& options) {
    std::vector<kvrimage::diagnostic> obstacles = obstacles_to(input.image(), options);
    if (obstacles.empty()) {
        return;
    }
    kvrimage::diagnostic& first = obstacles.front();
    offer_base(given, input, options, first);
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

void require_replaceable(const arguments& given, const std::string& path) {
    std::error_code error;
    const std::filesystem::file_status status =
        std::filesystem::status(kvrimage::platform::path_of(path), error);
    if (given.output || path == "-" || !std::filesystem::is_other(status)) {
        return;
    }
    usage_error(fmt::format("{}: a pipe or a device cannot be changed in place; add --output FILE",
                            kvrimage::title_of_input(path)));
}

bool is_regular_file(const std::string& path) {
    kvrimage::platform::file_status status;
    return path != "-" && kvrimage::platform::look_at(path, status) &&
           status.kind == kvrimage::platform::file_kind::regular;
}

bool name_one_file(const std::string& left, const std::string& right) {
    if (left == "-" || right == "-") {
        return false;
    }
    std::error_code error;
    const auto place = [&error](const std::string& name) {
        return std::filesystem::weakly_canonical(
            std::filesystem::absolute(kvrimage::platform::path_of(name), error), error);
    };
    return left == right || (!place(left).empty() && place(left) == place(right));
}

} // namespace kvrmem
