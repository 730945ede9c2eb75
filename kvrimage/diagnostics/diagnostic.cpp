#include "kvrimage/diagnostics/diagnostic.h"

#include "kvrimage/diagnostics/diagnose.h"
#include "kvrimage/diagnostics/diagnostic_kinds.h"
#include "kvrimage/diagnostics/utf8_character.h"

#include <utility>

namespace kvrimage {

const diagnostic_kind& about(diagnostic_id id) noexcept {
    return diagnostic_kinds[static_cast<std::size_t>(id)];
}

named_text::named_text(std::string_view text) : shown(text.substr(0, longest)) {
    if (text.size() > longest) {
        shown.resize(character_start(text, longest));
        shown += "...";
    }
}

diagnostic diagnose::made(diagnostic_id id, const places& where, std::string message, std::string hint) {
    diagnostic result;
    result.id = id;
    result.message = std::move(message);
    result.hint = std::move(hint);
    result.consumer = about(id).level == diagnostic_class::consumer ? "kvr" : "";
    result.count = where.empty() ? 1 : where.count();
    for (const span& each : where.first()) {
        result.more.push_back({0, 0, each.offset, each.length});
    }
    if (!result.more.empty()) {
        result.where = result.more.front();
        result.more.erase(result.more.begin());
    }
    return result;
}

} // namespace kvrimage
