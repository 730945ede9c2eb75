// Runs command lines as the tool does, in a folder with a file of each format.

#include "fuzz/expectation.h"
#include "fuzz/scratch.h"
#include "fuzz/tool_targets.h"
#include "tools/kvrmem/commands/program.h"
#include "tools/kvrmem/platform/tool_error.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <getopt.h>
#include <string>
#include <system_error>
#include <unistd.h>
#include <vector>

namespace kvr_fuzz {

namespace {

struct sample_file {
    const char* name;
    const char* contents;
};
constexpr std::array<sample_file, 4> samples = {{
    {"a.mif", "WIDTH=8;\nDEPTH=16;\nADDRESS_RADIX=HEX;\nDATA_RADIX=HEX;\nCONTENT BEGIN\n"
              "0 : 1F 20 X3; -- three\n[4..B] : 5A;\nF : FF;\nEND;\n"},
    {"a.hex", ":0400000012345678E8\n:020008000102F3\n:00000001FF\n"},
    {"a.rif", "@0\n12 34 56\n@8\nAB CD \n"},
    {"b.mif", "WIDTH=12;\nDEPTH=4;\nDATA_RADIX=DEC;\nCONTENT BEGIN\n0 : -5 7;\n3 : 2048\nEND;\n"},
}};

/// The working directory while a command runs. No command can name a file outside of it.
class command_folder {
public:
    command_folder() : before(open(".", O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
        expect(before >= 0, "the working directory cannot be opened");
    }
    ~command_folder() { close(before); }
    command_folder(const command_folder&) = delete;
    command_folder& operator=(const command_folder&) = delete;

    void enter() const {
        expect(chdir(folder.path().c_str()) == 0, "the scratch folder cannot be entered");
        for (const std::filesystem::directory_entry& entry : std::filesystem::directory_iterator(".")) {
            std::error_code ignored;
            std::filesystem::remove(entry.path(), ignored);
        }
        for (const sample_file& sample : samples) {
            write_file(sample.name, sample.contents);
        }
    }
    void leave() const { expect(fchdir(before) == 0, "the working directory cannot be entered again"); }
    /// True if no command has left a temporary file.
    [[nodiscard]] static bool is_clean() {
        const auto is_temporary = [](const std::filesystem::directory_entry& entry) {
            return entry.path().filename().string().starts_with(".kvrmem.");
        };
        const std::filesystem::directory_iterator entries(".");
        return std::none_of(begin(entries), end(entries), is_temporary);
    }

private:
    scratch_folder folder;
    int before;
};

/// Empty standard input.
void close_standard_input() {
    const int nothing = open("/dev/null", O_RDONLY | O_CLOEXEC);
    expect(nothing >= 0 && dup2(nothing, STDIN_FILENO) == STDIN_FILENO, "standard input cannot be replaced");
    close(nothing);
}

/// One word per line. A slash becomes "_", so that no path leads out of the working directory.
std::vector<std::string> words_in(std::string_view input) {
    std::vector<std::string> words = {"kvrmem"};
    std::string word;
    for (const char character : input) {
        if (character == '\n') {
            words.push_back(word);
            word.clear();
        } else {
            word += character == '/' ? '_' : character;
        }
    }
    if (!word.empty()) {
        words.push_back(word);
    }
    return words;
}

bool is_digit(char character) {
    return character >= '0' && character <= '9';
}

/// True if @p word has more than @p most_digits digits in a row, or a digit followed by a unit.
bool holds_large_number(std::string_view word, std::size_t most_digits) {
    std::size_t digits = 0;
    for (const char character : word) {
        const bool counts =
            is_digit(character) || (digits > 0 && std::isxdigit(static_cast<unsigned char>(character)) != 0);
        if (digits > 0 && std::string_view("kKmMgG").find(character) != std::string_view::npos) {
            return true;
        }
        digits = counts ? digits + 1 : 0;
        if (digits > most_digits) {
            return true;
        }
    }
    return false;
}

/// A number of billions makes a command write that many words. The cost of the words that "new" generates by
/// a rule is proportional to their number times their width in bits.
bool asks_for_too_much(const std::vector<std::string>& words) {
    const std::size_t most_digits = words.size() > 1 && words[1] == "new" ? 3 : 5;
    return std::any_of(words.begin(), words.end(), [most_digits](const std::string& word) {
        return holds_large_number(word, most_digits);
    });
}

/// getopt() keeps its position after it refuses a command line; a new process starts at the first word.
void forget_options() {
    std::array<char, 2> name = {"x"};
    std::array<char*, 2> words = {name.data(), nullptr};
    optind = 0;
    static_cast<void>(getopt(1, words.data(), ""));
}

int run(std::vector<std::string>& words) {
    std::vector<char*> pointers(words.size() + 1);
    std::transform(words.begin(), words.end(), pointers.begin(),
                   [](std::string& word) { return word.data(); });
    forget_options();
    return kvrmem::run_program(static_cast<int>(words.size()), pointers.data());
}

} // namespace

void try_arguments(std::string_view input) {
    static const command_folder folder = [] {
        close_standard_input();
        return command_folder();
    }();
    std::vector<std::string> words = words_in(input);
    if (asks_for_too_much(words)) {
        return;
    }
    folder.enter();
    const int answer = run(words);
    expect(command_folder::is_clean(), "a temporary file was left");
    folder.leave();
    expect(answer >= 0 && answer < static_cast<int>(kvrmem::exit_code::internal),
           "the tool reports an internal error");
}

} // namespace kvr_fuzz
