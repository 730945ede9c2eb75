#include "kvrimage/files/platform.h"
#include "tools/kvrmem/platform/system.h"

#include <fcntl.h>
#include <io.h>
#include <string>
#include <vector>

#define WIN32_LEAN_AND_MEAN
#include <windows.h>
// Must follow windows.h.
#include <shellapi.h>

namespace kvrmem::system {

using kvrimage::platform::standard_error;
using kvrimage::platform::standard_input;
using kvrimage::platform::standard_output;

namespace {

HANDLE handle_of(int descriptor) {
    return reinterpret_cast<HANDLE>(_get_osfhandle(descriptor));
}

/// Gets the size of the screen that @p descriptor writes to.
bool screen_of(int descriptor, CONSOLE_SCREEN_BUFFER_INFO& screen) {
    return GetConsoleScreenBufferInfo(handle_of(descriptor), &screen) != 0;
}

std::string utf8_of(const wchar_t* text) {
    std::string bytes(
        static_cast<std::size_t>(WideCharToMultiByte(CP_UTF8, 0, text, -1, nullptr, 0, nullptr, nullptr)),
        '\0');
    WideCharToMultiByte(CP_UTF8, 0, text, -1, bytes.data(), static_cast<int>(bytes.size()), nullptr, nullptr);
    bytes.resize(bytes.empty() ? 0 : bytes.size() - 1); // its NUL
    return bytes;
}

/// The words of the command line, for the lifetime of the program.
struct command_line {
    command_line() {
        int count = 0;
        wchar_t** const wide = CommandLineToArgvW(GetCommandLineW(), &count);
        for (int index = 0; wide != nullptr && index < count; ++index) {
            words.push_back(utf8_of(wide[index]));
        }
        LocalFree(wide);
        for (std::string& word : words) {
            pointers.push_back(word.data());
        }
        pointers.push_back(nullptr);
    }

    std::vector<std::string> words;
    std::vector<char*> pointers;
};

VOID CALLBACK do_regular_work(PVOID work, BOOLEAN /*is_timer*/) {
    reinterpret_cast<void (*)()>(work)();
}

} // namespace

const bool shows_utf8_by_itself = true; // see prepare()

void prepare(int& count, char**& words) {
    static command_line line;
    count = static_cast<int>(line.words.size());
    words = line.pointers.data();
    _setmode(standard_input, _O_BINARY);
    _setmode(standard_output, _O_BINARY);
    _setmode(standard_error, _O_BINARY);
    SetConsoleOutputCP(CP_UTF8);
    for (const int descriptor : {standard_output, standard_error}) {
        DWORD mode = 0;
        if (GetConsoleMode(handle_of(descriptor), &mode) != 0) {
            SetConsoleMode(handle_of(descriptor), mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
        }
    }
}

// _isatty() is also true for the null device.
bool is_terminal(std::FILE* stream) {
    DWORD mode = 0;
    return GetConsoleMode(handle_of(_fileno(stream)), &mode) != 0;
}

std::uint32_t columns_of(std::FILE* stream) {
    CONSOLE_SCREEN_BUFFER_INFO screen{};
    return screen_of(_fileno(stream), screen)
               ? static_cast<std::uint32_t>(screen.srWindow.Right - screen.srWindow.Left + 1)
               : 0;
}

void call_regularly(void (*work)()) {
    constexpr DWORD second = 1000;
    constexpr DWORD fifth_of_a_second = 200;
    HANDLE timer = nullptr; // runs until the program ends
    CreateTimerQueueTimer(&timer, nullptr, do_regular_work, reinterpret_cast<PVOID>(work), second,
                          fifth_of_a_second, WT_EXECUTEDEFAULT);
}

std::int64_t position_of(int descriptor) noexcept {
    return _lseeki64(descriptor, 0, SEEK_CUR);
}

// The system cannot wait for a pipe, so it is checked repeatedly. A file never has to be waited for.
bool input_is_waiting(int milliseconds) {
    constexpr int pause = 5;
    HANDLE const input = handle_of(standard_input);
    for (int waited = 0;; waited += pause) {
        DWORD count = 0;
        if (GetFileType(input) != FILE_TYPE_PIPE ||
            PeekNamedPipe(input, nullptr, 0, nullptr, &count, nullptr) == 0 || count > 0) {
            return true; // a pipe that cannot be examined is at its end
        }
        if (milliseconds >= 0 && waited >= milliseconds) {
            return false;
        }
        Sleep(pause);
    }
}

bool is_of_closed_pipe(int /*number*/) noexcept {
    return false; // there is no such signal
}

} // namespace kvrmem::system
