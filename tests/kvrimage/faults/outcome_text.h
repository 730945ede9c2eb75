#pragma once

#include "kvrimage/diagnostics/diagnostic.h"
#include "kvrimage/exchange/text_piece.h"
#include "kvrimage/formats/format.h"
#include "kvrimage/image/memory_image.h"

#include <optional>
#include <ostream>
#include <vector>

namespace kvrimage_tests {

// The results of library calls as texts, so that two outcomes can be compared.

void show(std::ostream& out, const std::optional<kvrimage::word>& value);
void show(std::ostream& out, const kvrimage::address_range& range);
/// The width, the addresses and all words.
void show(std::ostream& out, const kvrimage::memory_image& image);
void show(std::ostream& out, const std::optional<kvrimage::memory_image>& image);
void show(std::ostream& out, const kvrimage::place& where);
void show(std::ostream& out, const kvrimage::text_edit& edit);
void show(std::ostream& out, const kvrimage::diagnostic& found);
void show(std::ostream& out, const kvrimage::text_piece& piece);
void show(std::ostream& out, const kvrimage::read_result& result);

template <class Item>
void show(std::ostream& out, const std::vector<Item>& items) {
    for (const Item& each : items) {
        show(out, each);
    }
}

} // namespace kvrimage_tests
