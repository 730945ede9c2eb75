#include "kvr/memory/store/comment_store.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <limits>
#include <utility>

namespace kvr {

std::string_view comment_store::entry::text() const noexcept {
    // The number was made from this pointer.
    // NOLINTNEXTLINE(performance-no-int-to-ptr)
    return is_gap() ? std::string_view() : text_arena::text_at(reinterpret_cast<const char*>(value));
}

/// A window of entries that can grow at both ends.
class comment_store::segment {
public:
    static constexpr std::uint32_t capacity = 256;

    /// Makes an empty window at @p position: 0 to grow at the end, `capacity` to grow at the front.
    // The entries outside the window are never read.
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init)
    explicit segment(std::uint32_t position) noexcept : begin(position), end(position) {}

    [[nodiscard]] std::uint32_t size() const noexcept { return end - begin; }
    [[nodiscard]] std::uint32_t room() const noexcept { return capacity - size(); }
    [[nodiscard]] entry& operator[](std::uint32_t index) noexcept { return window()[index]; }

    /// Inserts before the entry @p index. Moves the smaller part of the entries if there is room on that
    /// side.
    void insert(std::uint32_t index, entry added) noexcept {
        const bool nearer_front = index < size() - index;
        if (begin > 0 && (nearer_front || end == capacity)) {
            std::copy_n(window(), index, window() - 1);
            --begin;
        } else {
            std::copy_backward(window() + index, window() + size(), window() + size() + 1);
            ++end;
        }
        (*this)[index] = added;
    }

    /// Moves the entries from @p index on to @p other, which must be empty.
    void move_rest(std::uint32_t index, segment& other) noexcept {
        other.begin = capacity / 4;
        other.end = other.begin + (size() - index);
        std::copy_n(window() + index, size() - index, other.window());
        end = begin + index;
    }

private:
    [[nodiscard]] entry* window() noexcept { return entries.data() + begin; }

    std::array<entry, capacity> entries;
    std::uint32_t begin;
    std::uint32_t end;
};

comment_store::comment_store() = default;
comment_store::~comment_store() = default;

void comment_store::swap(comment_store& other) noexcept {
    segments.swap(other.segments);
    std::swap(listed, other.listed);
    std::swap(empties_behind, other.empties_behind);
    texts.swap(other.texts);
    std::swap(found, other.found);
}

void comment_store::clear() noexcept {
    segments.clear();
    listed = 0;
    empties_behind = 0;
    texts.clear();
    found = {};
}

std::string_view comment_store::operator[](std::uint64_t index) const noexcept {
    assert(index < size());
    if (index >= listed) {
        return {};
    }
    found = place_of(index);
    return (*segments[found.segment].entries)[found.entry].text();
}

/// Returns the entry of the comment at @p index, which must be below `listed`.
comment_store::cursor comment_store::place_of(std::uint64_t index) const noexcept {
    cursor place = found;
    if (index < place.first) {
        while (index < place.segment_first) {
            --place.segment;
            place.segment_first -= segments[place.segment].comments;
        }
        place.entry = 0;
        place.first = place.segment_first;
    }
    while (index - place.segment_first >= segments[place.segment].comments) {
        place.segment_first += segments[place.segment].comments;
        ++place.segment;
        place.entry = 0;
        place.first = place.segment_first;
    }
    segment& entries = *segments[place.segment].entries;
    while (index - place.first >= entries[place.entry].comments()) {
        place.first += entries[place.entry].comments();
        ++place.entry;
    }
    return place;
}

void comment_store::push_front(std::string_view text) {
    const entry added = kept(text);
    if (segments.empty() || segments.front().entries->room() == 0) {
        segments.push_front({0, std::make_unique<segment>(segment::capacity)});
    }
    insert(segments.front(), 0, added);
    ++listed;
    found = {};
}

void comment_store::append_empty_up_to(std::uint64_t size) {
    if (size > this->size()) {
        empties_behind = size - listed;
    }
}

void comment_store::insert(std::uint64_t index, std::string_view text) {
    assert(index <= size());
    if (index < listed) {
        insert_between(index, text);
    } else {
        insert_behind(index, text);
    }
}

void comment_store::insert_between(std::uint64_t index, std::string_view text) {
    const entry added = kept(text);
    cursor next = place_of(index);
    if (!has_room_for_two(next.segment) && next.entry > 0) {
        split(next);
    }
    cursor place = room_before(next);
    if (const std::uint64_t before = index - next.first; before > 0) {
        segment_slot& from = segments[next.segment];
        entry& gap = (*from.entries)[next.entry];
        gap = entry::gap(gap.comments() - before);
        from.comments -= before;
        insert(segments[place.segment], place.entry, entry::gap(before));
        ++place.entry;
        place.first = index;
    }
    insert(segments[place.segment], place.entry, added);
    ++listed;
    found = place;
}

void comment_store::insert_behind(std::uint64_t index, std::string_view text) {
    const entry added = kept(text);
    if (segments.empty() || !has_room_for_two(segments.size() - 1)) {
        segments.push_back({0, std::make_unique<segment>(0)});
    }
    if (const std::uint64_t before = index - listed; before > 0) {
        append(entry::gap(before));
        empties_behind -= before;
    }
    append(added);
}

comment_store::entry comment_store::kept(std::string_view text) {
    return entry::text(texts.keep(text));
}

void comment_store::insert(segment_slot& slot, std::uint32_t place, entry added) noexcept {
    slot.entries->insert(place, added);
    slot.comments += added.comments();
}

void comment_store::append(entry added) noexcept {
    insert(segments.back(), segments.back().entries->size(), added);
    listed += added.comments();
}

bool comment_store::has_room_for_two(std::size_t number) const noexcept {
    return segments[number].entries->room() >= 2;
}

/// Splits the segment of @p place in two halves and updates @p place to its entry.
void comment_store::split(cursor& place) {
    constexpr std::uint32_t half = segment::capacity / 2;
    const auto after = segments.begin() + static_cast<std::ptrdiff_t>(place.segment) + 1;
    segment& upper = *segments.insert(after, {0, std::make_unique<segment>(0)})->entries;
    segment_slot& lower = segments[place.segment];
    lower.entries->move_rest(half, upper);
    for (std::uint32_t i = 0; i < upper.size(); ++i) {
        segments[place.segment + 1].comments += upper[i].comments();
    }
    lower.comments -= segments[place.segment + 1].comments;
    if (place.entry >= half) {
        place.entry -= half;
        place.segment_first += lower.comments;
        ++place.segment;
    }
}

/// Returns a place with room for two entries directly before the one at @p next, and updates @p next to its
/// entry. If the segment of @p next has no room, the entry must be its first.
comment_store::cursor comment_store::room_before(cursor& next) {
    cursor place = next;
    if (has_room_for_two(next.segment)) {
        return place;
    }
    if (next.segment > 0 && has_room_for_two(next.segment - 1)) {
        --place.segment;
        place.segment_first -= segments[place.segment].comments;
        place.entry = segments[place.segment].entries->size();
    } else {
        const auto at = segments.begin() + static_cast<std::ptrdiff_t>(next.segment);
        segments.insert(at, {0, std::make_unique<segment>(0)});
        ++next.segment;
    }
    return place;
}

void comment_store::assign(const std::deque<std::string>& comments) {
    comment_store fresh;
    for (const std::string& comment : comments) {
        if (comment.empty()) {
            ++fresh.empties_behind;
        } else {
            fresh.insert_behind(fresh.size(), comment);
        }
    }
    swap(fresh);
}

void comment_store::copy_to(std::deque<std::string>& comments) const {
    for (const segment_slot& slot : segments) {
        for (std::uint32_t i = 0; i < slot.entries->size(); ++i) {
            const entry each = (*slot.entries)[i];
            for (std::uint64_t count = each.comments(); count > 0; --count) {
                comments.emplace_back(each.text());
            }
        }
    }
    // Clamp, so that a number too large for a std::deque is also too large if sizes have 32 bits.
    comments.resize(
        std::min<std::uint64_t>(comments.size() + empties_behind, std::numeric_limits<std::size_t>::max()));
}

} // namespace kvr
