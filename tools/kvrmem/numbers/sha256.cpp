#include "tools/kvrmem/numbers/sha256.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <array>
#include <nettle/sha2.h>
#include <string_view>

namespace kvrmem {

namespace {

/// Adds a block of bytes of any length.
void add_to(sha256_ctx& context, std::string_view bytes) {
    // Characters may be accessed as unsigned char.
    sha256_update(&context, bytes.size(), reinterpret_cast<const std::uint8_t*>(bytes.data()));
}

} // namespace

kvrimage::word sha256_of(const kvrimage::memory_image& image, const kvrimage::checksum_options& options) {
    sha256_ctx context{};
    sha256_init(&context);
    kvrimage::for_each_counted_block(image, options,
                                     [&context](std::string_view bytes) { add_to(context, bytes); });
    std::array<std::uint8_t, SHA256_DIGEST_SIZE> digest{};
    sha256_digest(&context, digest.size(), digest.data());
    return kvrimage::word::parse(fmt::format("{:02X}", fmt::join(digest, "")), kvrimage::radix::hex,
                                 bits_of_sha256)
        .value.value();
}

} // namespace kvrmem
