#include "kvrimage/files/replacement_file.h"

#include "kvrimage/files/file_error.h"
#include "kvrimage/files/file_name.h"
#include "kvrimage/files/open_descriptor.h"
#include "kvrimage/files/signal_pause.h"

#include <fmt/format.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <system_error>

namespace kvrimage {

namespace {

/// Follows the symbolic links at the end of @p path; the last target need not exist. @p reason is set after a
/// failure.
std::string without_links(const std::string& path, int& reason) {
    constexpr int most_links = 40; // the limit of the system
    std::filesystem::path place = platform::path_of(path);
    for (int links = 0; reason == 0 && links < most_links; ++links) {
        platform::file_status status;
        if (!platform::look_at_link(platform::text_of(place), status)) {
            reason = errno;
        }
        if (status.kind != platform::file_kind::link) {
            break;
        }
        std::error_code error;
        place = place.parent_path() / std::filesystem::read_symlink(place, error);
        reason = error.value();
    }
    return platform::text_of(place);
}

} // namespace

replacement_file::replacement_file(const std::string& target, const file_observer& opened)
    : title(title_of_output(target)) {
    // A file whose kind is unknown is not treated as missing: it could be a device or a link.
    int reason = 0;
    platform::file_status old;
    if (target != "-" && !platform::look_at(target, old)) {
        reason = errno;
    }
    if (old.kind == platform::file_kind::folder) {
        reason = EISDIR;
    }
    replaces = old.kind != platform::file_kind::none;
    const bool is_direct = target == "-" || (replaces && old.kind != platform::file_kind::regular);
    place = is_direct ? target : without_links(target, reason);
    if (reason != 0) {
        fail(reason);
    }
    if (is_direct) {
        open_directly();
    } else {
        open_beside(old, opened);
    }
}

void replacement_file::open_directly() {
    if (place == "-") {
        open_stream(platform::open_standard_output());
        return;
    }
    file = kvr::output_file::create(place);
    if (!file.is_open()) {
        fail(errno);
    }
}

void replacement_file::open_stream(int opened) {
    open_descriptor owned(opened);
    std::FILE* const stream = opened < 0 ? nullptr : fdopen(opened, "wb");
    if (stream == nullptr) {
        fail(errno);
    }
    descriptor = owned.release();
    file = kvr::output_file(stream);
}

void replacement_file::open_beside(const platform::file_status& old, const file_observer& opened) {
    if (replaces && !platform::may_be_written(place)) {
        fail(errno);
    }
    const std::string folder = platform::text_of(platform::path_of(place).parent_path());
    const int made = temporary.make_in(folder, replaces);
    if (made < 0) {
        const int reason = errno;
        throw file_error(reason, fmt::format("{}: cannot be written: no file can be made in {}: {}", title,
                                             folder.empty() ? "this folder" : title_of_output(folder),
                                             std::strerror(reason)));
    }
    open_stream(made);
    if (replaces && !platform::copy_permissions(old, descriptor)) {
        fail(errno);
    }
    if (opened) {
        opened(title, descriptor, 0);
    }
}

/// A big text is not copied into the buffer, unless an earlier text is there.
void replacement_file::write(std::string_view text) {
    constexpr std::size_t big = std::size_t{64} << 10U;
    if (descriptor >= 0 && !is_buffering && text.size() >= big) {
        write_past_buffer(text);
    } else {
        is_buffering = true;
        file.write(text);
    }
}

void replacement_file::write_past_buffer(std::string_view text) noexcept {
    if (failure_past_buffer == 0 && !platform::write_all(descriptor, text)) {
        failure_past_buffer = errno;
    }
}

void replacement_file::complete() {
    if (is_complete) {
        return;
    }
    const bool is_closed = file.close();
    if (failure_past_buffer != 0 || !is_closed) {
        fail(failure_past_buffer != 0 ? failure_past_buffer : file.failure());
    }
    if (replaces && !temporary.path().empty() && !platform::store(temporary.path())) {
        fail(errno);
    }
    is_complete = true;
}

void replacement_file::commit() {
    complete();
    if (temporary.path().empty()) {
        return;
    }
    const signal_pause pause;
    if (!platform::move_file(temporary.path(), place)) {
        fail(errno);
    }
    temporary.keep();
}

void replacement_file::fail(int reason) const {
    throw file_error(reason, fmt::format("{}: cannot be written: {}", title, std::strerror(reason)));
}

} // namespace kvrimage
