#pragma once

// One function for each module; it checks all declarations of the module.
void fixed_point_interface();
void keywords_interface();
void memory_interface();
void numeric_interface();
void ram_rules_interface();
void util_interface();
