#include "kvr/memory/mif/mif_writer.h"

#include "kvr/memory/mif/fast_mif_rows.h"
#include "kvr/memory/mif/mif_line.h"

#include <array>
#include <charconv>

namespace kvr {

namespace {

constexpr std::size_t longest_address = 32;

/// Returns the data comments one by one, then "".
class comment_walk {
public:
    explicit comment_walk(const comment_store& all) : comments(all) {}
    std::string_view next() { return index < comments.size() ? comments[index++] : std::string_view(); }

private:
    const comment_store& comments;
    std::size_t index = 0;
};

/// Writes the header up to and including the "CONTENT BEGIN" line. The comments of each list follow the same
/// line as in the file and replace an empty line of the layout there.
void write_header(const mif_memory& memory, output_file& output) {
    output.write('\n');
    if (!write_header_comments(memory, 0, output)) {
        output.write("-- Kovranti generated Memory Initialization File (.mif)\n\n");
    }
    output.write(width_line(memory));
    write_header_comments(memory, 1, output);
    output.write(depth_line(memory));
    if (!write_header_comments(memory, 2, output)) {
        output.write('\n');
    }
    output.write(address_radix_line(memory));
    write_header_comments(memory, 3, output);
    output.write(data_radix_line(memory));
    if (!write_header_comments(memory, 4, output)) {
        output.write('\n');
    }
    output.write("CONTENT BEGIN\n");
}

/// With a single data comment, every address gets a line of its own, since only lines can carry comments.
void write_content_with_comments(const mif_memory& memory, std::size_t address_width, output_file& output) {
    comment_walk comments(memory.data_comments);
    std::string line;
    for (std::uint32_t address = 0; address < memory.data_words.size(); ++address) {
        line.clear();
        append_content_line(line, address, address, memory.data_words[address], memory.address_radix,
                            address_width, comments.next());
        output.write(line);
    }
}

void write_content(const mif_memory& memory, output_file& output) {
    const word_store& words = memory.data_words;
    const std::size_t width = address_length(memory.number_of_words, memory.address_radix);
    if (!memory.data_comments.empty()) {
        write_content_with_comments(memory, width, output);
        return;
    }
    const bool with_runs = !memory.dont_consolidate_data;
    fast_mif_rows rows(memory.address_radix, width,
                       with_runs ? equal_words::share_a_line : equal_words::have_lines_of_their_own);
    std::string line;
    for (std::uint64_t address = 0; address < words.size();) {
        const auto first = static_cast<std::uint32_t>(address);
        if (const std::uint32_t written = rows.write(words.row_at(first), first, output)) {
            address += written;
            continue;
        }
        const word_run run = with_runs ? words.run_at(first) : word_run{first, first, words[first]};
        line.clear();
        append_content_line(line, first, run.last, run.text, memory.address_radix, width, {});
        output.write(line);
        address = std::uint64_t{run.last} + 1;
    }
}

bool report_not_opened(mif_memory& memory) {
    memory.file_not_found = true;
    memory.report_not_found();
    memory.error_occurred = true;
    return false;
}

} // namespace

void append_address(std::string& out, std::uint32_t number, KVR_MEMORY_RADIXES radix, std::size_t width) {
    const unsigned base = radix_base(radix);
    std::array<char, longest_address> digits{};
    const auto end =
        std::to_chars(digits.data(), digits.data() + digits.size(), number, static_cast<int>(base));
    const auto length = static_cast<std::size_t>(end.ptr - digits.data());
    if (base != 10 && length < width) {
        out.append(width - length, '0');
    }
    out.append(digits.data(), length);
}

std::size_t address_length(std::uint32_t number, KVR_MEMORY_RADIXES radix) {
    std::string text;
    append_address(text, number, radix, 0);
    return text.size();
}

void append_content_line(std::string& out, std::uint32_t first, std::uint32_t last, std::string_view data,
                         KVR_MEMORY_RADIXES address_radix, std::size_t address_width,
                         std::string_view comment) {
    out += '\t';
    if (first == last) {
        const std::size_t begin = out.size();
        append_address(out, first, address_radix, address_width);
        const std::size_t length = out.size() - begin;
        out.append(length < address_width ? address_width - length : 0, ' ');
    } else {
        out += '[';
        append_address(out, first, address_radix, address_width);
        out += "..";
        append_address(out, last, address_radix, address_width);
        out += ']';
    }
    out.append("  :   ").append(data).append(";");
    if (!comment.empty()) {
        out.append(" -- ").append(comment);
    }
    out += '\n';
}

std::string width_line(const mif_memory& memory) {
    return "WIDTH=" + decimal(memory.word_size) + ";\n";
}

std::string depth_line(const mif_memory& memory) {
    return "DEPTH=" + decimal(memory.number_of_words) + ";\n";
}

std::string address_radix_line(const mif_memory& memory) {
    return "ADDRESS_RADIX=" + radix_keyword(memory, memory.address_radix) + ";\n";
}

std::string data_radix_line(const mif_memory& memory) {
    return "DATA_RADIX=" + radix_keyword(memory, memory.memory_radix) + ";\n";
}

std::string radix_keyword(const mif_memory& memory, KVR_MEMORY_RADIXES radix) {
    for (const radix_name& entry : memory.radix_names) {
        if (entry.radix == radix) {
            return entry.name;
        }
    }
    return {};
}

bool write_header_comments(const mif_memory& memory, std::size_t index, output_file& output) {
    if (index >= memory.header_comments.size()) {
        return false;
    }
    for (const std::string& line : memory.header_comments[index].lines) {
        output.write("-- ");
        output.write(line);
        output.write('\n');
    }
    return !memory.header_comments[index].lines.empty();
}

bool write_mif_file(mif_memory& memory) {
    memory.file_not_found = false;
    output_file output = output_file::create(memory.file_name);
    if (!output.is_open()) {
        return report_not_opened(memory);
    }
    write_header(memory, output);
    write_content(memory, output);
    output.write("END;\n");
    write_header_comments(memory, 5, output);
    memory.error_occurred = !output.close();
    if (memory.error_occurred) {
        memory.report_write_failure();
    }
    return !memory.error_occurred;
}

} // namespace kvr
