// The comment store, compared with a queue of strings. The input chooses the operations on both.

#include "fuzz/library_targets.h"
#include "fuzz/model_steps.h"
#include "tests/models/comment_store_operations.h"

namespace kvr_fuzz {

void try_comment_store(std::string_view input) {
    run_steps<kvr_test::comment_store_operations>(input);
}

} // namespace kvr_fuzz
