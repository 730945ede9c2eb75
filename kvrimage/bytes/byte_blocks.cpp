#include "kvrimage/bytes/byte_blocks.h"

#include <algorithm>
#include <iterator>
#include <limits>
#include <map>

namespace kvrimage {

namespace {

constexpr std::uint64_t last_address_of_all = std::numeric_limits<std::uint64_t>::max();

/// Blocks by address without overlaps. Later blocks overwrite earlier ones.
class laid_blocks {
public:
    void lay(const byte_block& block) {
        cut_at(block.address);
        if (block.last() != last_address_of_all) {
            cut_at(block.last() + 1);
        }
        const auto first = laid.lower_bound(block.address);
        const auto last = laid.upper_bound(block.last());
        for (auto covered = first; covered != last; ++covered) {
            note(*covered, block);
        }
        laid.erase(first, last);
        laid.emplace(block.address, block.bytes);
    }

    [[nodiscard]] std::vector<byte_block> blocks() const {
        std::vector<byte_block> all;
        for (const auto& [address, bytes] : laid) {
            all.push_back({address, bytes});
        }
        return all;
    }
    [[nodiscard]] std::vector<byte_overlap>& overlaps() { return found; }

private:
    /// Splits the block that has bytes on both sides of @p address.
    void cut_at(std::uint64_t address) {
        auto before = laid.lower_bound(address);
        if (before == laid.begin()) {
            return;
        }
        --before;
        const std::uint64_t kept = address - before->first;
        if (kept < before->second.size()) {
            laid.emplace(address, before->second.substr(static_cast<std::size_t>(kept)));
            before->second = before->second.substr(0, static_cast<std::size_t>(kept));
        }
    }

    void note(const std::pair<const std::uint64_t, std::string_view>& covered, const byte_block& by) {
        const std::uint64_t at = covered.first - by.address;
        const bool differ = covered.second != by.bytes.substr(at, covered.second.size());
        found.push_back({covered.first, covered.first + covered.second.size() - 1, differ});
    }

    std::map<std::uint64_t, std::string_view> laid;
    std::vector<byte_overlap> found;
};

bool overlap(const std::vector<byte_block>& sorted) {
    return std::ranges::adjacent_find(sorted, [](const byte_block& left, const byte_block& right) {
               return left.last() >= right.address;
           }) != sorted.end();
}

} // namespace

void byte_blocks::add(std::uint64_t address, std::string_view bytes) {
    if (!blocks.empty()) {
        byte_block& last = blocks.back();
        if (address != 0 && last.last() == address - 1 &&
            last.bytes.data() + last.bytes.size() == bytes.data()) {
            last.bytes = {last.bytes.data(), last.bytes.size() + bytes.size()};
            return;
        }
    }
    blocks.push_back({address, bytes});
}

std::vector<byte_overlap> byte_blocks::sort() {
    if (std::ranges::is_sorted(blocks, {}, &byte_block::address) && !overlap(blocks)) {
        return {};
    }
    std::vector<byte_block> sorted = blocks;
    std::ranges::sort(sorted, {}, &byte_block::address);
    if (!overlap(sorted)) {
        blocks = std::move(sorted);
        return {};
    }
    laid_blocks laid;
    for (const byte_block& block : blocks) {
        laid.lay(block);
    }
    blocks = laid.blocks();
    std::ranges::sort(laid.overlaps(), {}, &byte_overlap::first);
    return std::move(laid.overlaps());
}

} // namespace kvrimage
