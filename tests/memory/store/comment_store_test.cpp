#include "kvr/memory/store/comment_store.h"
#include "tests/allocation.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <deque>
#include <new>
#include <random>
#include <stdexcept>
#include <string>

namespace {

using kvr::comment_store;
using namespace std::string_literals;

std::deque<std::string> copy_of(const comment_store& comments) {
    std::deque<std::string> copy;
    comments.copy_to(copy);
    return copy;
}

/// Compares by index in ascending order, and by copying.
void expect_equal(const comment_store& comments, const std::deque<std::string>& model) {
    ASSERT_EQ(comments.size(), model.size());
    ASSERT_EQ(comments.empty(), model.empty());
    for (std::size_t i = 0; i < model.size(); ++i) {
        ASSERT_EQ(comments[i], model[i]) << i;
    }
    ASSERT_EQ(copy_of(comments), model);
}

TEST(CommentStore, NewStoreIsEmpty) {
    expect_equal(comment_store(), {});
}

TEST(CommentStore, LastPrependedCommentComesFirst) {
    comment_store comments;
    comments.push_front("one");
    comments.push_front("two");
    comments.push_front("three");
    expect_equal(comments, {"three", "two", "one"});
}

TEST(CommentStore, KeepsEmptyTextsAndEveryByte) {
    comment_store comments;
    comments.push_front("");
    comments.push_front("a\0b"s);
    comments.push_front("\xFF\n");
    expect_equal(comments, {"\xFF\n", "a\0b"s, ""});
}

TEST(CommentStore, KeepsTextsThatAreLongerThanAnyBlock) {
    comment_store comments;
    const std::string long_text(1000000, 'x');
    comments.push_front("short");
    comments.push_front(long_text);
    comments.push_front("shorter");
    expect_equal(comments, {"shorter", long_text, "short"});
}

TEST(CommentStore, AppendsEmptyCommentsUpToASize) {
    comment_store comments;
    comments.push_front("one");
    comments.append_empty_up_to(4);
    expect_equal(comments, {"one", "", "", ""});
}

TEST(CommentStore, AppendsNothingWhenItIsLargerAlready) {
    comment_store comments;
    comments.append_empty_up_to(4);
    comments.append_empty_up_to(3);
    comments.append_empty_up_to(0);
    EXPECT_EQ(comments.size(), 4U);
}

TEST(CommentStore, InsertionMovesLaterCommentsUp) {
    comment_store comments;
    comments.append_empty_up_to(3);
    comments.insert(0, "old");
    comments.insert(0, "new");
    expect_equal(comments, {"new", "old", "", "", ""});
}

TEST(CommentStore, InsertsBetweenEmptyComments) {
    comment_store comments;
    comments.append_empty_up_to(5);
    comments.insert(4, "b");
    comments.insert(2, "a");
    expect_equal(comments, {"", "", "a", "", "", "b", ""});
}

TEST(CommentStore, InsertsDirectlyBeforeAndAfterAComment) {
    comment_store comments;
    comments.append_empty_up_to(2);
    comments.insert(1, "middle");
    comments.insert(1, "before");
    comments.insert(3, "after");
    expect_equal(comments, {"", "before", "middle", "after", ""});
}

TEST(CommentStore, InsertsAtTheEnd) {
    comment_store comments;
    comments.insert(0, "a");
    comments.insert(1, "b");
    comments.append_empty_up_to(3);
    comments.insert(3, "c");
    expect_equal(comments, {"a", "b", "", "c"});
}

TEST(CommentStore, InsertsIntoBillionsOfEmptyComments) {
    comment_store comments;
    comments.append_empty_up_to(4294967295);
    comments.insert(5, "low");
    comments.insert(3000000000, "middle");
    comments.insert(4294967296, "high");
    EXPECT_EQ(comments.size(), 4294967298U);
    EXPECT_EQ(comments[4], "");
    EXPECT_EQ(comments[5], "low");
    EXPECT_EQ(comments[3000000000], "middle");
    EXPECT_EQ(comments[3000000001], "");
    EXPECT_EQ(comments[4294967296], "high");
    EXPECT_EQ(comments[4294967297], "");
}

TEST(CommentStore, CopyOfMoreThanADequeHoldsIsRefused) {
    comment_store comments;
    comments.append_empty_up_to(std::uint64_t{1} << 62U);
    std::deque<std::string> copy;
    EXPECT_THROW(comments.copy_to(copy), std::length_error);
    EXPECT_TRUE(copy.empty());
}

TEST(CommentStore, GapsOfMoreThan32BitsKeepTheirLength) {
    comment_store comments;
    comments.append_empty_up_to(20000000000);
    comments.insert(12884901889, "far");
    comments.insert(6, "near");
    EXPECT_EQ(comments.size(), 20000000002U);
    EXPECT_EQ(comments[6], "near");
    EXPECT_EQ(comments[12884901889], "");
    EXPECT_EQ(comments[12884901890], "far");
    EXPECT_EQ(comments[12884901891], "");
}

TEST(CommentStore, ReadsBackwards) {
    comment_store comments;
    std::deque<std::string> model;
    for (int i = 0; i < 2000; ++i) {
        comments.push_front(std::to_string(i));
        model.push_front(std::to_string(i));
    }
    for (std::size_t i = model.size(); i-- > 0;) {
        ASSERT_EQ(comments[i], model[i]);
    }
}

TEST(CommentStore, ClearedStoreIsEmptyAndTakesCommentsAgain) {
    comment_store comments;
    comments.push_front("old");
    comments.append_empty_up_to(10);
    EXPECT_EQ(comments[0], "old");
    comments.clear();
    expect_equal(comments, {});
    comments.push_front("new");
    expect_equal(comments, {"new"});
}

TEST(CommentStore, AssignmentReplacesEverything) {
    comment_store comments;
    comments.push_front("old");
    comments.append_empty_up_to(10);
    const std::deque<std::string> wanted = {"", "a", "", "", "b", ""};
    comments.assign(wanted);
    expect_equal(comments, wanted);
    comments.assign({});
    expect_equal(comments, {});
}

TEST(CommentStore, CopyingAppends) {
    comment_store comments;
    comments.push_front("new");
    std::deque<std::string> copy = {"old"};
    comments.copy_to(copy);
    EXPECT_EQ(copy, (std::deque<std::string>{"old", "new"}));
}

TEST(CommentStore, SecondRoundOfInsertionsAtAscendingIndexesKeepsTheOrder) {
    comment_store comments;
    std::deque<std::string> model(1000);
    comments.append_empty_up_to(1000);
    for (const char* round : {"first ", "second ", "third "}) {
        for (std::size_t i = 0; i < 1000; ++i) {
            comments.insert(i, round + std::to_string(i));
            model.insert(model.begin() + static_cast<std::ptrdiff_t>(i), round + std::to_string(i));
        }
    }
    expect_equal(comments, model);
}

/// A random change, which can be made to the store and to its model.
class random_change {
public:
    random_change(std::mt19937& random, std::size_t size)
        : kind(random() % 20),
          index(random() % (size + 1)),
          text(random() % 30, static_cast<char>(random())) {}

    void apply(comment_store& comments) const {
        if (kind == 0) {
            comments.append_empty_up_to(comments.size() + text.size() * 10);
        } else if (kind < 10) {
            comments.push_front(text);
        } else {
            comments.insert(index, text);
        }
    }

    void apply(std::deque<std::string>& model) const {
        if (kind == 0) {
            model.resize(model.size() + text.size() * 10);
        } else if (kind < 10) {
            model.push_front(text);
        } else {
            model.insert(model.begin() + static_cast<std::ptrdiff_t>(index), text);
        }
    }

private:
    std::size_t kind;
    std::size_t index;
    std::string text;
};

TEST(CommentStore, BehavesLikeADequeOfStrings) {
    for (unsigned seed = 1; seed <= 4; ++seed) {
        std::mt19937 random(seed);
        comment_store comments;
        std::deque<std::string> model;
        for (int step = 0; step < 6000; ++step) {
            const random_change change(random, model.size());
            change.apply(comments);
            change.apply(model);
            ASSERT_EQ(comments.size(), model.size());
            const std::size_t index = random() % (model.size() + 1);
            ASSERT_TRUE(index == model.size() || comments[index] == model[index]) << step;
        }
        expect_equal(comments, model);
        comment_store assigned;
        assigned.assign(model);
        expect_equal(assigned, model);
    }
}

TEST(CommentStore, InsertionsAtOneIndexOfALongStoreKeepTheOrder) {
    for (const std::size_t index : {1U, 127U, 128U, 255U, 256U, 257U, 700U}) {
        comment_store comments;
        std::deque<std::string> model;
        for (int i = 0; i < 1024; ++i) {
            comments.insert(comments.size(), "x" + std::to_string(i));
            model.push_back("x" + std::to_string(i));
        }
        for (int i = 0; i < 600; ++i) {
            comments.insert(index, std::to_string(i));
            model.insert(model.begin() + static_cast<std::ptrdiff_t>(index), std::to_string(i));
        }
        expect_equal(comments, model);
    }
}

/// Makes the allocations of a call fail one after another and checks each time that the comments are
/// unchanged. Finally, makes the call without a failure.
template <class Call>
void call_with_failures(comment_store& comments, const std::deque<std::string>& before, const Call& call) {
    for (std::size_t number = 1;; ++number) {
        const failing_allocation failing(number);
        try {
            call(comments);
            return;
        } catch (const std::bad_alloc&) {
            expect_equal(comments, before);
        }
    }
}

TEST(CommentStore, ChangesThatFailLeaveTheCommentsAsTheyWere) {
    std::mt19937 random(5);
    comment_store comments;
    std::deque<std::string> model;
    for (int step = 0; step < 1500; ++step) {
        const random_change change(random, model.size());
        call_with_failures(comments, model, [&](comment_store& store) { change.apply(store); });
        change.apply(model);
        ASSERT_EQ(comments.size(), model.size());
    }
    expect_equal(comments, model);
}

TEST(CommentStore, AssignmentThatFailsLeavesTheCommentsAsTheyWere) {
    comment_store comments;
    comments.push_front("old");
    std::deque<std::string> wanted;
    for (int i = 0; i < 600; ++i) {
        wanted.push_back(std::to_string(i));
    }
    call_with_failures(comments, {"old"}, [&](comment_store& store) { store.assign(wanted); });
    expect_equal(comments, wanted);
}

/// Pairs of a gap of three empty comments and a comment, and their model.
void append_pairs(comment_store& comments, std::deque<std::string>& model, int count) {
    for (int pair = 0; pair < count; ++pair) {
        model.resize(model.size() + 3);
        model.push_back(std::to_string(pair));
        comments.append_empty_up_to(comments.size() + 3);
        comments.insert(comments.size(), model.back());
    }
}

/// 256 entries are kept together.
TEST(CommentStore, TakesCommentsAnywhereAmidFullLists) {
    for (const int pairs : {127, 128, 129, 300}) {
        for (const std::size_t around : {0U, 256U, 512U, 768U, 1024U, 1200U}) {
            for (std::size_t index = around < 6 ? 0 : around - 6; index < around + 7; ++index) {
                comment_store comments;
                std::deque<std::string> model;
                append_pairs(comments, model, pairs);
                if (index > model.size()) {
                    break;
                }
                for (const char* const text : {"first", "second"}) {
                    comments.insert(index, text);
                    model.insert(model.begin() + static_cast<std::ptrdiff_t>(index), text);
                }
                comments.push_front("front");
                model.push_front("front");
                ASSERT_EQ(copy_of(comments), model) << index << " of " << pairs << " pairs";
                ASSERT_EQ(comments[index + 1], "second");
            }
        }
    }
}

TEST(CommentStore, TakesACommentBeforeAFullList) {
    for (const int pairs : {127, 128, 129}) {
        comment_store comments;
        std::deque<std::string> model;
        append_pairs(comments, model, pairs);
        for (int number = 0; number < 300; ++number) {
            comments.push_front(std::to_string(number));
            model.push_front(std::to_string(number));
        }
        expect_equal(comments, model);
    }
}

TEST(CommentStore, ClearedStoreGivesItsMemoryBack) {
    const allocation_meter meter;
    comment_store comments;
    const std::size_t before = allocation_meter::live();
    for (int number = 0; number < 1000; ++number) {
        comments.push_front(std::string(100, 'x'));
    }
    comments.clear();
    EXPECT_LE(allocation_meter::live(), before + 1024);
}

} // namespace
