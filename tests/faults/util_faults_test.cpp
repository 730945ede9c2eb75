// Each allocation of the helpers (tokens, files, paths, lists, logs, environment) fails, one per trial.

#include "kvr/util/environment.h"
#include "kvr/util/file_system.h"
#include "kvr/util/generated_files.h"
#include "kvr/util/installation_paths.h"
#include "kvr/util/integer_math.h"
#include "kvr/util/list_file.h"
#include "kvr/util/logging.h"
#include "kvr/util/string_order.h"
#include "kvr/util/tokenizer.h"
#include "tests/faults/allocation_faults.h"
#include "tests/memory/temporary_directory.h"
#include "tests/util/environment_variable.h"
#include "tests/util/working_directory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

namespace {

const std::string long_phrase = "a phrase that is longer than what a string holds inside of itself";
const std::string long_file_name = "a_file_name_that_is_longer_than_what_a_string_holds_inside_of_itself";

/// Works in the working directory; outcome() lists the directory with its contents.
struct helper_trial {
    bool answer = false;
    std::string text;
    std::string rest;
    std::string delimiter;
    KVR_STRING_MAP libraries;
    KVR_STRING_MAP origins;
    KVR_STRING_MAP extras;

    helper_trial() {
        for (const auto& entry : std::filesystem::directory_iterator(".")) {
            std::filesystem::remove_all(entry);
        }
    }
    [[nodiscard]] std::string outcome() const {
        std::string out = text + '/' + rest + '/' + delimiter + (answer ? " true" : " false");
        for (const KVR_STRING_MAP* map : {&libraries, &origins, &extras}) {
            for (const auto& [name, value] : *map) {
                out += ' ' + name + '=' + value;
            }
        }
        return out + files();
    }

private:
    [[nodiscard]] static std::string files() {
        std::vector<std::string> lines;
        for (const auto& entry : std::filesystem::recursive_directory_iterator(".")) {
            lines.push_back('\n' + entry.path().string() + ": " +
                            (entry.is_directory() ? "" : kvr_test::content_of(entry.path().string())));
        }
        std::sort(lines.begin(), lines.end());
        std::string all;
        for (const std::string& line : lines) {
            all += line;
        }
        return all;
    }
};

void clean(helper_trial& /*trial*/) {}

void list_of_texts(helper_trial& trial) {
    trial.rest = long_phrase + "|" + long_phrase + "|" + long_phrase;
}

void tree_of_files(helper_trial& /*trial*/) {
    const std::string folder = "tree/" + long_file_name;
    std::filesystem::create_directories(folder + "/" + long_file_name);
    for (const std::string& name : {std::string("a"), long_file_name + "_b", long_file_name + "_c"}) {
        kvr_test::write_content("tree/" + name, long_phrase);
        kvr_test::write_content(folder + "/" + name, long_phrase);
    }
}

void file_of_phrases(helper_trial& /*trial*/) {
    kvr_test::write_content("source", long_phrase);
    kvr_test::write_content("target", "old");
}

void generated_file(helper_trial& /*trial*/) {
    kvr_test::write_content("generated", "-- plexfunction wizard: %" + long_phrase + "% v7.2%\n" +
                                             "-- generation: deferred " + long_phrase + "\n");
}

void list_file(helper_trial& /*trial*/) {
    std::filesystem::create_directory("library");
    for (const std::string& name : {std::string("ram"), long_file_name}) {
        kvr_test::write_content("library/" + name + ".tdf", "");
        kvr_test::write_content("library/" + name + ".dll", "");
    }
    kvr_test::write_content("library/modules.lst",
                            "// " + long_phrase +
                                "\nram=ram;extra_text_that_is_longer_than_a_string_holds\n\n" +
                                "ram=other\n" + long_file_name + "=" + "ram_library_of_a_long_name\n");
}

const kvr_test::faulty_call<helper_trial> tokens_and_names[] = {
    {"kvr_get_token", list_of_texts,
     [](helper_trial& trial) { trial.text = kvr_get_token(trial.rest, "|", false); }},
    {"kvr_get_token, delimiter of several characters", list_of_texts,
     [](helper_trial& trial) { trial.text = kvr_get_token(trial.rest, "f|a", true); }},
    {"kvr_get_token_with_delimiter", list_of_texts,
     [](helper_trial& trial) {
         trial.text = kvr_get_token_with_delimiter(trial.rest, "|", trial.delimiter);
     }},
    {"kvr_get_token_at_index", list_of_texts,
     [](helper_trial& trial) { trial.text = kvr_get_token_at_index(trial.rest, 1); }},
    {"convert_name_to_kvr_form", clean,
     [](helper_trial& trial) { trial.text = convert_name_to_kvr_form(long_phrase + "[1].b"); }},
    {"kvr_find_simple_integer_fraction", clean,
     [](helper_trial& trial) {
         int numerator = 0;
         int denominator = 0;
         kvr_find_simple_integer_fraction(355, 113, numerator, denominator, 50, 10);
         trial.answer = numerator == 22 && denominator == 7;
     }},
    {"integer math", clean,
     [](helper_trial& trial) {
         trial.answer = kvr_ceil_log2(9) == 4 && kvr_floor_log2(9) == 3 && kvr_ceil_log(28, 3) == 4 &&
                        kvr_floor_log(28, 3) == 3 && kvr_power(3, 4) == 81 && kvr_is_power_of(3, 81) &&
                        kvr_get_ceil_quotient_closest_to_power_of(2, 9, 2) == 8;
     },
     false},
};

const kvr_test::faulty_call<helper_trial> environment_and_paths[] = {
    {"kvr_get_env_var_value", clean,
     [](helper_trial& trial) { trial.text = kvr_get_env_var_value("KVR_TEST_VARIABLE"); }},
    {"kvr_env_var_has_value", clean,
     [](helper_trial& trial) {
         trial.answer = kvr_env_var_has_value(long_phrase + ";" + long_phrase + "s", long_phrase + "s");
     }},
    {"kvr_get_process_id", clean, [](helper_trial& trial) { trial.answer = kvr_get_process_id() > 0; },
     false},
    {"kvr_get_module_path", clean, [](helper_trial& trial) { trial.text = kvr_get_module_path(); }},
    {"kvr_get_velkora_module_path", clean,
     [](helper_trial& trial) { trial.text = kvr_get_velkora_module_path(); }},
    {"kvr_get_library_module_path", clean,
     [](helper_trial& trial) { trial.text = kvr_get_library_module_path(); }},
    {"kvr_get_plexfunctions_library_path", clean,
     [](helper_trial& trial) { trial.text = kvr_get_plexfunctions_library_path(); }},
    {"kvr_get_common_misc_path", clean, [](helper_trial& trial) { trial.text = kvr_get_common_misc_path(); }},
    {"kvr_get_current_directory", clean,
     [](helper_trial& trial) { trial.text = kvr_get_current_directory(); }},
};

const kvr_test::faulty_call<helper_trial> files[] = {
    {"kvr_file_exists", file_of_phrases,
     [](helper_trial& trial) {
         trial.answer = kvr_file_exists(long_file_name) || kvr_check_if_file_or_dir_exists(long_file_name);
     },
     false},
    {"add_trailing_slashes_to_directory_name", clean,
     [](helper_trial& trial) {
         trial.text = long_file_name;
         add_trailing_slashes_to_directory_name(trial.text);
     }},
    {"kvr_mkdir and kvr_rmdir", clean,
     [](helper_trial& trial) {
         trial.answer = kvr_mkdir(long_file_name.c_str()) == 0 && kvr_rmdir(long_file_name.c_str()) == 0;
     },
     false},
    {"kvr_remove_file", file_of_phrases,
     [](helper_trial& trial) { trial.answer = kvr_remove_file("target"); }, false},
    {"kvr_file_copy", file_of_phrases,
     [](helper_trial& trial) { trial.answer = kvr_file_copy("source", "target"); }, false},
    {"kvr_remove_all_files", tree_of_files,
     [](helper_trial& trial) { trial.answer = kvr_remove_all_files("tree/a*", false); }},
    {"kvr_remove_all_files, subdirectories too", tree_of_files,
     [](helper_trial& trial) { trial.answer = kvr_remove_all_files("tree/*.*", true); }},
    {"is_wizard_generated_file", generated_file,
     [](helper_trial& trial) {
         trial.answer = is_wizard_generated_file("generated", trial.text, trial.rest);
     }},
    {"is_wizard_deferred_generation_file", generated_file,
     [](helper_trial& trial) { trial.answer = is_wizard_deferred_generation_file("generated"); }},
    {"kvr_process_lst_file", list_file,
     [](helper_trial& trial) {
         trial.answer = kvr_process_lst_file("library", "modules.lst", trial.libraries, trial.origins,
                                             trial.extras, false);
     }},
    {"kvr_process_lst_file, keys are paths", list_file,
     [](helper_trial& trial) {
         trial.answer = kvr_process_lst_file("library", "modules.lst", trial.libraries, trial.origins,
                                             trial.extras, true);
     }},
    {"kvr_logprintf", clean,
     [](helper_trial& /*trial*/) {
         kvr_logprintf_ovrw("log", "%s\n", long_phrase.c_str());
         kvr_logprintf("log", "%d %s\n", 7, long_phrase.c_str());
     },
     false},
};

class HelperAllocationFaults : public testing::Test {
    kvr_test::temporary_directory folder;
    kvr_test::working_directory inside{folder.path("")};
    kvr_test::environment_variable variable{"KVR_TEST_VARIABLE", long_phrase};
    kvr_test::environment_variable binaries{"VELKORA_BINDIR", folder.path("")};
};

TEST_F(HelperAllocationFaults, TokensAndNamesSurviveThem) {
    kvr_test::expect_allocation_faults_survived(tokens_and_names);
}

TEST_F(HelperAllocationFaults, EnvironmentAndPathsSurviveThem) {
    kvr_test::expect_allocation_faults_survived(environment_and_paths);
}

TEST_F(HelperAllocationFaults, FilesSurviveThem) {
    kvr_test::expect_allocation_faults_survived(files);
}

} // namespace
