// Edits random words in random commented MIF files with the tool and checks every byte of the result:
// untouched text must not change, and the memory must be the expected one. The expectation does not come from
// the tool's code: the generator below knows the lines of the file and the memory.
//
// edit_keeps_bytes TOOL FOLDER [SEED]

#include "kvr/memory/mif/mif_reader.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <map>
#include <optional>
#include <random>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace {

constexpr std::uint32_t depth = 96;
constexpr std::size_t wanted_words = 3000;

struct radix {
    const char* name;
    unsigned base;
    bool is_signed;
};

constexpr std::array<radix, 5> radixes = {
    {{"BIN", 2, false}, {"OCT", 8, false}, {"DEC", 10, true}, {"UNS", 10, false}, {"HEX", 16, false}}};

struct token {
    std::size_t begin;
    std::size_t end;
    std::uint32_t address;
};

/// A line of a generated file.
struct file_line {
    enum class kind { other, values, range, end } what = kind::other;
    std::string text;          ///< without LF
    std::vector<token> tokens; ///< for a line of values
    std::size_t indent = 0;    ///< for a range line
    std::size_t tail = 0;      ///< the beginning of the text after its ";"
    std::uint32_t first = 0;
    std::uint32_t last = 0;
};

class random_numbers {
public:
    explicit random_numbers(std::uint32_t seed) : engine(seed) {}
    std::uint32_t below(std::uint32_t limit) { return static_cast<std::uint32_t>(engine() % limit); }
    bool one_in(std::uint32_t count) { return below(count) == 0; }
    template <class Container>
    const auto& pick(const Container& container) {
        return container[below(static_cast<std::uint32_t>(std::size(container)))];
    }

private:
    std::mt19937 engine;
};

constexpr std::array<const char*, 5> gaps = {"", " ", "  ", "\t", " \t "};
constexpr std::array<const char*, 4> blanks = {" ", "  ", "\t", ", "};

/// A MIF file in many styles, and the memory that it holds.
class generated_file {
public:
    generated_file(random_numbers& numbers, std::uint32_t bits)
        : random(numbers),
          width(bits),
          address_radix(random.pick(radixes)),
          data_radix(random.pick(radixes)),
          lower(random.one_in(2)),
          line_end(random.one_in(3) ? "\r" : ""),
          final_newline(!random.one_in(4)) {
        add_header();
        const std::uint32_t statements = random.below(40);
        for (std::uint32_t count = 0; count < statements; ++count) {
            add_statement();
        }
        add_end();
    }

    std::vector<file_line> lines;
    std::array<std::optional<std::uint32_t>, depth> memory;
    std::array<std::size_t, depth> setter{}; ///< the line that determines a word

    [[nodiscard]] std::string text() const {
        std::string result;
        for (const file_line& line : lines) {
            result += line.text + "\n";
        }
        result.resize(result.size() - (final_newline ? 0 : 1));
        return result;
    }
    [[nodiscard]] const char* ending() const { return line_end; }
    [[nodiscard]] std::uint32_t value(const std::string& digits) const {
        const long long number = std::strtoll(digits.c_str(), nullptr, static_cast<int>(data_radix.base));
        return static_cast<std::uint32_t>(number) & ((1U << width) - 1);
    }

private:
    void add(file_line line) {
        line.text += line_end;
        lines.push_back(std::move(line));
    }
    void add_text(const std::string& text, file_line::kind what = file_line::kind::other) {
        file_line line;
        line.what = what;
        line.text = text;
        add(line);
    }
    static file_line content_line(file_line::kind what, std::uint32_t first, std::uint32_t last) {
        file_line line;
        line.what = what;
        line.first = first;
        line.last = last;
        return line;
    }
    void add_header() {
        add_text("-- made of numbers % not closed");
        add_text("WIDTH = " + std::to_string(width) + "; % bits %");
        add_text(random.one_in(2) ? "" : "  % a line -- of its own %");
        add_text("DEPTH=" + std::to_string(depth) + ";");
        add_text(std::string("address_radix=") + address_radix.name + "; -- addresses");
        add_text(std::string("DATA_RADIX = ") + data_radix.name + " ;");
        add_text(random.one_in(2) ? "CONTENT BEGIN" : "Content\tbegin -- CONTENT");
    }
    void add_end() {
        add_text(random.one_in(2) ? "END;" : "  end ; -- END", file_line::kind::end);
        if (!final_newline) {
            lines.back().text.resize(lines.back().text.size() - std::string_view(line_end).size());
        }
    }
    void add_statement() {
        switch (random.below(6)) {
        case 0:
            return add_text(random.one_in(2) ? "" : "  -- between: 5 : 00; [1..2]");
        case 1:
            return add_text("% 7 : 00; %");
        case 2:
            return add_values(1 + random.below(6));
        case 3:
        case 4:
            return add_range();
        default:
            return add_values(1);
        }
    }
    [[nodiscard]] std::string digits_of(std::uint32_t number, unsigned base, std::size_t least) {
        const std::string_view all = lower ? "0123456789abcdef" : "0123456789ABCDEF";
        std::string digits;
        for (; number != 0 || digits.empty(); number /= base) {
            digits += all[number % base];
        }
        digits.append(digits.size() < least ? least - digits.size() : 0, '0');
        return {digits.rbegin(), digits.rend()};
    }
    std::string address_text(std::uint32_t address) {
        return digits_of(address, address_radix.base, random.below(4));
    }
    std::string value_text(std::uint32_t number) {
        const std::size_t least = random.below(6);
        if (data_radix.is_signed && number >> (width - 1) != 0) {
            return "-" + digits_of((1U << width) - number, data_radix.base, least);
        }
        return digits_of(number, data_radix.base, least);
    }
    /// Every content line contains its own number, so that all lines differ.
    std::string comment() {
        const std::string number = std::to_string(lines.size());
        return random.one_in(2) ? " -- line " + number : "\t% " + number + " : 00; % ";
    }
    void set(std::uint32_t address, std::uint32_t number) {
        memory[address] = number;
        setter[address] = lines.size();
    }
    /// "<address> : <value> <value> …;", sometimes over two lines.
    void add_values(std::uint32_t count) {
        const std::uint32_t first = random.below(depth - count + 1);
        if (count == 1 && !single_addresses.insert(first).second) {
            return;
        }
        file_line line = content_line(file_line::kind::values, first, first + count - 1);
        line.text = random.pick(gaps) + address_text(first) + random.pick(gaps) + ":" + random.pick(gaps);
        for (std::uint32_t address = first; address < first + count; ++address) {
            const std::uint32_t number = random.below(1U << width);
            if (address != first && random.one_in(5)) {
                line.text += comment();
                add(line);
                line.text = "   ";
                line.tokens.clear();
            } else if (address != first) {
                line.text += random.pick(blanks);
            }
            set(address, number);
            const std::size_t begin = line.text.size();
            line.text += value_text(number);
            line.tokens.push_back({begin, line.text.size(), address});
        }
        line.text += random.pick(gaps) + std::string(";") + comment();
        add(line);
    }
    /// "[<first>..<last>] : <value> <value> …;"
    void add_range() {
        const std::uint32_t first = random.below(depth - 1);
        const std::uint32_t last = first + 1 + random.below(std::min(depth - first - 1, 30U));
        const std::uint32_t count = 1 + random.below(std::min(last - first + 1, 4U));
        file_line line = content_line(file_line::kind::range, first, last);
        line.text = random.pick(gaps);
        line.indent = line.text.size();
        line.text += "[" + std::string(random.pick(gaps)) + address_text(first) + ".." + address_text(last) +
                     random.pick(gaps) + "]" + random.pick(gaps) + ":";
        std::vector<std::uint32_t> numbers;
        for (std::uint32_t index = 0; index < count; ++index) {
            numbers.push_back(random.below(1U << width));
            line.text += (index == 0 ? random.pick(gaps) : random.pick(blanks)) + value_text(numbers.back());
        }
        line.text += random.pick(gaps);
        line.tail = line.text.size();
        line.text += ";" + comment();
        for (std::uint32_t address = first; address <= last; ++address) {
            set(address, numbers[(address - first) % count]);
        }
        add(line);
    }

    random_numbers& random;
    std::uint32_t width;
    radix address_radix;
    radix data_radix;
    bool lower;
    const char* line_end;
    bool final_newline;
    std::set<std::uint32_t> single_addresses;
};

/// Edits, as operands of the tool and with their meaning.
struct random_edits {
    std::string command;
    std::map<std::uint32_t, std::uint32_t> words;
};

std::string in_some_radix(random_numbers& random, std::uint32_t number) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), random.one_in(2) ? "0x%X" : "%u", number);
    return text.data();
}

random_edits make_edits(random_numbers& random, std::uint32_t width) {
    random_edits edits;
    const bool fills = random.one_in(3);
    edits.command = fills ? "fill x.mif" : "set x.mif";
    for (std::uint32_t count = 1 + random.below(fills ? 3 : 12); count > 0; --count) {
        const std::uint32_t first = random.below(depth);
        const std::uint32_t last = fills ? first + random.below(depth - first) : first;
        std::vector<std::uint32_t> values(1 + random.below(std::min(last - first + 1, 3U)));
        edits.command += " " + std::to_string(first) + (fills ? ".." + std::to_string(last) : "") + "=";
        for (std::size_t index = 0; index < values.size(); ++index) {
            values[index] = random.below(random.one_in(2) ? 4 : 1U << width);
            edits.command += (index == 0 ? "" : ",") + in_some_radix(random, values[index]);
        }
        for (std::uint32_t address = first; address <= last; ++address) {
            edits.words[address] = values[(address - first) % values.size()];
        }
    }
    return edits;
}

std::vector<std::string> lines_of(const std::string& text) {
    std::vector<std::string> lines;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = std::min(text.find('\n', begin), text.size());
        lines.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return lines;
}

/// Compares the edited file with the generated one.
class byte_comparison {
public:
    byte_comparison(const generated_file& before, const random_edits& made) : file(before), edits(made) {
        for (const auto& [address, number] : edits.words) {
            if (!file.memory[address]) {
                unset_is_set = true;
            } else if (*file.memory[address] != number) {
                touched_lines.insert(file.setter[address]);
                touched_words.insert(address);
            }
        }
    }

    /// A description of the first fault; "" if there is none.
    std::string compare(const std::string& text) {
        const std::vector<std::string> found = lines_of(text);
        std::size_t next = 0;
        const file_line* range = nullptr; ///< the touched range whose first line has been passed
        for (std::size_t number = 0; number < file.lines.size(); ++number) {
            const file_line& line = file.lines[number];
            while (next < found.size() && !is_like(number, found[next])) {
                const bool before_end = line.what == file_line::kind::end && unset_is_set;
                if (!(range != nullptr && is_part_of(*range, found[next])) &&
                    !(before_end && is_new_line(found[next]))) {
                    return "this line should not be: " + found[next];
                }
                ++next;
            }
            if (next == found.size()) {
                return "this line is gone: " + line.text;
            }
            ++next;
            range = line.what == file_line::kind::range && touched_lines.contains(number) ? &line : nullptr;
        }
        const bool ends_alike = text.ends_with('\n') == file.text().ends_with('\n');
        return next == found.size() && ends_alike ? "" : "there is text after the end";
    }

private:
    /// True if the line @p number may become @p found.
    [[nodiscard]] bool is_like(std::size_t number, const std::string& found) const {
        const file_line& line = file.lines[number];
        if (line.what == file_line::kind::values) {
            return has_same_frame(line, found);
        }
        if (line.what == file_line::kind::range && touched_lines.contains(number)) {
            return found.starts_with(line.text.substr(0, line.indent)) &&
                   found.ends_with(line.text.substr(line.tail));
        }
        return found == line.text;
    }
    /// Only touched tokens may differ.
    [[nodiscard]] bool has_same_frame(const file_line& line, const std::string& found) const {
        std::size_t at = 0;
        std::size_t after = 0;
        for (const token& word : line.tokens) {
            if (touched_words.contains(word.address) && is_set_here(line, word.address)) {
                const std::string before = line.text.substr(after, word.begin - after);
                if (found.compare(at, before.size(), before) != 0) {
                    return false;
                }
                at = found.find_first_not_of("-0123456789abcdefABCDEF", at + before.size());
                after = word.end;
            }
        }
        return at <= found.size() && found.substr(at) == line.text.substr(after);
    }
    [[nodiscard]] bool is_set_here(const file_line& line, std::uint32_t address) const {
        const file_line& setter = file.lines[file.setter[address]];
        return setter.what == line.what && setter.first == line.first && setter.last == line.last;
    }
    [[nodiscard]] bool is_part_of(const file_line& range, const std::string& found) const {
        return found.starts_with(range.text.substr(0, range.indent)) && is_new_line(found);
    }
    [[nodiscard]] bool is_new_line(const std::string& found) const {
        return found.ends_with(std::string(";") + file.ending()) && found.find("--") == std::string::npos &&
               found.find('%') == std::string::npos;
    }

    const generated_file& file;
    const random_edits& edits;
    bool unset_is_set = false;
    std::set<std::size_t> touched_lines;
    std::set<std::uint32_t> touched_words;
};

std::string compare_memory(const generated_file& file, const random_edits& edits, const std::string& path) {
    kvr::mif_memory memory(nullptr);
    kvr::fill_radix_names(memory);
    memory.memory_initialize_value.clear();
    memory.file_name = path;
    if (!kvr::mif_reader(memory).read()) {
        return "the edited file cannot be read";
    }
    for (std::uint32_t address = 0; address < depth; ++address) {
        const auto edited = edits.words.find(address);
        const auto expected =
            edited != edits.words.end() ? std::optional(edited->second) : file.memory[address];
        const std::string word(memory.data_words[address]);
        const auto found = word.empty() ? std::nullopt : std::optional(file.value(word));
        if (found != expected) {
            return "address " + std::to_string(address) + " holds '" + word + "'";
        }
    }
    return "";
}

std::string read_file(const std::string& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

void write_file(const std::string& path, const std::string& text) {
    std::ofstream(path, std::ios::binary) << text;
}

/// A description of the first fault; "" if there is none.
std::string try_one(random_numbers& random, const std::string& tool, const std::string& folder,
                    std::size_t& words) {
    const std::uint32_t width = 4 + random.below(13);
    const generated_file file(random, width);
    const random_edits edits = make_edits(random, width);
    words += edits.words.size();
    const std::string path = folder + "/x.mif";
    write_file(path, file.text());
    write_file(folder + "/before.mif", file.text());
    const std::string command =
        "cd \"" + folder + "\" && \"" + tool + "\" " + edits.command + " 2>message.txt";
    // The command consists of numbers and of this program's own arguments. Double quotes also hold on
    // Windows.
    if (std::system(command.c_str()) != 0) { // NOLINT(cert-env33-c,concurrency-mt-unsafe)
        return edits.command + ": " + read_file(folder + "/message.txt");
    }
    const std::string wrong = byte_comparison(file, edits).compare(read_file(path));
    const std::string wrong_memory = compare_memory(file, edits, path);
    return wrong.empty() && wrong_memory.empty() ? "" : edits.command + ": " + wrong + " " + wrong_memory;
}

} // namespace

int main(int count, char** words) {
    if (count < 3) {
        return 4;
    }
    const std::uint32_t seed =
        count > 3 ? static_cast<std::uint32_t>(std::strtoul(words[3], nullptr, 10)) : 1;
    random_numbers random(seed);
    std::size_t edited = 0;
    std::size_t files = 0;
    while (edited < wanted_words) {
        const std::string wrong = try_one(random, words[1], words[2], edited);
        if (!wrong.empty()) {
            std::fprintf(stderr, "file %zu of seed %u (before.mif, x.mif): %s\n", files, seed, wrong.c_str());
            return 1;
        }
        ++files;
    }
    std::printf("%zu words in %zu files\n", edited, files);
    return 0;
}
