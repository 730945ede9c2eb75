// speed_table TOOL FOLDER GROUP
// Prints the time of the library in units of the minimum that the machine needs; docs/performance.md explains
// the rows. TOOL is kvrmem, built for speed. FOLDER is on a memory file system. GROUP is one of files, tool,
// memory, numbers, words, bytes, operations. A process measures one group, because the peak of memory of a
// child process is at least the memory of the process that starts it.

#include "bench/speed/table.h"
#include "bench/speed/work.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <string_view>

namespace speed {

void print_head() {
    std::printf("%-46s %8s %8s %8s  %s\n", "work", "target", "stretch", "reached", "measured");
}

void print_row(const table_row& row) {
    const char* verdict = row.reached <= row.stretch  ? "stretch"
                          : row.reached <= row.target ? "target"
                                                      : "MISSED";
    std::printf("%-46s %8.3g %8.3g %8.3g  %-8s %s\n", row.work.c_str(), row.target, row.stretch, row.reached,
                verdict, row.absolute.c_str());
    std::fflush(stdout);
}

} // namespace speed

namespace {

struct group {
    std::string_view name;
    void (*print_rows)(const speed::table_settings&);
};
constexpr std::array<group, 7> groups = {{{"files", speed::file_rows},
                                          {"tool", speed::tool_rows},
                                          {"memory", speed::memory_rows},
                                          {"numbers", speed::number_rows},
                                          {"words", speed::word_rows},
                                          {"bytes", speed::byte_rows},
                                          {"operations", speed::operation_rows}}};

} // namespace

int main(int count, char** words) {
    if (count > 1) {
        const int answer = speed::run_work({words + 1, words + count});
        if (answer >= 0) {
            return answer;
        }
    }
    const std::string_view name = count == 4 ? words[3] : "";
    const auto* const chosen = std::find_if(groups.begin(), groups.end(),
                                            [&](const group& candidate) { return candidate.name == name; });
    if (chosen == groups.end()) {
        std::fputs("usage: speed_table TOOL FOLDER files|tool|memory|numbers|words|bytes|operations\n",
                   stderr);
        return 4;
    }
    speed::print_head();
    chosen->print_rows({.self = words[0], .tool = words[1], .folder = words[2]});
    return 0;
}
