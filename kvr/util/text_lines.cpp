#include "kvr/util/text_lines.h"

#include <cstdio>

namespace kvr {

text_lines::text_lines(const char* path) : stream(path != nullptr ? platform::open_to_read(path) : nullptr) {}

bool text_lines::next(std::string& line, std::size_t limit) {
    line.clear();
    if (stream == nullptr) {
        return false;
    }
    int character = std::fgetc(stream.get());
    const bool any = character != EOF;
    while (character != EOF && character != '\n' && line.size() < limit) {
        line += static_cast<char>(character);
        character = std::fgetc(stream.get());
    }
    if (character != EOF && character != '\n') {
        static_cast<void>(std::ungetc(character, stream.get()));
    }
    return any;
}

} // namespace kvr
