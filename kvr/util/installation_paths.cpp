#include "kvr/util/installation_paths.h"

#include "kvr/util/data_path.h"
#include "kvr/util/environment.h"
#include "kvr/util/file_system.h"
#include "kvr/util/platform.h"

#include <cstddef>
#include <stdexcept>

namespace kvr {

namespace {

constexpr char any_separator[] = "/\\";

// Returns the position of "jre/bin" for an executable that an installation runs from its own runtime
// environment; else npos.
std::size_t find_runtime_directory(const std::string& executable_directory) {
    const std::size_t position = executable_directory.find("jre/bin");
    return position != std::string::npos ? position : executable_directory.find("jre\\bin");
}

} // namespace

std::string directory_of_path(const std::string& path) {
    const std::size_t separator = path.find_last_of(any_separator);
    if (separator == std::string::npos) {
        throw std::out_of_range("kvr: a path without a directory");
    }
    return separator == 0 ? path : path.substr(0, separator + 1);
}

std::string find_data_path(const std::string& executable_directory, const std::string& relative) {
    std::string beside_executable = executable_directory + relative;
    if (kvr_file_exists(beside_executable)) {
        return beside_executable;
    }
    std::string beside_tool = kvr_get_velkora_module_path() + relative;
    if (kvr_file_exists(beside_tool)) {
        return beside_tool;
    }
    const std::size_t runtime = find_runtime_directory(executable_directory);
    if (runtime == std::string::npos) {
        return beside_executable;
    }
    const std::string beside_runtime = executable_directory.substr(0, runtime) + relative;
    return kvr_file_exists(beside_runtime) ? beside_runtime : beside_executable;
}

} // namespace kvr

std::string kvr_get_module_path() {
    return kvr::directory_of_path(kvr::platform::executable_path());
}

std::string kvr_get_velkora_module_path() {
    std::string directory = kvr_get_env_var_value("VELKORA_BINDIR");
    if (!kvr_file_exists(directory)) {
        directory = kvr_get_env_var_value("VELKORA_ROOTDIR");
        if (!kvr_file_exists(directory)) {
            return "";
        }
        add_trailing_slashes_to_directory_name(directory);
        directory += "bin64";
    }
    add_trailing_slashes_to_directory_name(directory);
    return directory;
}

std::string kvr_get_library_module_path() {
    return kvr::find_data_path(kvr_get_module_path(), "../libraries/plexfunctions/xml_info/");
}

std::string kvr_get_plexfunctions_library_path() {
    return kvr::find_data_path(kvr_get_module_path(), "../libraries/plexfunctions/");
}

std::string kvr_get_common_misc_path() {
    return kvr::find_data_path(kvr_get_module_path(), "../common/misc/");
}
