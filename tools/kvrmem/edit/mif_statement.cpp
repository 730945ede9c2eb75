#include "tools/kvrmem/edit/mif_statement.h"

#include "kvr/memory/mif/mif_reader.h"
#include "tools/kvrmem/edit/file_edit.h"
#include "tools/kvrmem/edit/mif_line_style.h"

#include <algorithm>
#include <string>

namespace kvrmem {

namespace {

/// Reads a file that is known to be right, and finds the bytes of each of its statements.
class statement_observer : public kvr::mif_observer {
public:
    statement_observer(std::string_view file_text, const std::function<void(const mif_statement&)>& taker)
        : text(file_text),
          take(taker),
          lines(file_text) {}

    bool fault(const kvr::read_fault& /*fault*/, std::string_view /*line*/) override { return false; }
    void words(std::uint64_t /*first*/, std::uint64_t /*last*/, std::uint64_t /*line*/) override {}
    [[nodiscard]] bool wants_every_line() const override { return true; }
    void cut_at_percent(std::string_view /*rest*/, std::uint64_t /*line*/) override {}
    void content_line(const kvr::mif_content& content) override {
        starts.clear();
        for (const kvr::line_piece& piece : content.pieces) {
            starts.push_back(lines.of(piece.line));
        }
        take(mif_statement(text, number, content, starts));
        ++number;
    }

private:
    std::string_view text;
    const std::function<void(const mif_statement&)>& take;
    line_starts lines;
    std::vector<std::size_t> starts;
    std::uint64_t number = 0;
};

/// The line of @p text at @p offset as the reader sees it: without line end and comments, in upper case.
std::string bare_line(std::string_view text, std::size_t offset) {
    std::string line(kvr::without_comments(text.substr(offset, end_of_line(text, offset) - offset)));
    kvr::to_upper(line);
    return line;
}

/// Follows the header up to the line that starts the content.
class content_finder {
public:
    /// True when @p line, which has no blanks, is the one with "CONTENT" behind width and depth.
    bool is_content(const std::string& line) {
        const bool has_width = line.find("WIDTH") != std::string::npos;
        width_seen = width_seen || has_width;
        depth_seen = depth_seen || (!has_width && line.find("DEPTH=") != std::string::npos);
        return width_seen && depth_seen && line.find("CONTENT") != std::string::npos;
    }

private:
    bool width_seen = false;
    bool depth_seen = false;
};

} // namespace

/// The line of the statement that the character at @p position of its text lies in.
std::size_t mif_statement::piece_of(std::size_t position) const {
    const auto behind_it = std::upper_bound(
        taken_apart.pieces.begin(), taken_apart.pieces.end(), position,
        [](std::size_t wanted, const kvr::line_piece& piece) { return wanted < piece.offset; });
    return static_cast<std::size_t>(behind_it - taken_apart.pieces.begin()) - 1;
}

std::size_t mif_statement::offset_of(std::size_t position) const {
    const std::size_t piece = piece_of(position);
    return starts[piece] + position - taken_apart.pieces[piece].offset;
}

std::size_t mif_statement::offset_of(std::string_view token) const {
    return offset_of(static_cast<std::size_t>(token.data() - taken_apart.text.data()));
}

std::string_view mif_statement::in_file(std::string_view token) const {
    return file.substr(offset_of(token), token.size());
}

std::string_view mif_statement::first_address() const {
    return in_file(taken_apart.first_address.in(taken_apart.text));
}

std::string_view mif_statement::last_address() const {
    return in_file(taken_apart.last_address.in(taken_apart.text));
}

std::size_t mif_statement::line_of(std::size_t position) const {
    return starts[piece_of(position)];
}

std::size_t mif_statement::end() const {
    return end_of_line(file, starts.back());
}

std::size_t mif_statement::behind() const {
    return next_line(file, starts.back());
}

std::string_view mif_statement::indent() const {
    const std::size_t position = is_range() ? brackets_of(taken_apart).open : taken_apart.first_address.begin;
    const std::size_t line = line_of(position);
    return file.substr(line, offset_of(position) - line);
}

void for_each_statement(std::string_view text, kvr::mif_memory& memory,
                        const std::function<void(const mif_statement&)>& take) {
    kvr::fill_radix_names(memory);
    memory.memory_initialize_value.clear();
    kvr::line_source lines(text, kvr::mif_reader::source_limit);
    statement_observer observer(text, take);
    static_cast<void>(kvr::mif_reader(memory, &observer).read(lines));
}

std::size_t content_start(std::string_view text) {
    content_finder header;
    bool in_content = false;
    for (std::size_t offset = 0; offset < text.size(); offset = next_line(text, offset)) {
        std::string line = bare_line(text, offset);
        if (!in_content) {
            kvr::strip_blanks(line); // as the reader does, up to this line
            in_content = header.is_content(line);
        }
        if (in_content && line.find("BEGIN") != std::string::npos) {
            return next_line(text, offset);
        }
    }
    return text.size();
}

std::size_t line_before_end(std::string_view text, std::size_t from) {
    for (std::size_t offset = from; offset < text.size(); offset = next_line(text, offset)) {
        if (bare_line(text, offset).find_first_not_of(" \t") != std::string::npos) {
            return offset;
        }
    }
    return text.size();
}

} // namespace kvrmem
