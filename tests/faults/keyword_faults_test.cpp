// Each allocation of the keyword registry and of the width rules fails, one per trial.

#include "kvr/keywords/keyword_registry.h"
#include "kvr/ram_rules/width_ratio.h"
#include "tests/faults/allocation_faults.h"

#include <gtest/gtest.h>

#include <string>

namespace {

struct rule_trial {
    KVR_UTIL_KEYWORD_REGR registry;
    KVR_UTIL_KEYWORD_REGR other;
    bool answer = false;

    [[nodiscard]] std::string outcome() const {
        std::string out = answer ? "true" : "false";
        for (const auto& [name, value] : kvr::keyword_map(registry)) {
            out += ' ' + name + '=' + value;
        }
        return out;
    }
};

const std::string long_keyword = "a_keyword_that_is_longer_than_what_a_string_holds_inside_of_itself";
const std::string spelling_of_another_case =
    "A_Keyword_that_is_longer_than_what_a_string_holds_inside_of_itself";
const std::string known_family = "SERIES_A1H";

void fixed_names(rule_trial& /*trial*/) {}

void added_name(rule_trial& trial) {
    trial.registry.add_keyword(long_keyword);
}

void fixed_names_spelled_otherwise(rule_trial& trial) {
    for (const char* name : {"PLEX_Adder", "Logic_Cell_Lookup", "VK1_io_pullup"}) {
        trial.registry.add_keyword(name);
    }
}

void names_in_both(rule_trial& trial) {
    added_name(trial);
    trial.other.add_keyword(spelling_of_another_case);
    trial.other.add_keyword(long_keyword + "_as_well");
}

const kvr_test::faulty_call<rule_trial> rule_calls[] = {
    {"add_keyword, the first", fixed_names,
     [](rule_trial& trial) { trial.registry.add_keyword(long_keyword); }},
    {"add_keyword, a further one", added_name,
     [](rule_trial& trial) { trial.registry.add_keyword(long_keyword + "_too"); }},
    {"add_keyword, another spelling", added_name,
     [](rule_trial& trial) { trial.registry.add_keyword(spelling_of_another_case); }},
    {"assignment", names_in_both, [](rule_trial& trial) { trial.registry = trial.other; }},
    {"copy", names_in_both,
     [](rule_trial& trial) {
         KVR_UTIL_KEYWORD_REGR copy(trial.registry);
         trial.answer = copy.is_keyword(long_keyword.c_str());
     }},
    {"is_keyword", names_in_both,
     [](rule_trial& trial) { trial.answer = trial.registry.is_keyword(spelling_of_another_case.c_str()); },
     false},
    {"lists of fixed names, which take the place of other spellings", fixed_names_spelled_otherwise,
     [](rule_trial& trial) {
         trial.registry.add_plexfunction_names();
         trial.registry.add_velkora_primitives();
         trial.registry.add_wysiwyg_names();
     },
     false},
    {"width ratio in hardware", fixed_names,
     [](rule_trial& trial) {
         trial.answer = is_valid_dual_port_memory_width_ratio_in_hardware(8, 32, long_keyword, known_family,
                                                                          true, true, 8);
     },
     false},
    {"width ratio", fixed_names,
     [](rule_trial& trial) {
         trial.answer =
             is_valid_dual_port_memory_width_ratio(8, 32, long_keyword, known_family, true, true, 8);
     },
     false},
    {"bidirectional width ratio", fixed_names,
     [](rule_trial& trial) {
         trial.answer = is_valid_bidir_dual_port_memory_width_ratio(8, 32, long_keyword, known_family, true,
                                                                    true, false, 8);
     },
     false},
};

TEST(RuleAllocationFaults, KeywordsAndWidthRatiosSurviveThem) {
    kvr_test::expect_allocation_faults_survived(rule_calls);
}

} // namespace
