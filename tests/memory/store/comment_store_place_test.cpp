// A comment store remembers the place of the last access.

#include "kvr/memory/store/comment_store.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace {

void push_numbers(kvr::comment_store& comments, int count) {
    for (int number = count; number-- > 0;) {
        comments.push_front(std::to_string(number));
    }
}

TEST(CommentStorePlace, IsForgottenWhenTheStoreIsCleared) {
    kvr::comment_store comments;
    push_numbers(comments, 2000);
    EXPECT_EQ(comments[1999], "1999");
    comments.clear();
    comments.push_front("last");
    comments.push_front("first");
    EXPECT_EQ(comments[0], "first");
    EXPECT_EQ(comments[1], "last");
    comments.insert(1, "between");
    EXPECT_EQ(comments[0], "first");
    EXPECT_EQ(comments[1], "between");
    EXPECT_EQ(comments[2], "last");
}

TEST(CommentStorePlace, IsForgottenByAStoreThatIsFilledAgainAtItsEnd) {
    kvr::comment_store comments;
    push_numbers(comments, 2000);
    EXPECT_EQ(comments[1999], "1999");
    comments.clear();
    comments.insert(0, "first");
    comments.insert(1, "second");
    EXPECT_EQ(comments[0], "first");
    EXPECT_EQ(comments[1], "second");
}

TEST(CommentStorePlace, IsForgottenWhenTheCommentsAreReplaced) {
    kvr::comment_store comments;
    push_numbers(comments, 2000);
    EXPECT_EQ(comments[1999], "1999");
    comments.assign({"first", "second"});
    EXPECT_EQ(comments[0], "first");
    EXPECT_EQ(comments[1], "second");
}

TEST(CommentStorePlace, IsRightWhereverItWasBefore) {
    kvr::comment_store comments;
    push_numbers(comments, 3000);
    for (std::uint64_t from = 0; from < comments.size(); from += 97) {
        for (std::uint64_t to = 0; to < comments.size(); to += 101) {
            ASSERT_EQ(comments[from], std::to_string(from));
            ASSERT_EQ(comments[to], std::to_string(to));
        }
    }
}

} // namespace
