#pragma once

#include "kvr/memory/io/output_file.h"
#include "kvrimage/exchange/text_sink.h"
#include "kvrimage/files/input_file.h"
#include "kvrimage/files/platform.h"
#include "kvrimage/files/temporary_files.h"

#include <string>
#include <string_view>

namespace kvrimage {

/// A file that is written under a temporary name in the target's folder and moved to the target when it is
/// complete, so that readers find either the old contents or the new ones, never a part. It gets the owner
/// and the permissions of the file that it replaces, but the bits that run a program as its owner or group
/// (set-user-ID, set-group-ID) are lost when a user without privileges writes it, as in any other file. Other
/// names (hard links) of the replaced file keep the old contents. Standard output ("-") and files that are
/// not regular (a terminal, a pipe, /dev/null) are written directly.
class replacement_file : public text_sink {
public:
    /// @throws file_error if @p target cannot be written
    explicit replacement_file(const std::string& target, const file_observer& opened = {});

    void write(std::string_view text) override;

    /// Writes the rest, so that commit() only has to move the file. Nothing can be written after it.
    /// @throws file_error if that fails; the old file is then unchanged
    void complete();
    /// Completes the file if necessary and moves it to its target. Without this call, the temporary file is
    /// removed.
    /// @throws file_error if that fails; the old file is then unchanged
    void commit();

private:
    /// @param old the file to replace, if there is one
    void open_beside(const platform::file_status& old, const file_observer& opened);
    void open_directly();
    /// Makes the descriptor @p opened the one to write to.
    /// @throws file_error, with @p opened closed, if it is -1 or no stream can be made of it
    void open_stream(int opened);
    void write_past_buffer(std::string_view text) noexcept;
    [[noreturn]] void fail(int reason) const;

    std::string title;        ///< the name in messages
    std::string place;        ///< the target, with symbolic links resolved
    temporary_file temporary; ///< not used if the file is written directly
    bool replaces = false;    ///< there is an old file at the target
    bool is_complete = false;
    kvr::output_file file{nullptr};
    int descriptor = -1;         ///< of `file`; -1: not known
    bool is_buffering = false;   ///< the buffer of `file` has been used
    int failure_past_buffer = 0; ///< errno of a failed write without the buffer; 0: none
};

} // namespace kvrimage
