#pragma once

#include "kvr/memory/memory_file.h"

#include <string>
#include <vector>

namespace kvr_test {

/// All error messages of @p file, from the first on.
inline std::vector<std::string> error_messages(KVR_MEMORY_FILE& file) {
    std::vector<std::string> messages;
    file.reset_error_message_list();
    for (std::string message = file.get_next_error_message(); !message.empty();
         message = file.get_next_error_message()) {
        messages.push_back(message);
    }
    return messages;
}

} // namespace kvr_test
