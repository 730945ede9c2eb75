#include "declaration.h"
#include "interfaces.h"
#include "kvr/kvr.h"

#include <map>
#include <string>
#include <type_traits>

namespace {

using text = const std::string&;

static_assert(std::is_same_v<KVR_STRING_MAP, std::map<std::string, std::string, LESS_C_STRING>>);
static_assert(std::is_default_constructible_v<LESS_C_STRING>);

void string_functions() {
    declared<bool (LESS_C_STRING::*)(text, text) const>(&LESS_C_STRING::operator());
    declared<std::string (*)(std::string&, text, bool)>(&kvr_get_token);
    declared<std::string (*)(std::string&, text, std::string&)>(&kvr_get_token_with_delimiter);
    declared<std::string (*)(text, int)>(&kvr_get_token_at_index);
}

void integer_functions() {
    declared<unsigned int (*)(unsigned int)>(&kvr_ceil_log2);
    declared<unsigned int (*)(unsigned int, unsigned int)>(&kvr_ceil_log);
    declared<unsigned int (*)(unsigned int)>(&kvr_floor_log2);
    declared<unsigned int (*)(unsigned int, unsigned int)>(&kvr_floor_log);
    declared<int (*)(int, int)>(&kvr_power);
    declared<bool (*)(int, int)>(&kvr_is_power_of);
    declared<int (*)(int, int, int)>(&kvr_get_ceil_quotient_closest_to_power_of);
    declared<void (*)(int, int, int&, int&, int, int)>(&kvr_find_simple_integer_fraction);
}

void file_functions() {
    declared<bool (*)(text)>(&kvr_file_exists);
    declared<bool (*)(text)>(&kvr_check_if_file_or_dir_exists);
    declared<std::string (*)()>(&kvr_get_current_directory);
    declared<void (*)(std::string&)>(&add_trailing_slashes_to_directory_name);
    declared<int (*)(const char*)>(&kvr_mkdir);
    declared<int (*)(const char*)>(&kvr_rmdir);
    declared<bool (*)(const char*)>(&kvr_remove_file);
    declared<bool (*)(const char*, bool)>(&kvr_remove_all_files);
    declared<bool (*)(const char*, const char*)>(&kvr_file_copy);
}

void process_functions() {
    declared<std::string (*)(const char*)>(&kvr_get_env_var_value);
    declared<bool (*)(std::string, std::string)>(&kvr_env_var_has_value);
    declared<int (*)()>(&kvr_get_process_id);
    declared<void (*)(const char*, const char*, ...)>(&kvr_logprintf);
    declared<void (*)(const char*, const char*, ...)>(&kvr_logprintf_ovrw);
}

void installation_functions() {
    declared<std::string (*)()>(&kvr_get_module_path);
    declared<std::string (*)()>(&kvr_get_velkora_module_path);
    declared<std::string (*)()>(&kvr_get_library_module_path);
    declared<std::string (*)()>(&kvr_get_plexfunctions_library_path);
    declared<std::string (*)()>(&kvr_get_common_misc_path);
}

void design_file_functions() {
    using map = KVR_STRING_MAP&;

    declared<bool (*)(const char*, std::string&, std::string&)>(&is_wizard_generated_file);
    declared<bool (*)(const char*)>(&is_wizard_deferred_generation_file);
    declared<std::string (*)(text)>(&convert_name_to_kvr_form);
    declared<bool (*)(text, text, map, map, map, bool)>(&kvr_process_lst_file);
}

} // namespace

void util_interface() {
    string_functions();
    integer_functions();
    file_functions();
    process_functions();
    installation_functions();
    design_file_functions();
}
