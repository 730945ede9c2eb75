#include "kvr/util/logging.h"

#include "kvr/util/platform.h"

#include <cstdarg>
#include <cstdio>

namespace {

[[gnu::format(printf, 3, 0)]] void print_to(const char* path, const char* mode, const char* format,
                                            std::va_list arguments) {
    if (path == nullptr || format == nullptr) {
        return;
    }
    const kvr::platform::file_stream log(std::fopen(path, mode));
    if (log != nullptr) {
        static_cast<void>(std::vfprintf(log.get(), format, arguments));
    }
}

} // namespace

void kvr_logprintf(const char* path, const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    print_to(path, "ab", format, arguments);
    va_end(arguments);
}

void kvr_logprintf_ovrw(const char* path, const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    print_to(path, "wb", format, arguments);
    va_end(arguments);
}
