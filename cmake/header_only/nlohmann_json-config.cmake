# nlohmann_json from its own headers, without anything else that is installed there for this machine.
if(TARGET nlohmann_json::nlohmann_json)
    return()
endif()
find_path(KVR_JSON_INCLUDE_DIR nlohmann/json.hpp REQUIRED)
add_library(nlohmann_json::nlohmann_json INTERFACE IMPORTED)
set_target_properties(
    nlohmann_json::nlohmann_json PROPERTIES INTERFACE_INCLUDE_DIRECTORIES "${KVR_JSON_INCLUDE_DIR}")
