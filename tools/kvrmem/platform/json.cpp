#include "tools/kvrmem/platform/json.h"

#include "kvrimage/diagnostics/utf8_character.h"
#include "tools/kvrmem/platform/standard_output.h"

#include <fmt/format.h>

namespace kvrmem {

std::string json_name(std::string_view path) {
    std::string name;
    while (!path.empty()) {
        const kvrimage::utf8_character character = kvrimage::first_character(path);
        if (character.code != 0) {
            name += character.bytes;
        } else {
            name += '\0';
            name += fmt::format("{:02X}", static_cast<unsigned char>(path.front()));
        }
        path.remove_prefix(character.bytes.size());
    }
    return name;
}

std::string json_text(const json_value& document) {
    return document.dump(-1, ' ', false, json_value::error_handler_t::replace);
}

void print_json(const json_value& document) {
    constexpr int indentation = 2;
    print(document.dump(indentation, ' ', false, json_value::error_handler_t::replace) + "\n");
}

} // namespace kvrmem
