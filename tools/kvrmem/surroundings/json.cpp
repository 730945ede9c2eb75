#include "tools/kvrmem/surroundings/json.h"

#include "tools/kvrmem/surroundings/standard_output.h"

namespace kvrmem {

std::string json_text(const json_value& document) {
    return document.dump(-1, ' ', false, json_value::error_handler_t::replace);
}

void print_json(const json_value& document) {
    constexpr int indentation = 2;
    print(document.dump(indentation, ' ', false, json_value::error_handler_t::replace) + "\n");
}

} // namespace kvrmem
