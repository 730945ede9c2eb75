// The operations of the tests against models, with the choices of an input instead of random ones.

#include "fuzz/model_steps.h"
#include "fuzz/tool_targets.h"
#include "tests/models/edit_pieces_operations.h"
#include "tests/models/memory_image_operations.h"
#include "tests/models/message_splitter_operations.h"
#include "tests/models/replacement_file_operations.h"
#include "tests/models/text_buffer_operations.h"
#include "tests/models/transformation_operations.h"

namespace kvr_fuzz {

void try_edit_pieces(std::string_view input) {
    run_steps<kvr_test::edit_pieces_operations>(input);
}

void try_memory_image(std::string_view input) {
    run_steps<kvr_test::memory_image_operations>(input);
}

void try_merge(std::string_view input) {
    run_steps<kvr_test::merge_operations>(input);
}

void try_message_splitter(std::string_view input) {
    run_steps<kvr_test::message_splitter_operations>(input);
}

void try_protection(std::string_view input) {
    run_steps<kvr_test::protection_operations>(input);
}

void try_replacement_file(std::string_view input) {
    run_steps<kvr_test::replacement_file_operations>(input);
}

void try_reshape(std::string_view input) {
    run_steps<kvr_test::reshape_operations>(input);
}

void try_split(std::string_view input) {
    run_steps<kvr_test::split_operations>(input);
}

void try_text_buffer(std::string_view input) {
    run_steps<kvr_test::text_buffer_operations>(input);
}

} // namespace kvr_fuzz
