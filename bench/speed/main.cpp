// speed_table TOOL FOLDER [GROUP]
// Prints the time of the library in units of the minimum that the machine needs; docs/performance.md explains
// the rows. TOOL is kvrmem, built for speed. FOLDER is on a memory file system. GROUP is one of files, tool,
// memory, numbers, words, bytes, operations.

#include "bench/speed/table.h"
#include "bench/speed/work.h"

#include <cstdio>
#include <cstring>
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

int main(int count, char** words) {
    if (count > 1) {
        const int answer = speed::run_work({words + 1, words + count});
        if (answer >= 0) {
            return answer;
        }
    }
    if (count < 3) {
        std::fputs("usage: speed_table TOOL FOLDER [files|tool|memory|numbers|words|bytes|operations]\n",
                   stderr);
        return 4;
    }
    const std::string_view group = count > 3 ? words[3] : "";
    const speed::table_settings settings = {.self = words[0], .tool = words[1], .folder = words[2]};
    speed::print_head();
    if (group.empty() || group == "files") {
        speed::file_rows(settings);
    }
    if (group.empty() || group == "tool") {
        speed::tool_rows(settings);
    }
    if (group.empty() || group == "memory") {
        speed::memory_rows();
    }
    if (group.empty() || group == "numbers") {
        speed::number_rows(settings);
    }
    if (group.empty() || group == "words") {
        speed::word_rows(settings);
    }
    if (group.empty() || group == "bytes") {
        speed::byte_rows(settings);
    }
    if (group.empty() || group == "operations") {
        speed::operation_rows(settings);
    }
    return 0;
}
