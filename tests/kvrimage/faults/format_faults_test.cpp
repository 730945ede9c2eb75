// Each allocation of reading, checking, repairing, editing and writing files fails, one per trial, in each
// format.

#include "kvrimage/formats/edit.h"
#include "kvrimage/formats/format_text.h"
#include "kvrimage/formats/memory_file.h"
#include "kvrimage/formats/registry.h"
#include "kvrimage/image/image_part.h"
#include "tests/faults/allocation_faults.h"
#include "tests/kvrimage/contract/contract.h"
#include "tests/kvrimage/faults/format_samples.h"
#include "tests/kvrimage/faults/outcome_text.h"
#include "tests/kvrimage/faults/sample_images.h"
#include "tests/memory/temporary_directory.h"
#include "tests/util/working_directory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace kvrimage_tests {

namespace {

using namespace kvrimage;

/// A sample of a format, its memory, and the results of a call.
struct format_trial {
    const format_sample* sample = nullptr;
    read_options options;
    write_options to;
    std::optional<read_result> ours; ///< the result of reading the sample
    std::optional<memory_image> image;
    std::vector<assignment> assignments;

    read_result result;
    repaired fixed;
    edit_result edited;
    formatted_text laid_out;
    std::vector<diagnostic> obstacles;
    std::vector<text_piece> pieces;
    std::vector<span> comments;
    std::optional<place> found;
    std::vector<sniffed> guesses;
    std::string text;
    std::uint64_t size = 0;
    bool writes_file = false; ///< true: to the working directory

    [[nodiscard]] std::string outcome() const {
        std::ostringstream out;
        show(out, result);
        show(out, fixed.left);
        show(out, fixed.repairs);
        show(out, edited.edits);
        for (const auto* each : {&edited.diagnostics, &laid_out.diagnostics, &obstacles}) {
            show(out, *each);
        }
        show(out, pieces);
        for (const span& comment : comments) {
            out << comment.offset << '+' << comment.length << ' ';
        }
        show(out, found.value_or(place()));
        for (const sniffed& guess : guesses) {
            out << guess.as->id << ' ' << static_cast<int>(guess.how_sure) << '\n';
        }
        out << fixed.contents << laid_out.text << text << size << '\n';
        if (writes_file) {
            show_files(out);
        }
        return std::move(out).str();
    }

private:
    static void show_files(std::ostream& out) {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(".")) {
            names.push_back(entry.path().filename().string());
        }
        std::ranges::sort(names);
        for (const std::string& name : names) {
            out << name << ": " << kvr_test::content_of(name) << '\n';
        }
    }
};

/// Assignments to one address, to a range that overlaps others, and to an unset address.
std::vector<assignment> some_assignments(const memory_image& image) {
    const std::uint64_t first = image.base();
    const word one = word::of(1, image.width());
    return {{{first + 1, first + 1}, {word::of(3, image.width())}}, {{first + 3, first + 4}, {one, one}}};
}

void take_sample(const format_sample& sample, format_trial& trial) {
    trial.sample = &sample;
    trial.options = sample.options();
    trial.to.as = trial.options.as;
    trial.to.order = byte_order::big;
    trial.to.file_name = "a_memory_of_a_long_name_that_no_string_holds.x";
    if (sample.contents.empty()) {
        trial.image = image_held_as_bytes();
    } else {
        trial.ours = parse(sample.contents, trial.options);
        trial.image = trial.ours->image.value();
    }
    trial.assignments = some_assignments(*trial.image);
}

void write_old_file(format_trial& trial) {
    trial.writes_file = true;
    kvr_test::write_content("written", "old");
}

bool is_read(const format& of) {
    return of.read != nullptr;
}
bool is_edited(const format& of) {
    return of.edit != nullptr;
}
bool is_laid_out(const format& of) {
    return of.lay_out != nullptr;
}
bool is_searched(const format& of) {
    return of.find_word != nullptr;
}
bool has_comments(const format& of) {
    return of.find_comments != nullptr;
}
bool has_pieces(const format& of) {
    return of.find_pieces != nullptr;
}
bool is_written(const format& of) {
    return of.write != nullptr;
}
bool is_recognized(const format& of) {
    return of.sniff != nullptr;
}
bool has_size(const format& of) {
    return of.written_size != nullptr;
}

read_options keeping_going(const format_trial& trial) {
    read_options options = trial.options;
    options.keep_going = true;
    return options;
}

/// A call that only some formats have.
struct format_call {
    const char* name;
    bool (*has)(const format&);
    void (*call)(format_trial&);
    std::string_view free_for = {}; ///< the formats for which it allocates nothing, each between blanks
    bool writes_file = false;
};

constexpr format_call calls_of_formats[] = {
    {"read", is_read,
     [](format_trial& trial) { trial.result = read(std::string(trial.sample->format), trial.options); }},
    {"parse", is_read,
     [](format_trial& trial) { trial.result = parse(trial.sample->contents, trial.options); }},
    {"parse, keep_going", is_read,
     [](format_trial& trial) { trial.result = parse(trial.sample->broken, keeping_going(trial)); }},
    {"check", is_read,
     [](format_trial& trial) { trial.result = check(trial.sample->contents, {trial.options}); }},
    {"check of a broken file", is_read,
     [](format_trial& trial) { trial.result = check(trial.sample->broken, {trial.options}); }},
    {"repair", is_read,
     [](format_trial& trial) { trial.fixed = repair(trial.sample->broken, {trial.options}); }},
    {"edit", is_edited,
     [](format_trial& trial) {
         trial.edited = edit(trial.sample->contents, trial.assignments, trial.options);
         trial.text = with_edits(trial.sample->contents, trial.edited.edits);
     }},
    {"edit of a broken file", is_edited,
     [](format_trial& trial) {
         trial.edited = edit(trial.sample->broken, trial.assignments, trial.options);
     }},
    {"format_text", is_laid_out,
     [](format_trial& trial) { trial.laid_out = format_text(trial.sample->contents, trial.options); }},
    {"format_text of a read file", is_laid_out,
     [](format_trial& trial) {
         trial.text = format_text(trial.sample->contents, trial.options, *trial.ours);
     }},
    {"find_word", is_searched,
     [](format_trial& trial) {
         trial.found = trial.options.as->find_word(trial.sample->contents, trial.options, 1);
     },
     " coe hex hexbytes logisim memheader readmemb readmemh rif srec titxt "},
    {"find_comments", has_comments,
     [](format_trial& trial) {
         trial.comments.clear();
         trial.options.as->find_comments(
             trial.sample->contents, [&trial](const span& comment) { trial.comments.push_back(comment); });
     },
     " c hexbytes python rif srec verilog vhdl "},
    {"find_pieces", has_pieces,
     [](format_trial& trial) {
         trial.pieces.clear();
         trial.options.as->find_pieces(trial.sample->contents, trial.options, *trial.ours,
                                       [&trial](const text_piece& piece) { trial.pieces.push_back(piece); });
     }},
    {"sniff", is_recognized,
     [](format_trial& trial) { trial.guesses = sniff(trial.sample->contents, "memory.mem"); }},
    {"can_write", is_written,
     [](format_trial& trial) { trial.obstacles = can_write(*trial.image, trial.to); },
     " binary coe csv hex hexbytes logisim memheader srec "},
    {"written_size", has_size,
     [](format_trial& trial) { trial.size = trial.to.as->written_size(*trial.image, trial.to); },
     " binary csv hex hexbytes logisim readmemb readmemh rif "},
    {"to_text", is_written, [](format_trial& trial) { trial.text = to_text(*trial.image, trial.to); }},
    {"write", is_written, [](format_trial& trial) { write(*trial.image, "written", trial.to); }, "", true},
};

using faulty_format_call = kvr_test::faulty_call<format_trial>;

bool is_free_for(const format_call& which, const format_sample& sample) {
    return which.free_for.find(" " + std::string(sample.format) + " ") != std::string_view::npos;
}

std::vector<faulty_format_call> each_format_with(const format_call& which) {
    std::vector<faulty_format_call> all;
    for (const format_sample& sample : format_samples()) {
        if (which.has(*format_of_name(sample.format))) {
            kvr_test::write_content(std::string(sample.format), sample.contents);
            const auto prepare = [&sample, &which](format_trial& trial) {
                take_sample(sample, trial);
                if (which.writes_file) {
                    write_old_file(trial);
                }
            };
            all.push_back({std::string(which.name) + " of " + std::string(sample.format), prepare, which.call,
                           !is_free_for(which, sample)});
        }
    }
    return all;
}

class FormatAllocationFaults : public testing::TestWithParam<format_call> {
    kvr_test::temporary_directory folder;
    kvr_test::working_directory inside{folder.path("")};
};

TEST_P(FormatAllocationFaults, AreSurvived) {
    kvr_test::expect_allocation_faults_survived(each_format_with(GetParam()));
}

std::string test_name(const testing::TestParamInfo<format_call>& which) {
    std::string name = which.param.name;
    std::ranges::replace_if(
        name, [](char character) { return character == ' ' || character == ','; }, '_');
    return name;
}

INSTANTIATE_TEST_SUITE_P(Calls, FormatAllocationFaults, testing::ValuesIn(calls_of_formats), test_name);

TEST(FormatSamples, AreReadAndBrokenOnesOfEachFormat) {
    for (const format* each : formats_of_the_library()) {
        SCOPED_TRACE(each->id);
        const auto sample = std::ranges::find(format_samples(), each->id, &format_sample::format);
        ASSERT_NE(sample, format_samples().end());
        if (each->read != nullptr) {
            EXPECT_TRUE(parse(sample->contents, sample->options()).image);
            EXPECT_FALSE(parse(sample->broken, sample->options()).image);
        }
    }
}

} // namespace

} // namespace kvrimage_tests
