#include "tools/kvrmem/platform/interruption.h"

#include "kvrimage/files/signal_pause.h"
#include "kvrimage/files/unfinished_files.h"
#include "tools/kvrmem/platform/system.h"

#include <csignal>

namespace kvrmem {

namespace {

void remove_temporary_files_and_end(int signal) {
    kvrimage::remove_temporary_files();
    static_cast<void>(std::signal(signal, SIG_DFL));
    static_cast<void>(std::raise(signal));
}

} // namespace

void clean_up_when_interrupted() {
    for (const int signal : kvrimage::ending_signals) {
        // A signal that is ignored (nohup) stays ignored, except the signal of a closed pipe, which some
        // programs pass on as ignored: it ends the tool silently.
        if (std::signal(signal, remove_temporary_files_and_end) == SIG_IGN &&
            !system::is_of_closed_pipe(signal)) {
            static_cast<void>(std::signal(signal, SIG_IGN));
        }
    }
}

} // namespace kvrmem
