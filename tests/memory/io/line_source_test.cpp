#include "kvr/memory/io/line_source.h"
#include "tests/memory/temporary_directory.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <fstream>
#include <ostream>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#if !defined(_WIN32)
#include <sys/stat.h>
#include <thread>
#endif

namespace {

using kvr::line_source;
using kvr_test::temporary_directory;
using testing::ElementsAre;
using namespace std::string_view_literals;

/// All properties of one line of a source.
struct line {
    std::string text;
    bool cut;
    bool newline;

    bool operator==(const line&) const = default;
};

std::ostream& operator<<(std::ostream& stream, const line& line) {
    return stream << '"' << line.text << (line.cut ? "\" cut" : "\"") << (line.newline ? " LF" : "");
}

std::vector<line> rest_of(line_source& source) {
    std::vector<line> lines;
    while (!source.at_end()) {
        const std::string text(source.next_line());
        lines.push_back({text, source.line_was_cut(), source.line_had_newline()});
    }
    return lines;
}

std::vector<std::string> texts_of(std::string_view content) {
    line_source source(content);
    std::vector<std::string> texts;
    for (const line& line : rest_of(source)) {
        texts.push_back(line.text);
    }
    return texts;
}

/// The expected lines of a source, split in the simplest way.
std::vector<line> model_lines(std::string_view content, std::size_t limit) {
    std::vector<line> lines;
    std::size_t first = 0;
    while (true) {
        const std::size_t newline = content.find('\n', first);
        const std::string text(content.substr(first, newline - first));
        const bool cut = text.size() > limit;
        lines.push_back({text.substr(0, limit), cut, newline != content.npos && !cut});
        if (newline == content.npos) {
            return lines;
        }
        first = newline + 1;
    }
}

std::string lines_of_length(std::size_t length, std::size_t count) {
    std::string content;
    for (std::size_t number = 0; number < count; ++number) {
        content += std::string(length, static_cast<char>('a' + number % 26)) + '\n';
    }
    return content;
}

std::FILE* stream_over(const std::string& path) {
    return std::fopen(path.c_str(), "rb");
}

TEST(LineSource, FinalNewlineIsFollowedByAnEmptyLine) {
    EXPECT_THAT(texts_of("one\ntwo\n"), ElementsAre("one", "two", ""));
}

TEST(LineSource, LastLineWithoutNewlineMeetsTheEnd) {
    EXPECT_THAT(texts_of("one\ntwo"), ElementsAre("one", "two"));
}

TEST(LineSource, EmptyTextHasOneEmptyLine) {
    EXPECT_THAT(texts_of(""), ElementsAre(""));
}

TEST(LineSource, EmptyFileHasOneEmptyLine) {
    const temporary_directory directory;
    line_source source = line_source::open(directory.file("empty", ""));
    ASSERT_TRUE(source.is_open());
    EXPECT_THAT(rest_of(source), ElementsAre(line{"", false, false}));
}

TEST(LineSource, SingleNewlineGivesTwoEmptyLines) {
    line_source source("\n"sv);
    EXPECT_THAT(rest_of(source), ElementsAre(line{"", false, true}, line{"", false, false}));
}

TEST(LineSource, NewlineIsTheOnlyLineEnd) {
    EXPECT_THAT(texts_of("a\rb\vc\fd\x1a\ne"), ElementsAre("a\rb\vc\fd\x1a", "e"));
}

TEST(LineSource, NulBytesAreOrdinaryCharacters) {
    EXPECT_THAT(texts_of("a\0b\n\0"sv), ElementsAre(std::string("a\0b", 3), std::string(1, '\0')));
}

TEST(LineSource, CarriageReturnStaysInTheLine) {
    line_source source("ab\r\n\r"sv);
    EXPECT_THAT(rest_of(source), ElementsAre(line{"ab\r", false, true}, line{"\r", false, false}));
}

TEST(LineSource, EndIsNotMetBeforeItIsRead) {
    line_source source("a\n"sv);
    EXPECT_FALSE(source.at_end());
    source.next_line();
    EXPECT_FALSE(source.at_end());
    source.next_line();
    EXPECT_TRUE(source.at_end());
}

TEST(WithoutCarriageReturn, DropsOneBeforeTheNewline) {
    EXPECT_EQ(kvr::without_carriage_return("ab\r\r", true), "ab\r");
}

TEST(WithoutCarriageReturn, KeepsALoneOneAtTheEndOfTheFile) {
    EXPECT_EQ(kvr::without_carriage_return("ab\r", false), "ab\r");
}

TEST(WithoutCarriageReturn, KeepsLinesWithoutOne) {
    EXPECT_EQ(kvr::without_carriage_return("", true), "");
    EXPECT_EQ(kvr::without_carriage_return("a\rb", true), "a\rb");
}

TEST(LineSourceFile, MissingFileIsNotOpen) {
    const temporary_directory directory;
    line_source source = line_source::open(directory.path("missing"));
    EXPECT_FALSE(source.is_open());
    EXPECT_TRUE(source.at_end());
    EXPECT_TRUE(source.whole_lines().empty());
    EXPECT_FALSE(source.rewind());
}

TEST(LineSourceFile, DirectoryIsNotOpen) {
    const temporary_directory directory;
    line_source source = line_source::open(directory.path("."));
    EXPECT_FALSE(source.is_open());
    EXPECT_TRUE(source.at_end());
}

TEST(LineSourceFile, NoStreamIsNotOpen) {
    std::FILE* const none = nullptr;
    EXPECT_FALSE(line_source(none).is_open());
}

TEST(LineSourceFile, StreamIsReadFromWhereItStands) {
    const temporary_directory directory;
    std::FILE* const stream = stream_over(directory.file("file", "skipped\nread\n"));
    ASSERT_NE(stream, nullptr);
    ASSERT_EQ(std::fseek(stream, 8, SEEK_SET), 0);
    line_source source(stream);
    EXPECT_EQ(source.next_line(), "read");
    ASSERT_TRUE(source.rewind());
    EXPECT_EQ(source.next_line(), "read");
}

TEST(LineSourceFile, MovedSourceReadsOn) {
    const temporary_directory directory;
    line_source source = line_source::open(directory.file("file", "one\ntwo\nthree"));
    source.next_line();
    line_source moved(std::move(source));
    EXPECT_EQ(moved.next_line(), "two");
    source = std::move(moved);
    EXPECT_EQ(source.next_line(), "three");
}

/// Sizes around one and two blocks.
class LineSourceBlockBorder : public testing::TestWithParam<std::size_t> {};

INSTANTIATE_TEST_SUITE_P(Sizes, LineSourceBlockBorder,
                         testing::Values(line_source::block_size - 1, line_source::block_size,
                                         line_source::block_size + 1, 2 * line_source::block_size - 1,
                                         2 * line_source::block_size, 2 * line_source::block_size + 1));

TEST_P(LineSourceBlockBorder, FileOfOneLineWithoutNewline) {
    const temporary_directory directory;
    const std::string content(GetParam(), 'x');
    line_source source = line_source::open(directory.file("file", content));
    EXPECT_EQ(rest_of(source), (std::vector<line>{{content, false, false}}));
    EXPECT_FALSE(source.failed());
}

TEST_P(LineSourceBlockBorder, FileThatEndsWithNewline) {
    const temporary_directory directory;
    const std::string content = std::string(GetParam() - 1, 'x') + '\n';
    line_source source = line_source::open(directory.file("file", content));
    EXPECT_EQ(rest_of(source), model_lines(content, line_source::unlimited));
}

TEST_P(LineSourceBlockBorder, FileOfShortLines) {
    const temporary_directory directory;
    std::string content = lines_of_length(6, GetParam() / 7 + 1);
    content.resize(GetParam());
    line_source source = line_source::open(directory.file("file", content));
    EXPECT_EQ(rest_of(source), model_lines(content, line_source::unlimited));
}

TEST_P(LineSourceBlockBorder, LineEndOfCarriageReturnAndNewlineAcrossTheBorder) {
    const temporary_directory directory;
    const std::string content = std::string(GetParam() - 1, 'x') + "\r\nlast\r\n";
    line_source source = line_source::open(directory.file("file", content));
    EXPECT_EQ(rest_of(source), model_lines(content, line_source::unlimited));
}

TEST_P(LineSourceBlockBorder, CutLineEndsThere) {
    const temporary_directory directory;
    const std::string content = std::string(GetParam() - 1, 'x') + "\nnext";
    line_source source = line_source::open(directory.file("file", content), 10);
    EXPECT_THAT(rest_of(source), ElementsAre(line{"xxxxxxxxxx", true, false}, line{"next", false, false}));
}

TEST_P(LineSourceBlockBorder, CutLineIsTheLast) {
    const temporary_directory directory;
    line_source source = line_source::open(directory.file("file", std::string(GetParam(), 'x')), 10);
    EXPECT_THAT(rest_of(source), ElementsAre(line{"xxxxxxxxxx", true, false}));
}

TEST_P(LineSourceBlockBorder, LineWithinTheLimitAcrossTheBorder) {
    const temporary_directory directory;
    const std::string content = lines_of_length(99, GetParam() / 100) + std::string(300, 'y') + "\nz";
    line_source source = line_source::open(directory.file("file", content), 300);
    EXPECT_EQ(rest_of(source), model_lines(content, 300));
}

TEST_P(LineSourceBlockBorder, CharactersBeforeItAreAsManyAsTheLimit) {
    const temporary_directory directory;
    const std::string content = std::string(GetParam() - 21, 'x') + '\n' + std::string(20, 'y') + "\nz";
    line_source source = line_source::open(directory.file("file", content), 20);
    EXPECT_EQ(rest_of(source), model_lines(content, 20));
}

TEST(LineSourceFile, LinesOfManyBlocksAreHandedOutWhole) {
    const temporary_directory directory;
    const std::string content = lines_of_length(3 * line_source::block_size + 5, 3) + "end";
    line_source source = line_source::open(directory.file("file", content));
    EXPECT_EQ(rest_of(source), model_lines(content, line_source::unlimited));
}

struct cut_case {
    const char* what;
    std::string content;
    std::vector<line> lines;
};

class LineSourceLimit : public testing::TestWithParam<cut_case> {};

INSTANTIATE_TEST_SUITE_P(
    Lengths, LineSourceLimit,
    testing::Values(cut_case{"LimitBeforeNewline",
                             std::string(511, 'a') + "\nb",
                             {{std::string(511, 'a'), false, true}, {"b", false, false}}},
                    cut_case{"LimitAtTheEnd", std::string(511, 'a'), {{std::string(511, 'a'), false, false}}},
                    cut_case{"OneMoreBeforeNewline",
                             std::string(512, 'a') + "\nb",
                             {{std::string(511, 'a'), true, false}, {"b", false, false}}},
                    cut_case{
                        "OneMoreAtTheEnd", std::string(512, 'a'), {{std::string(511, 'a'), true, false}}},
                    cut_case{"CarriageReturnIsTheOneMore",
                             std::string(511, 'a') + "\r\nb",
                             {{std::string(511, 'a'), true, false}, {"b", false, false}}},
                    cut_case{"CarriageReturnIsTheLastWithin",
                             std::string(510, 'a') + "\r\nb",
                             {{std::string(510, 'a') + '\r', false, true}, {"b", false, false}}},
                    cut_case{"CutLineWithFinalNewline",
                             std::string(9000, 'a') + "\n",
                             {{std::string(511, 'a'), true, false}, {"", false, false}}},
                    cut_case{"TwoCutLines",
                             std::string(600, 'a') + "\n" + std::string(700, 'b') + "\nc\n",
                             {{std::string(511, 'a'), true, false},
                              {std::string(511, 'b'), true, false},
                              {"c", false, true},
                              {"", false, false}}}),
    [](const auto& chosen) { return std::string(chosen.param.what); });

TEST_P(LineSourceLimit, HoldsForATextInMemory) {
    line_source source(std::string_view(GetParam().content), 511);
    EXPECT_EQ(rest_of(source), GetParam().lines);
}

TEST_P(LineSourceLimit, HoldsForAFile) {
    const temporary_directory directory;
    line_source source = line_source::open(directory.file("file", GetParam().content), 511);
    EXPECT_EQ(rest_of(source), GetParam().lines);
}

TEST(LineSource, CutLineStaysValidWhileItsRestIsSkipped) {
    const temporary_directory directory;
    const std::string content = "abc" + std::string(3 * line_source::block_size, 'x') + "\nnext";
    line_source source = line_source::open(directory.file("file", content), 3);
    const std::string_view line = source.next_line();
    EXPECT_FALSE(source.at_end());
    EXPECT_EQ(line, "abc");
    EXPECT_EQ(source.next_line(), "nex");
}

TEST(LineSource, FirstOfRestPassesOverWhatIsIgnored) {
    line_source source("ab \t :c:d\nnext"sv, 2);
    source.next_line();
    EXPECT_EQ(source.first_of_rest(" \t"), ':');
    EXPECT_TRUE(source.line_was_cut());
    EXPECT_EQ(source.next_line(), "ne");
}

TEST(LineSource, FirstOfRestIsNulWhenAllOfItIsIgnored) {
    line_source source("ab \t \n:next"sv, 2);
    source.next_line();
    EXPECT_EQ(source.first_of_rest(" \t"), '\0');
    EXPECT_EQ(source.next_line(), ":n");
}

TEST(LineSource, FirstOfRestIsNulForALineThatWasNotCut) {
    line_source source("ab\n:next"sv, 2);
    source.next_line();
    EXPECT_EQ(source.first_of_rest(" "), '\0');
    EXPECT_EQ(source.next_line(), ":n");
}

TEST(LineSource, FirstOfRestIsFoundBlocksLater) {
    const temporary_directory directory;
    const std::string content = "ab" + std::string(2 * line_source::block_size, ' ') + ":x\nnext";
    line_source source = line_source::open(directory.file("file", content), 4);
    EXPECT_EQ(source.next_line(), "ab  ");
    EXPECT_EQ(source.first_of_rest(" "), ':');
    EXPECT_EQ(source.next_line(), "next");
    EXPECT_TRUE(source.at_end());
}

TEST(LineSource, TheTextEndsWithItsView) {
    line_source source("ab  :::::::"sv.substr(0, 4), 2);
    EXPECT_EQ(source.next_line(), "ab");
    EXPECT_EQ(source.first_of_rest(" "), '\0');
    EXPECT_TRUE(source.at_end());
}

TEST(LineSource, NextLineSkipsTheRestOfALineThatWasCut) {
    line_source source("abcd\nef\n"sv, 2);
    EXPECT_EQ(source.next_line(), "ab");
    EXPECT_EQ(source.next_line(), "ef");
    EXPECT_FALSE(source.line_was_cut());
}

TEST(LineSource, FirstOfRestMeetsTheEnd) {
    line_source source("abc"sv, 2);
    source.next_line();
    EXPECT_EQ(source.first_of_rest(""), 'c');
    EXPECT_TRUE(source.at_end());
}

TEST(LineSource, RewindStartsATextAgain) {
    line_source source("one\ntwo"sv);
    rest_of(source);
    ASSERT_TRUE(source.rewind());
    EXPECT_THAT(rest_of(source), ElementsAre(line{"one", false, true}, line{"two", false, false}));
}

TEST(LineSource, RewindStartsAFileOfManyBlocksAgain) {
    const temporary_directory directory;
    const std::string content = lines_of_length(1000, 1000);
    line_source source = line_source::open(directory.file("file", content));
    rest_of(source);
    ASSERT_TRUE(source.rewind());
    EXPECT_EQ(rest_of(source), model_lines(content, line_source::unlimited));
}

TEST(LineSource, RewindForgetsALineThatWasCut) {
    line_source source("abcd\ne"sv, 2);
    source.next_line();
    ASSERT_TRUE(source.rewind());
    EXPECT_FALSE(source.line_was_cut());
    EXPECT_THAT(rest_of(source), ElementsAre(line{"ab", true, false}, line{"e", false, false}));
}

TEST(LineSource, RewindFromTheMiddleOfAFile) {
    const temporary_directory directory;
    const std::string content = lines_of_length(1000, 1000);
    line_source source = line_source::open(directory.file("file", content));
    for (int count = 0; count < 500; ++count) {
        source.next_line();
    }
    ASSERT_TRUE(source.rewind());
    EXPECT_EQ(rest_of(source), model_lines(content, line_source::unlimited));
}

TEST(LineSource, RewindGoesBackToWhereTheStreamStood) {
    const temporary_directory directory;
    const std::string content = lines_of_length(999, 600);
    std::FILE* const stream = stream_over(directory.file("file", "skipped\n" + content));
    ASSERT_NE(stream, nullptr);
    ASSERT_EQ(std::fseek(stream, 8, SEEK_SET), 0);
    line_source source(stream);
    rest_of(source);
    ASSERT_TRUE(source.rewind());
    EXPECT_EQ(rest_of(source), model_lines(content, line_source::unlimited));
}

TEST(LineSource, WholeLinesEndAfterTheLastNewline) {
    line_source source("one\ntwo\nthree"sv);
    EXPECT_EQ(source.whole_lines(), "one\ntwo\n");
    source.skip(4);
    EXPECT_EQ(source.whole_lines(), "two\n");
    EXPECT_EQ(source.next_line(), "two");
    EXPECT_EQ(source.whole_lines(), "");
    EXPECT_FALSE(source.at_end());
    EXPECT_EQ(source.next_line(), "three");
    EXPECT_TRUE(source.at_end());
}

TEST(LineSource, SkippingAllWholeLinesLeavesTheEmptyLastOne) {
    line_source source("one\ntwo\n"sv);
    source.skip(8);
    EXPECT_THAT(rest_of(source), ElementsAre(line{"", false, false}));
}

TEST(LineSource, WholeLinesStartAfterALineThatWasCut) {
    line_source source("abcdef\nnext\n"sv, 2);
    source.next_line();
    EXPECT_EQ(source.whole_lines(), "next\n");
}

TEST(LineSource, WholeLinesOfAFileComeBlockByBlock) {
    const temporary_directory directory;
    const std::string content = lines_of_length(99, 10000);
    line_source source = line_source::open(directory.file("file", content));
    std::string seen;
    while (!source.at_end()) {
        const std::string_view lines = source.whole_lines();
        seen += lines;
        source.skip(lines.size());
        const std::string_view line = source.next_line();
        seen += line;
        seen += source.line_had_newline() ? "\n" : "";
    }
    EXPECT_EQ(seen, content);
}

std::string random_content(std::mt19937& random, std::size_t size) {
    const std::size_t alphabet = 2 + random() % 40; // a smaller alphabet gives more line ends
    std::string content(size, '\0');
    std::generate(content.begin(), content.end(), [&] {
        const std::size_t choice = random() % alphabet;
        return choice == 0 ? '\n' : choice == 1 ? '\r' : static_cast<char>('A' + choice);
    });
    return content;
}

/// Reads all lines, sometimes many at once through whole_lines().
std::vector<line> lines_read_in_turns(line_source& source, std::mt19937& random) {
    std::vector<line> lines;
    while (!source.at_end()) {
        const std::string_view ahead = source.whole_lines();
        if (random() % 2 == 0 && !ahead.empty()) {
            const std::string_view taken = ahead.substr(0, ahead.find('\n', random() % ahead.size()) + 1);
            std::vector<line> more = model_lines(taken, line_source::unlimited);
            more.pop_back(); // the empty line after the last LF
            lines.insert(lines.end(), more.begin(), more.end());
            source.skip(taken.size());
        } else {
            const std::string text(source.next_line());
            lines.push_back({text, source.line_was_cut(), source.line_had_newline()});
        }
    }
    return lines;
}

TEST(LineSourceModel, RandomTextsWithoutLimit) {
    std::mt19937 random(1);
    for (int round = 0; round < 500; ++round) {
        const std::string content = random_content(random, random() % 200);
        line_source source{std::string_view(content)};
        ASSERT_EQ(lines_read_in_turns(source, random), model_lines(content, line_source::unlimited))
            << content;
    }
}

TEST(LineSourceModel, RandomTextsWithSmallLimits) {
    std::mt19937 random(2);
    for (int round = 0; round < 500; ++round) {
        const std::string content = random_content(random, random() % 200);
        const std::size_t limit = random() % 12;
        line_source source(std::string_view(content), limit);
        ASSERT_EQ(rest_of(source), model_lines(content, limit)) << limit << '\n' << content;
    }
}

TEST(LineSourceModel, RandomFilesOfSomeBlocks) {
    const temporary_directory directory;
    std::mt19937 random(3);
    for (int round = 0; round < 8; ++round) {
        std::string content = random_content(random, random() % (3 * line_source::block_size));
        content.insert(random() % (content.size() + 1), random() % (2 * line_source::block_size), 'x');
        const std::string path = directory.file("file", content);
        line_source source = line_source::open(path);
        ASSERT_EQ(lines_read_in_turns(source, random), model_lines(content, line_source::unlimited));
        line_source limited = line_source::open(path, 30);
        ASSERT_EQ(rest_of(limited), model_lines(content, 30));
    }
}

#if !defined(_WIN32)

TEST(LineSourcePipe, IsReadWholeInShortReadsAndCanBeRewound) {
    const temporary_directory directory;
    const std::string path = directory.path("pipe");
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    const std::string content = lines_of_length(999, 2000) + "end";
    std::thread writer([&] { std::ofstream(path, std::ios::binary) << content; });
    line_source source = line_source::open(path);
    writer.join();
    ASSERT_TRUE(source.is_open());
    EXPECT_EQ(rest_of(source), model_lines(content, line_source::unlimited));
    ASSERT_TRUE(source.rewind());
    EXPECT_EQ(rest_of(source), model_lines(content, line_source::unlimited));
}

TEST(LineSourcePipe, WithoutContentHasOneEmptyLine) {
    const temporary_directory directory;
    const std::string path = directory.path("pipe");
    ASSERT_EQ(mkfifo(path.c_str(), 0600), 0);
    std::thread writer([&] { const std::ofstream opened(path, std::ios::binary); });
    line_source source = line_source::open(path);
    writer.join();
    EXPECT_THAT(rest_of(source), ElementsAre(line{"", false, false}));
}

#endif

#if defined(__GLIBC__)

/// A stream whose reads are interrupted or fail.
struct scripted_file {
    std::string content;
    int error_at_end = 0; ///< errno after the content; 0: end of file
    bool interrupt_every_other_read = false;
    bool seekable = true;
    std::size_t interrupted_at = std::string::npos; ///< where one read is interrupted
    std::size_t position = 0;
    int reads = 0;
};

ssize_t read_scripted(void* cookie, char* buffer, std::size_t size) {
    auto& file = *static_cast<scripted_file*>(cookie);
    const bool is_interrupted = file.position >= file.interrupted_at;
    if (is_interrupted) {
        file.interrupted_at = std::string::npos;
    }
    if (is_interrupted || (file.interrupt_every_other_read && ++file.reads % 2 == 0)) {
        errno = EINTR;
        return -1;
    }
    if (file.position == file.content.size() && file.error_at_end != 0) {
        errno = file.error_at_end;
        return -1;
    }
    const std::size_t count = std::min(size, file.content.size() - file.position);
    std::copy_n(file.content.data() + file.position, count, buffer);
    file.position += count;
    return static_cast<ssize_t>(count);
}

int seek_scripted(void* cookie, off64_t* offset, int whence) {
    auto& file = *static_cast<scripted_file*>(cookie);
    if (!file.seekable) {
        errno = ESPIPE;
        return -1;
    }
    file.position = static_cast<std::size_t>(
        whence == SEEK_SET ? *offset : *offset + static_cast<off64_t>(file.position));
    *offset = static_cast<off64_t>(file.position);
    return 0;
}

std::FILE* stream_over(scripted_file& file) {
    return fopencookie(&file, "rb", {read_scripted, nullptr, seek_scripted, nullptr});
}

TEST(LineSourceReads, InterruptedReadsAreRetried) {
    scripted_file file{.content = lines_of_length(999, 700), .interrupt_every_other_read = true};
    line_source source(stream_over(file));
    EXPECT_EQ(rest_of(source), model_lines(file.content, line_source::unlimited));
    EXPECT_FALSE(source.failed());
}

TEST(LineSourceReads, AnInterruptedReadFillsTheRestOfTheBlock) {
    scripted_file file{.content = lines_of_length(999, 270), .interrupted_at = line_source::block_size / 2};
    line_source source(stream_over(file));
    EXPECT_EQ(source.whole_lines().size(), line_source::block_size / 1000 * 1000);
    EXPECT_EQ(rest_of(source), model_lines(file.content, line_source::unlimited));
}

TEST(LineSourceReads, FailureOfTheFirstIsNotOpen) {
    scripted_file file{.content = "", .error_at_end = EIO};
    EXPECT_FALSE(line_source(stream_over(file)).is_open());
}

TEST(LineSourceReads, FailureOfALaterOneEndsTheFileThere) {
    scripted_file file{.content = lines_of_length(999, 1000) + "part", .error_at_end = EIO};
    line_source source(stream_over(file));
    ASSERT_TRUE(source.is_open());
    EXPECT_FALSE(source.failed());
    EXPECT_EQ(rest_of(source), model_lines(file.content, line_source::unlimited));
    EXPECT_TRUE(source.failed());
}

TEST(LineSourceReads, RewindAfterAFailureReadsAgain) {
    scripted_file file{.content = lines_of_length(999, 1000), .error_at_end = EIO};
    line_source source(stream_over(file));
    rest_of(source);
    file.error_at_end = 0;
    ASSERT_TRUE(source.rewind());
    EXPECT_EQ(rest_of(source), model_lines(file.content, line_source::unlimited));
    EXPECT_FALSE(source.failed());
}

TEST(LineSourceReads, RewindFailsWhenTheFileCannotBeSoughtInAnyMore) {
    scripted_file file{.content = lines_of_length(999, 1000)};
    line_source source(stream_over(file));
    file.seekable = false;
    EXPECT_FALSE(source.rewind());
}

TEST(LineSourceReads, RewindFailsWhenTheFileCannotBeReadAnyMore) {
    scripted_file file{.content = lines_of_length(999, 1000)};
    line_source source(stream_over(file));
    file.content.clear();
    file.error_at_end = EIO;
    EXPECT_FALSE(source.rewind());
    EXPECT_TRUE(source.failed());
}

TEST(LineSourceReads, AFileThatIsWholeInTheBufferIsNotReadAgain) {
    scripted_file file{.content = "first\n" + std::string(line_source::block_size, 'x')};
    line_source source(stream_over(file));
    rest_of(source);
    ASSERT_TRUE(source.rewind()); // the last line has made room for the first
    file.seekable = false;
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(rest_of(source), model_lines(file.content, line_source::unlimited));
        EXPECT_TRUE(source.rewind());
    }
}

TEST(LineSourceReads, FailureOfAPipeIsKnownFromTheStart) {
    scripted_file file{.content = "one\ntwo", .error_at_end = EIO, .seekable = false};
    line_source source(stream_over(file));
    EXPECT_TRUE(source.is_open());
    EXPECT_TRUE(source.failed());
    EXPECT_THAT(rest_of(source), ElementsAre(line{"one", false, true}, line{"two", false, false}));
}

#endif

TEST(SizeBeforeSlack, CountsTheLinesThatEndBeforeIt) {
    EXPECT_EQ(kvr::size_before_slack("", 4), 0U);
    EXPECT_EQ(kvr::size_before_slack("abc\n", 4), 0U);
    EXPECT_EQ(kvr::size_before_slack("abc\nabc\n", 4), 4U);
    EXPECT_EQ(kvr::size_before_slack("abc\nab\n", 4), 0U);
    EXPECT_EQ(kvr::size_before_slack("a\nb\nc\n", 4), 2U);
}

TEST(SizeBeforeSlack, LooksAtNoMoreThanTheLongestLine) {
    EXPECT_EQ(kvr::size_before_slack("abc\nabcd\nab\n", 5, 4), 4U);
    EXPECT_EQ(kvr::size_before_slack("abc\nabcd\nab\n", 5, 3), 0U);
}

} // namespace
