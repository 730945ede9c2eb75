#include "tests/kvrimage/faults/outcome_text.h"

#include <string>

namespace kvrimage_tests {

using namespace kvrimage;

void show(std::ostream& out, const std::optional<word>& value) {
    if (!value) {
        out << "none ";
    } else if (value->has_dont_care()) {
        out << value->to_text(radix::bin).value() << ' ';
    } else {
        out << value->to_text(radix::hex).value() << ' ';
    }
}

void show(std::ostream& out, const address_range& range) {
    out << range.first << ".." << range.last << ' ';
}

namespace {

void show_runs(std::ostream& out, const memory_image& image) {
    for (const run& each : image.runs()) {
        show(out, each.addresses);
        show(out, each.value);
    }
}

/// Repeated stretches, used if there are too many runs.
void show_repetitions(std::ostream& out, const memory_image& image) {
    for (std::uint64_t address = image.base();;) {
        const repetition stretch = image.repetition_at(address);
        out << address << ".." << stretch.last << ": ";
        for (std::uint64_t shown = 0; shown < stretch.period && address + shown <= stretch.last; ++shown) {
            show(out, image[address + shown]);
        }
        if (stretch.last == image.last_address()) {
            return;
        }
        address = stretch.last + 1;
    }
}

} // namespace

void show(std::ostream& out, const memory_image& image) {
    constexpr std::uint64_t most_runs = 1U << 16U;
    out << image.width() << " bits, ";
    show(out, address_range{image.base(), image.last_address()});
    if (image.depth() <= most_runs) {
        show_runs(out, image);
    } else {
        show_repetitions(out, image);
    }
    out << '\n';
}

void show(std::ostream& out, const std::optional<memory_image>& image) {
    if (image) {
        show(out, *image);
    } else {
        out << "no image\n";
    }
}

void show(std::ostream& out, const place& where) {
    out << where.line << ':' << where.column << '@' << where.offset << '+' << where.length << ' ';
}

void show(std::ostream& out, const text_edit& edit) {
    out << edit.offset << '+' << edit.length << " '" << edit.replacement << "' ";
}

void show(std::ostream& out, const diagnostic& found) {
    out << about(found.id).code << ' ' << found.count << ' ' << found.address.value_or(0) << ' ';
    show(out, found.where);
    show(out, found.more);
    out << found.message << '|' << found.hint << '|' << found.option << '|' << found.consumer << '|'
        << found.repair << '|';
    show(out, found.fix);
    out << '\n';
}

void show(std::ostream& out, const text_piece& piece) {
    out << static_cast<int>(piece.what) << ' ' << piece.where.offset << '+' << piece.where.length << ' ';
    if (piece.addresses) {
        show(out, *piece.addresses);
    }
    out << piece.step << ' ' << piece.in_file << ' ' << piece.is_part << '\n';
}

void show(std::ostream& out, const read_result& result) {
    show(out, result.image);
    show(out, result.diagnostics);
    show(out, result.unreadable);
    const file_facts& facts = result.facts;
    out << (facts.as != nullptr ? facts.as->id : "no format") << ' ' << facts.width_source << ' '
        << facts.diagnostics_left_out << ' ' << facts.has_comments << ' ' << static_cast<int>(facts.how_sure)
        << ' ' << facts.start_address.value_or(0);
    for (const named_fact& fact : facts.more) {
        out << ' ' << fact.name << '=' << fact.value;
    }
    out << '\n';
}

} // namespace kvrimage_tests
