#include "kvrimage/formats/mif/mif_cause.h"

#include <algorithm>
#include <utility>

namespace kvrimage {

bool mif_cause::add(const span& where, std::optional<text_edit> repair, bool wants_repairs) {
    all.add(where);
    if (repair && (wants_repairs || all.count() <= places::kept)) {
        edits.push_back(std::move(*repair));
    }
    return all.count() == 1;
}

void mif_cause::report(diagnostic made, std::string_view repair, diagnostic_list& list) {
    if (!edits.empty()) {
        std::ranges::stable_sort(edits, {}, &text_edit::offset);
        made.fix = std::exchange(edits, {});
        made.repair = repair;
    }
    list.add(std::move(made));
}

} // namespace kvrimage
