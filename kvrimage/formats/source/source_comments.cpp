#include "kvrimage/formats/source/source_comments.h"

#include <algorithm>
#include <cstddef>

namespace kvrimage {

namespace {

/// Iterates over the comments of a text.
class comment_walk {
public:
    comment_walk(std::string_view text, const comment_marks& language) : contents(text), marks(language) {}

    /// Returns the place of the next comment and advances past it; of length 0 if there is none.
    span next() {
        while (at < contents.size()) {
            if (begins_here(marks.line)) {
                return take_until(end_of_line(at));
            }
            if (!marks.block_begin.empty() && begins_here(marks.block_begin)) {
                return take_until(end_of_block(at + marks.block_begin.size()));
            }
            at = end_of_other();
        }
        return {};
    }

private:
    [[nodiscard]] bool begins_here(std::string_view mark) const {
        return contents.substr(at, mark.size()) == mark;
    }
    [[nodiscard]] std::size_t end_of_line(std::size_t from) const {
        return std::min(contents.find('\n', from), contents.size());
    }
    [[nodiscard]] std::size_t end_of_block(std::size_t from) const {
        const std::size_t found = contents.find(marks.block_end, from);
        return found != std::string_view::npos ? found + marks.block_end.size() : contents.size();
    }
    /// Returns the end of the string or character literal that begins here, else the next position.
    [[nodiscard]] std::size_t end_of_other() const {
        if (marks.has_characters && contents[at] == '\'') {
            return end_of_character();
        }
        return marks.quotes.find(contents[at]) != std::string_view::npos ? end_of_quoted() : at + 1;
    }
    [[nodiscard]] std::size_t end_of_character() const {
        const std::size_t end = contents.substr(at + 1, 1) == "\\" ? at + 3 : at + 2;
        return end < contents.size() && contents[end] == '\'' ? end + 1 : at + 1;
    }
    /// Returns the end of the string that begins here.
    [[nodiscard]] std::size_t end_of_quoted() const {
        const char quote = contents[at];
        const std::size_t end = end_of_line(at);
        std::size_t inside = at + 1;
        while (inside < end && contents[inside] != quote) {
            inside += contents[inside] == '\\' ? std::size_t{2} : std::size_t{1};
        }
        return std::min(inside + 1, contents.size());
    }
    span take_until(std::size_t end) {
        const span found{at, end - at};
        at = end;
        return found;
    }

    std::string_view contents;
    const comment_marks& marks;
    std::size_t at = 0;
};

/// Returns whether write() makes the comment.
bool is_own(std::string_view comment, std::string_view own) {
    return !own.empty() && comment.starts_with(own) &&
           comment.find_first_not_of("0123456789ABCDEF", own.size()) == std::string_view::npos;
}

} // namespace

void find_source_comments(std::string_view contents, const comment_marks& marks,
                          const std::function<void(const span&)>& take) {
    comment_walk walk(contents, marks);
    for (span found = walk.next(); found.length != 0; found = walk.next()) {
        if (!is_own(found.in(contents), marks.own)) {
            take(found);
        }
    }
}

} // namespace kvrimage
