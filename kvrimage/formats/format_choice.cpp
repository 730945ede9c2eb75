#include "kvrimage/formats/format_choice.h"

#include "kvrimage/formats/registry.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace kvrimage {

namespace {

using candidates = std::vector<sniffed>;

/// Returns the readable formats of @p of with their confidence, highest first. Not empty if @p of has all
/// formats.
candidates rated(std::span<const format* const> of, std::string_view contents) {
    candidates found;
    for (const format* one : of) {
        if (one->read != nullptr) {
            const auto head = contents.substr(0, sniffed_bytes);
            found.push_back({one, one->sniff != nullptr ? one->sniff(head) : certainty::no});
        }
    }
    std::ranges::stable_sort(found, std::greater<>(), &sniffed::how_sure);
    return found;
}

struct tried_format {
    const format* as;
    read_result result;
};

/// Returns the formats of @p tied that can read the contents completely. Of several that read the same words
/// only the first is returned.
std::vector<tried_format> different_readers(const std::vector<const format*>& tied, std::string_view contents,
                                            const read_options& options) {
    std::vector<tried_format> readers;
    read_options whole = options;
    whole.keep_going = false;
    for (const format* each : tied) {
        read_result result = each->read(contents, whole);
        const auto has_its_words = [&result](const tried_format& other) {
            return *other.result.image == *result.image;
        };
        if (result.image && std::ranges::none_of(readers, has_its_words)) {
            readers.push_back({each, std::move(result)});
        }
    }
    return readers;
}

/// Leaves the choice among @p readers, at least two, to the caller.
format_choice choice_for_caller(const std::vector<tried_format>& readers, certainty how_sure) {
    format_choice choice{.how_sure = how_sure};
    std::ranges::transform(readers, std::back_inserter(choice.among), &tried_format::as);
    return choice;
}

/// Returns the first of @p found, which are sorted by confidence, unless an equally likely format reads other
/// words.
format_choice choose_among(const candidates& found, std::string_view contents, const read_options& options) {
    const certainty best = found.front().how_sure;
    std::vector<const format*> tied;
    for (const sniffed& each : found) {
        if (each.how_sure == best) {
            tied.push_back(each.as);
        }
    }
    if (tied.size() > 1 && best != certainty::no) {
        std::vector<tried_format> readers = different_readers(tied, contents, options);
        if (readers.size() > 1) {
            return choice_for_caller(readers, best);
        }
        if (!readers.empty()) {
            return {.as = readers.front().as, .how_sure = best, .result = std::move(readers.front().result)};
        }
    }
    return {.as = tied.front(), .how_sure = best};
}

/// Returns whether @p one does not examine contents and shares an extension with @p other.
bool has_same_files(const format& one, const format& other) {
    return one.sniff == nullptr &&
           std::ranges::find_first_of(one.extensions, other.extensions) != one.extensions.end();
}

/// Adds the other format that @p contents certainly have, if any.
format_choice with_surer_one(format_choice choice, std::string_view contents) {
    if (choice.how_sure != certainty::certain) {
        const candidates all = rated(formats(), contents);
        const bool is_other = all.front().how_sure == certainty::certain &&
                              (choice.as == nullptr || !has_same_files(*choice.as, *all.front().as));
        choice.surely = is_other ? all.front().as : nullptr;
    }
    return choice;
}

} // namespace

format_choice choose_format(std::string_view contents, const read_options& options) {
    if (options.as != nullptr) {
        const auto head = contents.substr(0, sniffed_bytes);
        const certainty sure = options.as->sniff != nullptr ? options.as->sniff(head) : certainty::no;
        return with_surer_one({.as = options.as, .how_sure = sure}, contents);
    }
    const candidates named = rated(formats_of_path(options.file_name), contents);
    if (!named.empty()) {
        return with_surer_one(choose_among(named, contents, options), contents);
    }
    candidates all = rated(formats(), contents);
    std::erase_if(all, [](const sniffed& each) { return each.as->fits_anything; });
    return all.front().how_sure == certainty::no ? format_choice() : choose_among(all, contents, options);
}

bool may_have_any_lines(std::string_view head, const read_options& options) {
    const auto is_of_bytes = [](const format* each) { return !each->has_lines; };
    if (options.as != nullptr) {
        return is_of_bytes(options.as);
    }
    const std::vector<const format*> named = formats_of_path(options.file_name);
    if (!named.empty()) {
        return std::ranges::any_of(named, is_of_bytes);
    }
    const candidates all = rated(formats(), head);
    return all.front().how_sure == certainty::certain && is_of_bytes(all.front().as);
}

} // namespace kvrimage
