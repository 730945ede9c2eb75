#pragma once

#include <csignal>
#include <string>

namespace kvrmem {

/// From now on a signal that ends the tool (Ctrl-C, a closed terminal or pipe, kill) removes the temporary
/// file first, if there is one.
void clean_up_when_interrupted();

/// While it lives, such a signal waits.
class interruption_pause {
public:
    interruption_pause();
    ~interruption_pause();
    interruption_pause(const interruption_pause&) = delete;
    interruption_pause& operator=(const interruption_pause&) = delete;

private:
    sigset_t before{};
};

/// The file that a signal removes, instead of the one before; "" for none. One file is written at a time.
void set_temporary_file(const std::string& path) noexcept;

} // namespace kvrmem
