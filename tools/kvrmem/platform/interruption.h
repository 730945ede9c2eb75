#pragma once

namespace kvrmem {

/// From now on a signal that ends the tool (Ctrl-C, a closed terminal or pipe, kill) removes temporary files
/// first.
void clean_up_when_interrupted();

} // namespace kvrmem
