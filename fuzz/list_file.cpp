// A list file in a folder with some modules and libraries, compared with a second implementation.

#include "kvr/util/list_file.h"

#include "fuzz/expectation.h"
#include "fuzz/input_bytes.h"
#include "fuzz/library_targets.h"
#include "fuzz/plain_list_file.h"
#include "fuzz/resource_limits.h"
#include "fuzz/scratch.h"

#include <string>

namespace kvr_fuzz {

namespace {

constexpr const char* list_name = "modules.lst";

/// A folder with the files that a list may name.
class library_folder {
public:
    library_folder() {
        for (const char* file :
             {"ram.tdf", "ROM.tdf", "fifo.tdf", "a.tdf", "ramlib.dll", "rom..dll", "x.dll"}) {
            write_file(path() + file, "");
        }
    }
    [[nodiscard]] std::string path() const { return folder.path().string() + "/"; }
    [[nodiscard]] std::string list_path() const { return path() + list_name; }

private:
    scratch_folder folder;
};

} // namespace

void try_list_file(std::string_view input) {
    const resource_limits limits(input.size());
    static const library_folder folder;
    input_bytes settings(input);
    const bool key_by_path = settings.number() % 2 != 0;
    write_file(folder.list_path(), settings.rest());
    list_file_reading found;
    found.well_formed = kvr_process_lst_file(folder.path(), list_name, found.libraries, found.origins,
                                             found.extras, key_by_path);
    expect(found == read_list_plainly(settings.rest(), folder.path(), folder.list_path(), key_by_path),
           "the list file says something else than line by line");
}

} // namespace kvr_fuzz
