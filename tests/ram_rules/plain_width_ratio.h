#pragma once

#include <string>

// A second implementation of the width-ratio rules, sentence by sentence and without a table: the reference
// for the library's results. Block types are in upper case and families are identifiers; other texts are
// unknown.
namespace plain {

bool one_way_in_hardware(int width_a, int width_b, const std::string& block, const std::string& family,
                         bool large_block_possible, bool use_byte_enable, int byte_size);

bool one_way(int width_a, int width_b, const std::string& block, const std::string& family,
             bool large_block_possible, bool use_byte_enable, int byte_size);

bool two_way(int width_a, int width_b, const std::string& block, const std::string& family,
             bool large_block_possible, bool byte_enable_a, bool byte_enable_b, int byte_size);

} // namespace plain
