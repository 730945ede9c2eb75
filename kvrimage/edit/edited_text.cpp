#include "kvrimage/edit/edited_text.h"

#include "kvrimage/edit/with_edits.h"
#include "kvrimage/exchange/string_sink.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace kvrimage {

namespace {

/// The text between two edits, and its new position.
struct kept_part {
    std::size_t from;
    std::size_t to;
    std::size_t length;
};

std::vector<kept_part> parts_between(std::size_t size, std::span<const text_edit> edits) {
    std::vector<kept_part> parts;
    parts.reserve(edits.size() + 1);
    std::size_t from = 0;
    std::size_t to = 0;
    for (const text_edit& edit : edits) {
        const std::size_t length = edit.offset - from;
        parts.push_back({from, to, length});
        from += length + edit.length;
        to += length + edit.replacement.size();
    }
    parts.push_back({from, to, size - from});
    return parts;
}

void move_part(char* text, const kept_part& part) {
    std::memmove(text + part.to, text + part.from, part.length);
}

/// Moves the parts within one text. Parts that move up are moved from the last to the first, then parts that
/// move down from the first to the last, so no part is overwritten before it is moved.
void move_parts(char* text, std::span<const kept_part> parts) {
    for (std::size_t i = parts.size(); i-- > 0;) {
        if (parts[i].to > parts[i].from) {
            move_part(text, parts[i]);
        }
    }
    for (const kept_part& part : parts) {
        if (part.to < part.from) {
            move_part(text, part);
        }
    }
}

/// An edit of the fix of diagnostic number `owner`.
struct owned_edit {
    const text_edit* edit;
    std::size_t owner;

    [[nodiscard]] std::uint64_t end() const { return edit->offset + edit->length; }
};

std::vector<owned_edit> edits_in_order(std::span<const diagnostic> found) {
    std::vector<owned_edit> edits;
    for (std::size_t owner = 0; owner < found.size(); ++owner) {
        for (const text_edit& edit : found[owner].fix) {
            edits.push_back({&edit, owner});
        }
    }
    std::ranges::stable_sort(edits, {}, [](const owned_edit& each) { return each.edit->offset; });
    return edits;
}

/// Two insertions at one place also touch: their order is undefined.
bool touch(const owned_edit& earlier, const owned_edit& later) {
    return later.edit->offset < earlier.end() || later.edit->offset == earlier.edit->offset;
}

} // namespace

std::string with_edits(std::string contents, std::span<const text_edit> edits) {
    const std::vector<kept_part> parts = parts_between(contents.size(), edits);
    const std::size_t new_size = parts.back().to + parts.back().length;
    if (new_size > contents.capacity()) {
        string_sink output;
        output.text.reserve(new_size);
        write_edited(contents, edits, output);
        return std::move(output.text);
    }
    const std::size_t old_size = contents.size();
    contents.resize(std::max(old_size, new_size));
    edit_in_place({contents.data(), contents.size()}, old_size, edits);
    contents.resize(new_size);
    return contents;
}

std::size_t edit_in_place(std::span<char> room, std::size_t size, std::span<const text_edit> edits) {
    const std::vector<kept_part> parts = parts_between(size, edits);
    move_parts(room.data(), parts);
    for (std::size_t i = 0; i < edits.size(); ++i) {
        edits[i].replacement.copy(room.data() + parts[i].to + parts[i].length, edits[i].replacement.size());
    }
    return parts.back().to + parts.back().length;
}

void write_edited(std::string_view contents, std::span<const text_edit> edits, text_sink& output) {
    std::size_t from = 0;
    for (const text_edit& edit : edits) {
        output.write(contents.substr(from, edit.offset - from));
        output.write(edit.replacement);
        from = edit.offset + edit.length;
    }
    output.write(contents.substr(from));
}

std::vector<text_edit> fixes_at_once(std::span<const diagnostic> found, std::vector<bool>& taken) {
    const std::vector<owned_edit> edits = edits_in_order(found);
    taken.resize(found.size());
    for (std::size_t i = 0; i < found.size(); ++i) {
        taken[i] = !found[i].fix.empty();
    }
    const owned_edit* last = nullptr;
    for (const owned_edit& edit : edits) {
        if (!taken[edit.owner]) {
            continue;
        }
        if (last != nullptr && last->owner != edit.owner && touch(*last, edit)) {
            taken[std::max(last->owner, edit.owner)] = false;
        }
        if (taken[edit.owner]) {
            last = &edit;
        }
    }
    std::vector<text_edit> together;
    for (const owned_edit& edit : edits) {
        if (taken[edit.owner]) {
            together.push_back(*edit.edit);
        }
    }
    return together;
}

} // namespace kvrimage
