#include "kvrimage/formats/edit.h"

#include "kvrimage/diagnostics/diagnose.h"
#include "kvrimage/formats/memory_file.h"
#include "kvrimage/image/range_check.h"

#include <fmt/format.h>

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace kvrimage {

namespace {

void require_words_of(std::uint32_t width, const assignment& given) {
    require_ascending(given.addresses);
    if (given.words.empty()) {
        throw std::invalid_argument("an assignment has no word");
    }
    for (const word& each : given.words) {
        if (each.width() != width) {
            throw std::invalid_argument(
                fmt::format("a word of {} bits: those of the file have {}", each.width(), width));
        }
    }
}

/// Returns the diagnostics of a file that has no image.
edit_result refused(std::vector<diagnostic> found) {
    std::erase_if(found,
                  [](const diagnostic& each) { return about(each.id).level != diagnostic_class::broken; });
    return {{}, std::move(found)};
}

} // namespace

edit_result edit(std::string_view contents, std::span<const assignment> assignments,
                 const read_options& options) {
    read_options strictly = options;
    strictly.keep_going = false;
    read_result ours = parse(contents, strictly);
    if (!ours.image) {
        return refused(std::move(ours.diagnostics));
    }
    const memory_image& image = *ours.image;
    if (ours.facts.as->edit == nullptr) {
        throw std::invalid_argument(fmt::format("{} cannot be edited", ours.facts.as->title));
    }
    for (const assignment& each : assignments) {
        require_words_of(image.width(), each);
        if (options.depth && each.addresses.last > image.last_address()) {
            return {{},
                    {diagnose::beyond_depth({}, each.addresses.last, image.depth(), image.last_address(),
                                            "--depth", each.addresses.last + 1)}};
        }
    }
    return ours.facts.as->edit(contents, strictly, ours, assignments);
}

} // namespace kvrimage
