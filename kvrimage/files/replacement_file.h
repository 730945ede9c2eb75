#pragma once

#include "kvr/memory/io/output_file.h"
#include "kvrimage/files/input_file.h"
#include "kvrimage/files/platform.h"
#include "kvrimage/files/temporary_files.h"
#include "kvrimage/formats/format.h"

#include <string>
#include <string_view>

namespace kvrimage {

/// A file that is written beside its place and moved over it when it is complete, so that a reader finds the
/// old contents or the new ones and never a part. It gets the owner and the permissions of the file that it
/// replaces; other names (hard links) of that file keep the old contents. "-" and what is no regular file (a
/// terminal, a pipe, /dev/null) are written directly.
class replacement_file : public text_sink {
public:
    /// @throws file_error when no file can be written there
    explicit replacement_file(const std::string& target, const file_observer& opened = {});

    void write(std::string_view text) override;

    /// Writes out the rest, so that only a move to its place is left to commit(). Nothing can be written any
    /// more.
    /// @throws file_error when that fails; the old file is then still there
    void complete();
    /// Completes the file, unless that is done, and moves it to its place. Without this call, what was
    /// written is removed.
    /// @throws file_error when that fails; the old file is then still there
    void commit();

private:
    /// @param old what is there already, if anything is
    void open_beside(const platform::file_status& old, const file_observer& opened);
    void open_directly();
    /// Writes to the descriptor @p opened from then on.
    /// @throws file_error, with @p opened closed, if it is -1 or no stream can be made of it
    void open_stream(int opened);
    void write_past_buffer(std::string_view text) noexcept;
    [[noreturn]] void fail(int reason) const;

    std::string title;        ///< as messages call it
    std::string place;        ///< where the file goes, symbolic links resolved
    temporary_file temporary; ///< not used when the file is written directly
    bool replaces = false;    ///< there is a file at the place
    bool is_complete = false;
    kvr::output_file file{nullptr};
    int descriptor = -1;         ///< of `file`; -1: not known
    bool is_buffering = false;   ///< something was written through the buffer of `file`
    int failure_past_buffer = 0; ///< why a write past it failed; 0: none has
};

} // namespace kvrimage
