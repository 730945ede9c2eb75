#pragma once

#include "kvr/memory/store/text_arena.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <string_view>

namespace kvr {

/// The comments of a MIF file by index, with the semantics of a double-ended queue of strings. It supports
/// three uses, each in constant time for each step: a reader prepends comments, an editor inserts at
/// ascending addresses among billions of empty comments, and a writer walks from the first to the last.
/// Access to a distant index takes one step for every 256 entries on the way. A comment takes the memory of
/// its text and about nine bytes; a gap of empty comments between two others takes eight.
///
/// A call that throws (std::bad_alloc) has changed nothing. Not thread-safe: even concurrent reads need a
/// lock.
class comment_store {
public:
    comment_store();
    ~comment_store();
    comment_store(const comment_store&) = delete;
    comment_store& operator=(const comment_store&) = delete;

    [[nodiscard]] std::uint64_t size() const noexcept { return listed + empties_behind; }
    [[nodiscard]] bool empty() const noexcept { return size() == 0; }
    void clear() noexcept;

    /// Returns the comment at @p index, which must be below size(). Valid until the store changes.
    [[nodiscard]] std::string_view operator[](std::uint64_t index) const noexcept;

    /// Inserts @p text before the first comment.
    void push_front(std::string_view text);
    /// Appends empty comments up to a size of @p size; does nothing if there are more already. Takes constant
    /// time.
    void append_empty_up_to(std::uint64_t size);
    /// Inserts @p text at @p index (at most size()). The comments from there on move up by one.
    void insert(std::uint64_t index, std::string_view text);

    /// Replaces all comments by @p comments.
    void assign(const std::deque<std::string>& comments);
    /// Appends all comments to @p comments in order. If this throws, some may have been appended.
    void copy_to(std::deque<std::string>& comments) const;

private:
    /// A comment, or a gap of empty comments. One number of eight bytes encodes either.
    class entry {
    public:
        /// Uninitialized; must be assigned before it is read.
        entry() noexcept = default;
        /// The comment in the arena at @p place.
        static entry text(const char* place) noexcept {
            return entry(reinterpret_cast<std::uintptr_t>(place));
        }
        /// A gap of @p count empty comments.
        static entry gap(std::uint64_t count) noexcept { return entry(count | gap_flag); }

        /// Returns the number of comments.
        [[nodiscard]] std::uint64_t comments() const noexcept { return is_gap() ? value ^ gap_flag : 1; }
        /// Returns the text of these comments.
        [[nodiscard]] std::string_view text() const noexcept;

    private:
        /// Never set in the address of a text.
        static constexpr std::uint64_t gap_flag = std::uint64_t{1} << 63;

        explicit entry(std::uint64_t bits) noexcept : value(bits) {}
        [[nodiscard]] bool is_gap() const noexcept { return (value & gap_flag) != 0; }

        std::uint64_t value;
    };
    class segment;
    struct segment_slot {
        std::uint64_t comments; ///< number of comments in the segment
        std::unique_ptr<segment> entries;
    };
    /// A position among the entries. `first` is the index of the first comment of the entry.
    struct cursor {
        std::size_t segment = 0;
        std::uint64_t segment_first = 0; ///< index of the first comment of the segment
        std::uint32_t entry = 0;         ///< index within the segment
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

    std::deque<segment_slot> segments; ///< never empty
    std::uint64_t listed = 0;          ///< number of comments in the entries
    std::uint64_t empties_behind = 0;  ///< empty comments after the last entry
    text_arena texts;
    mutable cursor found; ///< position of the comment read last
};

} // namespace kvr
