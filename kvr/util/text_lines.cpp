#include "kvr/util/text_lines.h"

#include <cerrno>
#include <cstdio>
#include <utility>

namespace kvr {

text_lines::text_lines(const char* path)
    : text_lines(path != nullptr ? platform::open_to_read(path) : nullptr) {}

text_lines::text_lines(platform::file_stream opened) noexcept : stream(std::move(opened)) {}

int text_lines::next_character() {
    for (;;) {
        errno = 0;
        const int character = std::fgetc(stream.get());
        if (character != EOF || std::ferror(stream.get()) == 0 || errno != EINTR) {
            return character;
        }
        std::clearerr(stream.get());
    }
}

bool text_lines::failed() const {
    return std::ferror(stream.get()) != 0;
}

bool text_lines::next(std::string& line, std::size_t limit) {
    line.clear();
    if (stream == nullptr) {
        return false;
    }
    int character = next_character();
    const bool any = character != EOF;
    while (character != EOF && character != '\n' && line.size() < limit) {
        line += static_cast<char>(character);
        character = next_character();
    }
    if (character != EOF && character != '\n') {
        static_cast<void>(std::ungetc(character, stream.get()));
    }
    if (failed()) {
        line.clear();
        return false;
    }
    return any;
}

} // namespace kvr
