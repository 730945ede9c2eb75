#include "kvr/memory/comment_store.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <limits>
#include <stdexcept>
#include <utility>

namespace kvr {

namespace {

constexpr std::size_t most_empties = std::numeric_limits<std::uint32_t>::max();

} // namespace

/// Entries in a window that can grow at both ends.
class comment_store::segment {
public:
    static constexpr std::uint32_t capacity = 256;

    /// An empty window at @p position: 0 to grow at the end, `capacity` to grow at the front.
    // The entries outside the window are never read.
    // NOLINTNEXTLINE(cppcoreguidelines-pro-type-member-init)
    explicit segment(std::uint32_t position) noexcept : begin(position), end(position) {}

    [[nodiscard]] std::uint32_t size() const noexcept { return end - begin; }
    [[nodiscard]] bool full() const noexcept { return size() == capacity; }
    [[nodiscard]] entry& operator[](std::uint32_t index) noexcept { return window()[index]; }

    /// Inserts before the entry @p index, moving the fewer entries if there is room on that side.
    void insert(std::uint32_t index, const entry& added) noexcept {
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

    /// Moves the entries from @p index on to @p other, which is empty.
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

std::string_view comment_store::operator[](std::size_t index) const noexcept {
    assert(index < size());
    if (index >= listed) {
        return {};
    }
    found = place_of(index);
    const entry& here = (*segments[found.segment].entries)[found.entry];
    return index == found.first + here.empties ? std::string_view(here.text, here.length)
                                               : std::string_view();
}

/// The entry that stands for the comment at @p index, below `listed`.
comment_store::cursor comment_store::place_of(std::size_t index) const noexcept {
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
    const entry added = kept(text, 0);
    if (segments.empty() || segments.front().entries->full()) {
        segments.push_front({0, std::make_unique<segment>(segment::capacity)});
    }
    segments.front().entries->insert(0, added);
    ++segments.front().comments;
    ++listed;
    found = {};
}

void comment_store::append_empty_up_to(std::size_t size) {
    if (size > this->size()) {
        empties_behind = size - listed;
    }
}

void comment_store::insert(std::size_t index, std::string_view text) {
    assert(index <= size());
    if (index < listed) {
        insert_between(index, text);
    } else {
        insert_behind(index, text);
    }
}

void comment_store::insert_between(std::size_t index, std::string_view text) {
    cursor next = place_of(index);
    const entry added = kept(text, index - next.first);
    if (is_full(next.segment) && next.entry > 0) {
        split(next);
    }
    const cursor place = room_before(next);
    segment_slot& from = segments[next.segment];
    (*from.entries)[next.entry].empties -= added.empties;
    from.comments -= added.empties;
    segment_slot& to = segments[place.segment];
    to.entries->insert(place.entry, added);
    to.comments += added.comments();
    ++listed;
    found = place;
}

void comment_store::insert_behind(std::size_t index, std::string_view text) {
    std::size_t empties = index - listed;
    for (; empties > most_empties; empties -= most_empties + 1) {
        append({"", 0, std::numeric_limits<std::uint32_t>::max()});
        empties_behind -= most_empties + 1;
    }
    append(kept(text, empties));
    empties_behind -= empties;
}

comment_store::entry comment_store::kept(std::string_view text, std::size_t empties) {
    if (text.size() > std::numeric_limits<std::uint32_t>::max()) {
        throw std::length_error("kvr: the comment is too long");
    }
    return {texts.keep(text).data(), static_cast<std::uint32_t>(text.size()),
            static_cast<std::uint32_t>(empties)};
}

void comment_store::append(const entry& added) {
    if (segments.empty() || segments.back().entries->full()) {
        segments.push_back({0, std::make_unique<segment>(0)});
    }
    segments.back().entries->insert(segments.back().entries->size(), added);
    segments.back().comments += added.comments();
    listed += added.comments();
}

bool comment_store::is_full(std::size_t number) const noexcept {
    return segments[number].entries->full();
}

/// Cuts the segment of @p place in two halves; @p place follows its entry.
void comment_store::split(cursor& place) {
    constexpr std::uint32_t half = segment::capacity / 2;
    const auto behind = segments.begin() + static_cast<std::ptrdiff_t>(place.segment) + 1;
    segment& upper = *segments.insert(behind, {0, std::make_unique<segment>(0)})->entries;
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

/// The place for an entry right before the one at @p next, which follows its entry. If the segment of
/// @p next is full, the entry must be its first.
comment_store::cursor comment_store::room_before(cursor& next) {
    cursor place = next;
    if (!is_full(next.segment)) {
        return place;
    }
    if (next.segment > 0 && !is_full(next.segment - 1)) {
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
            const entry& each = (*slot.entries)[i];
            comments.resize(comments.size() + each.empties);
            comments.emplace_back(each.text, each.length);
        }
    }
    comments.resize(comments.size() + empties_behind);
}

} // namespace kvr
