#include "tools/kvrmem/memory/mif_input.h"

#include "kvr/memory/mif/mif_reader.h"
#include "kvr/numeric/digit_value.h"
#include "tools/kvrmem/memory/fault_text.h"
#include "tools/kvrmem/memory/file_format.h"
#include "tools/kvrmem/memory/mif_statement_faults.h"
#include "tools/kvrmem/memory/mif_unread_text.h"
#include "tools/kvrmem/memory/word_text.h"
#include "tools/kvrmem/surroundings/tool_error.h"
#include "tools/kvrmem/surroundings/visible_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace kvrmem {

namespace {

[[noreturn]] void fail_at(const std::string& name, const kvr::line_place& place, const std::string& what) {
    throw tool_error(exit_code::bad_input,
                     fmt::format("{}:{}:{}: error: {}", name, place.line, place.column, what));
}

[[noreturn]] void fail_at(const std::string& name, std::uint64_t line, const std::string& what) {
    throw tool_error(exit_code::bad_input, fmt::format("{}:{}: error: {}", name, line, what));
}

/// Ends the read at the first fault, and at what the library would read without a word though it cannot be
/// meant so.
class strict_observer : public kvr::mif_observer {
public:
    strict_observer(std::string file_name, const kvr::mif_memory& target)
        : name(std::move(file_name)),
          memory(target) {}

    bool fault(const kvr::read_fault& fault, std::string_view text) override {
        if (fault.code == kvr::fault_code::missing_end) {
            throw tool_error(exit_code::bad_input, fmt::format("{}: error: {}", name, what_is_missing()));
        }
        const std::string what =
            describe_mif_fault(fault, text, {memory.number_of_words, memory.address_radix}).message;
        if (fault.column == 0) {
            fail_at(name, fault.line, what);
        }
        fail_at(name, {fault.line, fault.column}, what);
    }
    void words(std::uint64_t /*first*/, std::uint64_t /*last*/, std::uint64_t /*line*/) override {}
    [[nodiscard]] bool wants_every_line() const override { return false; }

    void content_line(const kvr::mif_content& content) override {
        check_inner_statements(content);
        check_address(content, content.first_address);
        if (content.last_address.found()) {
            check_address(content, content.last_address);
            check_surplus(content);
        }
        check_rest(content);
        check_separators(content);
        check_line_breaks(content);
    }

    void behind_begin(std::string_view rest, std::uint64_t line) override {
        has_begin = true;
        const kvr::text_span left_out = trimmed_span(rest);
        if (left_out.found()) {
            fail_at(name, line,
                    fmt::format("'{}' stands behind BEGIN and would be left out; give it a line of its own",
                                left_out.in(rest)));
        }
    }

    void end_statement(const kvr::mif_content& statement) override {
        constexpr std::string_view keyword = "END";
        const std::size_t end = statement.text.find(keyword);
        const kvr::text_span before = trimmed_span(statement.text.substr(0, end));
        if (before.found() && before.in(statement.text) != "BEGIN") {
            fail_at(name, statement.place(before.begin),
                    fmt::format(
                        "'{}' stands before END in one statement and would be left out; end it with a ';' "
                        "and a line break",
                        before.in(statement.text)));
        }
        behind_end(statement.text.substr(end + keyword.size()), statement.pieces.back().line);
    }

    void behind_end(std::string_view rest, std::uint64_t line) override {
        const kvr::text_span left_out = find_text_behind_end(rest);
        if (left_out.found()) {
            fail_at(
                name, line,
                fmt::format("'{}' stands behind END and would be left out; move it before END, or make it "
                            "a comment",
                            visible(left_out.in(rest))));
        }
    }

    void cut_at_percent(std::string_view rest, std::uint64_t line) override {
        const kvr::text_span behind = find_text_behind_comment(rest);
        if (behind.found()) {
            fail_at(
                name, line,
                fmt::format("'{}' stands behind a comment and would be left out; give it a line of its own",
                            behind.in(rest)));
        }
    }

private:
    /// Why there was no END. A depth in a line with "WIDTH" is none.
    [[nodiscard]] const char* what_is_missing() const {
        if (has_begin) {
            return "there is no END;";
        }
        if (memory.word_size == 0) {
            return memory.number_of_words == 0 ? "there is no WIDTH and no DEPTH" : "there is no WIDTH";
        }
        return memory.number_of_words == 0 ? "there is no line with DEPTH= and without WIDTH"
                                           : "there is no CONTENT BEGIN behind WIDTH and DEPTH";
    }
    void check_address(const kvr::mif_content& content, const kvr::text_span& token) const {
        const std::string_view digits = token.in(content.text);
        if (!is_number_in(digits, memory.address_radix)) {
            fail_at(name, content.place(token.begin),
                    fmt::format("address {} is no number in ADDRESS_RADIX {}", digits,
                                radix_title(memory.address_radix)));
        }
    }
    void check_surplus(const kvr::mif_content& content) const {
        const kvr::text_span surplus = find_surplus_value(content);
        if (surplus.found()) {
            fail_at(name, content.place(surplus.begin),
                    fmt::format("value {} is beyond the {} addresses of the range", surplus.in(content.text),
                                std::uint64_t{content.last} - content.first + 1));
        }
    }
    void check_inner_statements(const kvr::mif_content& content) const {
        const std::vector<inner_statement> inner = find_inner_statements(content);
        if (!inner.empty()) {
            const inner_statement& first = inner.front();
            fail_at(name, place_behind(content, first.behind),
                    fmt::format("no {} before '{}'", first.has_value ? "';'" : "value",
                                visible(content.text.substr(first.address, first.end - first.address))));
        }
    }
    /// One statement a line is all that is read as it looks.
    void check_rest(const kvr::mif_content& content) const {
        const kvr::text_span behind = find_text_behind_semicolon(content.text);
        if (behind.found()) {
            fail_at(
                name, content.place(behind.begin),
                fmt::format("'{}' stands behind a ';'; give it a line of its own", behind.in(content.text)));
        }
    }
    /// The library takes for a blank what belongs to no address and no value.
    void check_separators(const kvr::mif_content& content) const {
        const std::vector<kvr::text_span> stray = find_stray_characters(content);
        if (!stray.empty()) {
            fail_at(name, content.place(stray.front().begin),
                    fmt::format("'{}' belongs to no address and no value", stray.front().in(content.text)));
        }
    }
    void check_line_breaks(const kvr::mif_content& content) const {
        for (const kvr::line_piece& piece : content.pieces) {
            if (continues_a_value(content, piece)) {
                fail_at(name, {piece.line, 1},
                        "the line goes on with the value of the line before; put a blank before it");
            }
        }
    }

    std::string name;
    const kvr::mif_memory& memory;
    bool has_begin = false;
};

/// Reads a file again to find the first value that is no word of the memory.
class value_checker : public strict_observer {
public:
    value_checker(const std::string& file_name, const kvr::mif_memory& target, std::uint32_t bits)
        : strict_observer(file_name, target),
          name(file_name),
          memory(target),
          width(bits) {}

    [[nodiscard]] bool wants_every_line() const override { return true; }
    void content_line(const kvr::mif_content& content) override {
        strict_observer::content_line(content);
        std::string word;
        for (const std::string_view value : content.values) {
            const auto error = make_word(value, memory.memory_radix, width, word);
            if (error) {
                fail_at(name, content.place(static_cast<std::size_t>(value.data() - content.text.data())),
                        describe(*error, value, memory.memory_radix, width));
            }
        }
    }

private:
    std::string name;
    const kvr::mif_memory& memory;
    std::uint32_t width;
};

/// Remembers the last line that sets an address.
class address_watch : public kvr::mif_observer {
public:
    explicit address_watch(std::uint32_t watched) : address(watched) {}
    bool fault(const kvr::read_fault& /*fault*/, std::string_view /*text*/) override { return false; }
    void words(std::uint64_t first, std::uint64_t last, std::uint64_t line) override {
        if (first <= address && address <= last) {
            found = line;
        }
    }
    [[nodiscard]] bool wants_every_line() const override { return true; }
    void content_line(const kvr::mif_content& /*content*/) override {}
    void cut_at_percent(std::string_view /*rest*/, std::uint64_t /*line*/) override {}
    [[nodiscard]] std::uint64_t line() const noexcept { return found; }

private:
    std::uint32_t address;
    std::uint64_t found = 0;
};

void read_with(const input_file& file, kvr::mif_memory& memory, kvr::mif_observer& observer) {
    kvr::fill_radix_names(memory);
    memory.memory_initialize_value.clear();
    kvr::line_source lines = file.lines(kvr::mif_reader::source_limit);
    const bool complete = kvr::mif_reader(memory, &observer).read(lines);
    file.require_whole(lines);
    if (!complete) {
        throw tool_error(exit_code::internal, file.name() + ": the reader refused the file without a reason");
    }
}

void require_known_radix(const input_file& file, KVR_MEMORY_RADIXES radix, std::string_view keyword) {
    if (radix == RADIX_NONE) {
        throw tool_error(
            exit_code::bad_input,
            fmt::format("{}: error: {} is none of BIN, OCT, DEC, UNS and HEX", file.name(), keyword));
    }
}

/// Turns the texts of the file into words; finds the place of the first that is none.
void make_words(const input_file& file, const input_options& options, kvr::mif_memory& memory) {
    const std::uint32_t width = options.width.value_or(memory.word_size);
    require_proportionate_words(file, memory.data_words, width);
    const bool all_words = memory.data_words.transform(
        [&memory, width](std::string_view text, std::string& word) {
            word.clear();
            return text.empty() || !make_word(text, memory.memory_radix, width, word);
        },
        [&memory, width](const kvr::word_row& row) {
            return memory.memory_radix == RADIX_HEX && are_words(row, width);
        });
    if (!all_words) {
        kvr::mif_memory again(nullptr);
        value_checker checker(file.name(), again, width);
        read_with(file, again, checker);
        throw tool_error(exit_code::bad_input, file.name() + ": changed while it was read");
    }
}

} // namespace

memory_image read_mif(const input_file& file, const input_options& options) {
    kvr::mif_memory memory(nullptr);
    strict_observer observer(file.name(), memory);
    read_with(file, memory, observer);
    require_known_radix(file, memory.address_radix, "ADDRESS_RADIX");
    require_known_radix(file, memory.memory_radix, "DATA_RADIX");
    if (memory.word_size > widest_word) {
        throw tool_error(exit_code::bad_input,
                         fmt::format("{}: error: WIDTH is {}; kvrmem takes words of up to {} bits",
                                     file.name(), memory.word_size, widest_word));
    }
    make_words(file, options, memory);
    memory_image image;
    image.format = FILE_TYPE_MIF;
    image.width = options.width.value_or(memory.word_size);
    image.depth = memory.number_of_words;
    image.address_radix = memory.address_radix;
    image.data_radix = memory.memory_radix;
    image.words = std::move(memory.data_words);
    return image;
}

std::uint64_t mif_line_that_sets(const input_file& file, std::uint32_t address) {
    kvr::mif_memory memory(nullptr);
    address_watch watch(address);
    read_with(file, memory, watch);
    return watch.line();
}

} // namespace kvrmem
