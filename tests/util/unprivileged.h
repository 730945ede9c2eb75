#pragma once

#if !defined(_WIN32)

#include <grp.h>
#include <optional>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace kvr_test {

/// Calls @p question in a child process; if this user is the superuser, as a user without privileges. No
/// value if the child cannot change its user.
template <class Question>
std::optional<bool> answer_without_privileges(Question question) {
    constexpr uid_t nobody = 65534;
    constexpr int no_answer = 2;
    const pid_t child = fork();
    if (child == 0) {
        const bool privileged =
            geteuid() == 0 && (setgroups(0, nullptr) != 0 || setresgid(nobody, nobody, nobody) != 0 ||
                               setresuid(nobody, nobody, nobody) != 0);
        _exit(privileged ? no_answer : static_cast<int>(question()));
    }
    int status = 0;
    if (child < 0 || waitpid(child, &status, 0) != child || !WIFEXITED(status) || WEXITSTATUS(status) > 1) {
        return std::nullopt;
    }
    return WEXITSTATUS(status) == 1;
}

/// Calls @p question with @p path as a user who may list that directory, but not search it. No value if there
/// is no such user.
template <class Question>
std::optional<bool> answer_about_unsearchable(const std::string& path, Question question) {
    const auto may_list_only = [&path] {
        return access(path.c_str(), R_OK) == 0 && access(path.c_str(), X_OK) != 0;
    };
    if (!answer_without_privileges(may_list_only).value_or(false)) {
        return std::nullopt;
    }
    return answer_without_privileges([&] { return question(path); });
}

} // namespace kvr_test

#endif
