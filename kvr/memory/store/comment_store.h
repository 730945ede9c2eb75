#pragma once

#include "kvr/memory/store/text_arena.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <string_view>

namespace kvr {

/// The comments of a MIF file by index, with the meaning of a double-ended queue of strings. Built for
/// its three uses: a reader prepends each new comment, an editor inserts at ascending addresses into
/// billions of empty comments, a writer walks from the first to the last. Each of them takes constant time;
/// a jump to a far index takes one step for each 256 kept comments on the way. A kept comment costs its text
/// and about nine bytes, a gap of empty ones between two others eight.
///
/// A call that throws (std::bad_alloc) has changed nothing.
/// Reading, too, is for one thread at a time.
class comment_store {
public:
    comment_store();
    ~comment_store();
    comment_store(const comment_store&) = delete;
    comment_store& operator=(const comment_store&) = delete;

    [[nodiscard]] std::uint64_t size() const noexcept { return listed + empties_behind; }
    [[nodiscard]] bool empty() const noexcept { return size() == 0; }
    void clear() noexcept;

    /// The comment at @p index, which must be below size(); valid until the store changes.
    [[nodiscard]] std::string_view operator[](std::uint64_t index) const noexcept;

    /// Puts @p text before the first comment.
    void push_front(std::string_view text);
    /// Appends empty comments until the store holds @p size of them; nothing when it holds more. The cost
    /// does not depend on their number.
    void append_empty_up_to(std::uint64_t size);
    /// Inserts @p text so that it has @p index (at most size()); the comments from there on move up by one.
    void insert(std::uint64_t index, std::string_view text);

    /// Replaces everything by @p comments.
    void assign(const std::deque<std::string>& comments);
    /// Appends every comment to @p comments, in order. When it throws, some may have been appended.
    void copy_to(std::deque<std::string>& comments) const;

private:
    /// A kept comment, or a gap: some empty comments. One number says which, so that it takes eight bytes.
    class entry {
    public:
        /// Leaves the entry open; none is read before it is assigned.
        entry() noexcept = default;
        /// The comment that the arena holds at @p place.
        static entry text(const char* place) noexcept {
            return entry(reinterpret_cast<std::uintptr_t>(place));
        }
        /// @p count empty comments.
        static entry gap(std::uint64_t count) noexcept { return entry(count | gap_flag); }

        /// The number of comments that it stands for.
        [[nodiscard]] std::uint64_t comments() const noexcept { return is_gap() ? value ^ gap_flag : 1; }
        /// The text of the comments that it stands for.
        [[nodiscard]] std::string_view text() const noexcept;

    private:
        /// Set in no address of a text.
        static constexpr std::uint64_t gap_flag = std::uint64_t{1} << 63;

        explicit entry(std::uint64_t bits) noexcept : value(bits) {}
        [[nodiscard]] bool is_gap() const noexcept { return (value & gap_flag) != 0; }

        std::uint64_t value;
    };
    class segment;
    struct segment_slot {
        std::uint64_t comments; ///< that the segment stands for
        std::unique_ptr<segment> entries;
    };
    /// A place among the entries. The first comment of the entry has the index `first`.
    struct cursor {
        std::size_t segment = 0;
        std::uint64_t segment_first = 0; ///< index of the first comment of the segment
        std::uint32_t entry = 0;         ///< counted in the segment
        std::uint64_t first = 0;
    };

    [[nodiscard]] cursor place_of(std::uint64_t index) const noexcept;
    [[nodiscard]] entry kept(std::string_view text);
    void insert_between(std::uint64_t index, std::string_view text);
    void insert_behind(std::uint64_t index, std::string_view text);
    static void insert(segment_slot& slot, std::uint32_t place, entry added) noexcept;
    void append(entry added) noexcept;
    [[nodiscard]] bool has_room_for_two(std::size_t number) const noexcept;
    void split(cursor& place);
    [[nodiscard]] cursor room_before(cursor& next);
    void swap(comment_store& other) noexcept;

    std::deque<segment_slot> segments; ///< none empty
    std::uint64_t listed = 0;          ///< comments that the entries stand for
    std::uint64_t empties_behind = 0;  ///< empty comments after the last entry
    text_arena texts;
    mutable cursor found; ///< the place of the comment read last
};

} // namespace kvr
