#include "interfaces.h"

int main() {
    fixed_point_interface();
    keywords_interface();
    memory_interface();
    numeric_interface();
    ram_rules_interface();
    util_interface();
    return 0;
}
