#include "kvrimage/kvrimage.h"

#include <cstdio>
#include <string>

/// Prints the first word of a memory file of any format in hexadecimal.
int main(int count, char** arguments) {
    if (count != 2) {
        return 4;
    }
    const kvrimage::read_result file = kvrimage::read(arguments[1]);
    for (const kvrimage::diagnostic& found : file.diagnostics) {
        std::fputs(kvrimage::diagnostic_text(found, arguments[1], "").c_str(), stderr);
    }
    if (!file.image) {
        return 2;
    }
    const kvrimage::memory_image& memory = *file.image;
    std::printf("%llu words of %u bits, the first is %s\n", static_cast<unsigned long long>(memory.depth()),
                memory.width(), memory[memory.base()]->to_text(kvrimage::radix::hex)->c_str());
    return 0;
}
