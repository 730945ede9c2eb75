#include "declaration.h"
#include "interfaces.h"
#include "kvr/kvr.h"

#include <string>

void ram_rules_interface() {
    using text = const std::string&;

    declared<bool (*)(int, int, text, text, bool, bool, int)>(
        &is_valid_dual_port_memory_width_ratio_in_hardware);
    declared<bool (*)(int, int, text, text, bool, bool, int)>(&is_valid_dual_port_memory_width_ratio);
    declared<bool (*)(int, int, text, text, bool, bool, bool, int)>(
        &is_valid_bidir_dual_port_memory_width_ratio);
}
