#include "kvrimage/bytes/image_bytes.h"

#include "kvrimage/bytes/bytes_of_words.h"
#include "kvrimage/files/byte_buffer.h"
#include "kvrimage/image/byte_texts.h"
#include "kvrimage/image/byte_words.h"
#include "kvrimage/image/image_words.h"
#include "kvrimage/image/word_runs.h"
#include "kvrimage/image/word_search.h"
#include "kvrimage/image/word_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <utility>
#include <vector>

namespace kvrimage {

namespace {

std::uint64_t words_in(std::string_view bytes, const word_shape& shape, const byte_options& options) {
    if (bytes.empty()) {
        throw std::invalid_argument("a memory has at least one byte");
    }
    const std::size_t rest = bytes.size() % shape.bytes;
    if (rest != 0 && !options.pad) {
        throw std::invalid_argument(
            fmt::format("{} bytes are not whole words of {} bits: the last one has {} of {}", bytes.size(),
                        options.width, rest, shape.bytes));
    }
    return bytes.size() / shape.bytes + (rest != 0 ? 1 : 0);
}

void require_fitting(std::string_view words, std::uint64_t depth, const byte_options& options) {
    const std::uint64_t fitting = byte_texts(options.width, options.order).count_fitting(words);
    if (fitting != depth) {
        throw std::overflow_error(fmt::format("the bytes of address 0x{:X} do not fit a word of {} bits",
                                              options.base + fitting, options.width));
    }
}

/// Returns the words of @p bytes, stored as bytes. Missing bytes of the last word become the pad.
image_words held_as_bytes(std::string_view bytes, std::uint64_t depth, const word_shape& shape,
                          const byte_options& options) {
    const auto copy = std::make_shared<byte_buffer>();
    const auto size = depth * shape.bytes;
    copy->reserve(size);
    bytes.copy(copy->end(), bytes.size());
    std::fill_n(copy->end() + bytes.size(), size - bytes.size(), static_cast<char>(options.pad.value_or(0)));
    copy->used(size);
    require_fitting(copy->text(), depth, options);
    std::vector<byte_words::block> blocks = {{0, copy->text()}};
    return {depth, byte_words(std::move(blocks), options.width, options.order, copy)};
}

/// Returns the offset of the first word that is not set, or the depth if all are set.
std::uint64_t first_unset(const memory_image& image) {
    std::uint64_t next = 0;
    for_each_set_stretch(image.words(), [&next](std::uint64_t first, std::uint64_t last) {
        next = first == next ? last + 1 : next;
    });
    return next;
}

/// Throws if a word cannot be written as bytes. @p unset is the text of words that are not set; "" if there
/// is none.
void require_bytes(const memory_image& image, std::string_view unset) {
    const std::uint64_t gap = unset.empty() || !is_plain(unset) ? first_unset(image) : image.depth();
    const auto found = find_dont_care_word(image.words());
    if (gap < image.depth() && unset.empty() && (!found || gap < *found)) {
        throw std::domain_error(fmt::format("the word at address 0x{:X} is not set", image.base() + gap));
    }
    if (gap < image.depth() || found) {
        const bool is_gap = !found || gap < *found;
        throw std::domain_error(fmt::format("the word at address 0x{:X} has don't-care bits: {}",
                                            image.base() + (is_gap ? gap : *found),
                                            is_gap ? unset : image.words()[*found]));
    }
}

/// Writes the bytes of an image. Words that are not set have the bytes of @p unset.
class byte_writer {
public:
    byte_writer(const memory_image& of, byte_order byte_order_of_words, std::string_view text_of_unset)
        : image(of),
          shape(of.width()),
          order(byte_order_of_words),
          begin(of.base() * shape.bytes) {
        if (!text_of_unset.empty()) {
            memory_image one(image.width(), 1);
            one.words().set(0, text_of_unset);
            for_each_byte_block(one, order, [this](std::uint64_t, std::string_view word) { unset = word; });
        }
    }

    std::string write() {
        const std::uint64_t size = image.depth() * shape.bytes;
        bytes.reserve(static_cast<std::size_t>(size));
        for_each_byte_block(image, order, [this](std::uint64_t address, std::string_view block) {
            fill_up_to(address - begin);
            bytes.append(block);
        });
        fill_up_to(size);
        return std::move(bytes);
    }

private:
    /// Fills the gap before @p end, if any, by repeating the bytes of the unset word.
    void fill_up_to(std::uint64_t end) {
        const std::size_t first = bytes.size();
        if (first < end) {
            bytes.append(unset);
        }
        while (bytes.size() < end) {
            const std::uint64_t left = end - bytes.size();
            bytes.append(bytes, first, static_cast<std::size_t>(left)); // not more than there are
        }
    }

    const memory_image& image;
    word_shape shape;
    byte_order order;
    std::uint64_t begin; ///< byte address of the first word
    std::string unset;
    std::string bytes;
};

} // namespace

memory_image image_of_bytes(std::string_view bytes, const byte_options& options) {
    const word_shape shape(word(options.width).width());
    memory_image image(options.width, words_in(bytes, shape, options), options.base);
    image.words() = held_as_bytes(bytes, image.depth(), shape, options);
    return image;
}

std::string bytes_of_image(const memory_image& image, byte_order order, const std::optional<word>& unset) {
    if (unset && unset->width() != image.width()) {
        throw std::invalid_argument(
            fmt::format("a word of {} bits for words that are not set: the memory has {}", unset->width(),
                        image.width()));
    }
    const std::string text_of_unset = unset ? text_of_word(*unset) : "";
    require_bytes(image, text_of_unset);
    return byte_writer(image, order, text_of_unset).write();
}

} // namespace kvrimage
