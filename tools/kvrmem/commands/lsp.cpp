#include "kvrimage/files/file_error.h"
#include "kvrimage/files/platform.h"
#include "tools/kvrmem/command_line/option_lists.h"
#include "tools/kvrmem/commands/commands.h"
#include "tools/kvrmem/files/memory_input.h"
#include "tools/kvrmem/lsp/server.h"
#include "tools/kvrmem/platform/standard_output.h"
#include "tools/kvrmem/platform/system.h"

#include <fmt/format.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

namespace kvrmem {

namespace {

/// Bytes to read at once.
constexpr std::size_t block_size = std::size_t{64} << 10U;

/// Reads into @p block, waiting for input. Returns the bytes read; "" at the end.
std::string_view read_block(std::vector<char>& block) {
    const std::int64_t size =
        kvrimage::platform::read_some(kvrimage::platform::standard_input, block.data(), block.size());
    if (size < 0) {
        throw kvrimage::file_error(errno,
                                   fmt::format("standard input: cannot be read: {}", std::strerror(errno)));
    }
    return {block.data(), static_cast<std::size_t>(size)};
}

lsp::file_settings settings_of(const arguments& given) {
    lsp::file_settings settings;
    settings.check.read = read_options_of(given, "");
    settings.check.consumers = given.consumers.value_or(settings.check.consumers);
    settings.shown_radix = given.radix;
    return settings;
}

exit_code serve(const arguments& given) {
    lsp::server server([](const std::string& message) { print(message); }, settings_of(given));
    std::vector<char> block(block_size);
    bool is_at_end = false;
    while (!server.has_ended() && !(is_at_end && !server.has_waiting())) {
        // Read pending input before handling the next request: it may cancel that request.
        if (!is_at_end && !server.is_full() && system::input_is_waiting(0)) {
            const std::string_view bytes = read_block(block);
            is_at_end = bytes.empty();
            server.receive(bytes);
        } else if (!server.handle_next()) {
            server.check_changed();
            static_cast<void>(system::input_is_waiting(-1)); // after a signal, it is looked at again
        }
    }
    if (!server.has_ended()) {
        server.check_changed();
    }
    return server.was_shut_down() ? exit_code::success : exit_code::negative;
}

constexpr auto lsp_options =
    united_options(reading_options, std::array{option_id::consumer, option_id::radix});

} // namespace

const command lsp_command = {
    "lsp",
    "",
    "Serve editors: a language server on standard input and standard output.",
    "  $ kvrmem lsp\n"
    "  $ kvrmem lsp --width 32 --for kvr,icarus\n",
    "An editor starts the server and uses the Language Server Protocol: diagnostics while\n"
    "typing, repairs, hovers with a word in all radixes, symbols, folds, addresses beside\n"
    "lines that have none, and changes of words. The options apply to all files until the\n"
    "editor sends settings. The exit code is 1 if the editor ends the server without a\n"
    "shutdown request.\n",
    0,
    0,
    lsp_options,
    serve};

} // namespace kvrmem
