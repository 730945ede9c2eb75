// The detection of generated files and the creation of legal names, compared with a second implementation.

#include "fuzz/expectation.h"
#include "fuzz/library_targets.h"
#include "fuzz/plain_wizard_header.h"
#include "fuzz/resource_limits.h"
#include "fuzz/scratch.h"
#include "kvr/util/generated_files.h"

#include <string>

namespace kvr_fuzz {

void try_generated_file(std::string_view input) {
    const resource_limits limits(input.size());
    static const scratch_file file;
    file.assign(input);
    wizard_header found;
    found.generated = is_wizard_generated_file(file.path().c_str(), found.name, found.version);
    found.deferred = is_wizard_deferred_generation_file(file.path().c_str());
    expect(found == read_wizard_header_plainly(input), "the header says something else than word by word");
    const std::string name = convert_name_to_kvr_form(std::string(input));
    expect(name == legal_name_plainly(input), "the legal name is another one");
}

} // namespace kvr_fuzz
