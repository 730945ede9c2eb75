#pragma once

#include "kvrimage/exchange/text_sink.h"

#include <string>
#include <string_view>

namespace kvrimage {

/// Collects the text of a file in a string.
class string_sink : public text_sink {
public:
    void write(std::string_view more) override { text += more; }

    std::string text;
};

} // namespace kvrimage
