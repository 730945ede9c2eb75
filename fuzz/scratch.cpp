#include "fuzz/scratch.h"

#include "fuzz/expectation.h"

#include <cstddef>
#include <cstdlib>
#include <fcntl.h>
#include <sys/mman.h>
#include <system_error>
#include <unistd.h>

namespace kvr_fuzz {

namespace {

void write_all(int descriptor, std::string_view bytes) {
    const ssize_t written = pwrite(descriptor, bytes.data(), bytes.size(), 0);
    expect(written == static_cast<ssize_t>(bytes.size()), "a scratch file cannot be written");
}

} // namespace

scratch_file::scratch_file()
    : descriptor(memfd_create("kvr_fuzz", MFD_CLOEXEC)),
      name("/proc/self/fd/" + std::to_string(descriptor)) {
    expect(descriptor >= 0, "no scratch file can be made");
}

scratch_file::~scratch_file() {
    close(descriptor);
}

void scratch_file::assign(std::string_view bytes) const {
    expect(ftruncate(descriptor, 0) == 0, "a scratch file cannot be emptied");
    write_all(descriptor, bytes);
}

std::string scratch_file::contents() const {
    const off_t size = lseek(descriptor, 0, SEEK_END);
    expect(size >= 0, "a scratch file has no size");
    std::string bytes(static_cast<std::size_t>(size), '\0');
    expect(pread(descriptor, bytes.data(), bytes.size(), 0) == size, "a scratch file cannot be read");
    return bytes;
}

scratch_folder::scratch_folder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "kvr_fuzz.XXXXXX").string();
    expect(mkdtemp(pattern.data()) != nullptr, "no scratch folder can be made");
    root = pattern;
}

scratch_folder::~scratch_folder() {
    std::error_code ignored;
    std::filesystem::remove_all(root, ignored);
}

void write_file(const std::string& path, std::string_view bytes) {
    constexpr mode_t readable_and_writable = 0600;
    const int descriptor =
        open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, readable_and_writable);
    expect(descriptor >= 0, "a scratch file cannot be opened");
    write_all(descriptor, bytes);
    close(descriptor);
}

} // namespace kvr_fuzz
