#pragma once

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <initializer_list>
#include <iostream>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <string>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <vector>

/// A system call that fails. With a mask, it fails only if an argument has the given value in the bits of the
/// mask.
struct failing_call {
    long number;
    int error;
    std::size_t argument = 0; ///< from 0
    std::uint32_t mask = 0;
    std::uint32_t value = 0;
};

/// Makes @p calls fail for the rest of this process, in the same way as the kernel. False if that is not
/// possible.
inline bool make_fail(std::initializer_list<failing_call> calls) {
    std::vector<sock_filter> filter;
    for (const failing_call& each : calls) {
        const std::size_t argument = offsetof(seccomp_data, args) + each.argument * sizeof(std::uint64_t);
        filter.push_back(BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)));
        filter.push_back(BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, static_cast<std::uint32_t>(each.number), 0, 4));
        filter.push_back(BPF_STMT(BPF_LD | BPF_W | BPF_ABS, static_cast<std::uint32_t>(argument)));
        filter.push_back(BPF_STMT(BPF_ALU | BPF_AND | BPF_K, each.mask));
        filter.push_back(BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, each.value, 0, 1));
        filter.push_back(
            BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | static_cast<std::uint32_t>(each.error)));
    }
    filter.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW));
    const sock_fprog program{static_cast<unsigned short>(filter.size()), filter.data()};
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

/// For a child process of a test: calls @p answer while @p calls fail, writes the result to standard error
/// and exits.
template <class Answer>
[[noreturn]] void end_with_answer(std::initializer_list<failing_call> calls, Answer answer) {
    if (!make_fail(calls)) {
        std::cerr << "no call can be made to fail";
        std::exit(2); // NOLINT(concurrency-mt-unsafe): the child has one thread
    }
    std::cerr << answer();
    std::exit(0); // NOLINT(concurrency-mt-unsafe): the child has one thread
}
