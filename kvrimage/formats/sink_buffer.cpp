#include "kvrimage/formats/sink_buffer.h"

namespace kvrimage {

void sink_buffer::write(std::string_view text) {
    if (text.size() > room_limit) {
        flush();
        sink.write(text);
        return;
    }
    write_with([text](kvr::output_file& output) {
        output.write(text);
        return true;
    });
}

void sink_buffer::flush() {
    sink.write({begin, filled});
    // Without a file, requesting room in a full buffer restarts it.
    block.used(kvr::output_file::block_size - filled);
    static_cast<void>(block.room(1));
    filled = 0;
}

} // namespace kvrimage
