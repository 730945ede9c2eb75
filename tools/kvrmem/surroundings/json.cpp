#include "tools/kvrmem/surroundings/json.h"

#include "tools/kvrmem/surroundings/standard_output.h"

namespace kvrmem {

std::string json_text(const json& document) {
    return document.dump(-1, ' ', false, json::error_handler_t::replace);
}

void print_json(const json& document) {
    constexpr int indentation = 2;
    print(document.dump(indentation, ' ', false, json::error_handler_t::replace) + "\n");
}

} // namespace kvrmem
