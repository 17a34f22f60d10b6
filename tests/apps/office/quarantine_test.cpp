// The network's filter, and what happens where there is none. A filter stays for
// a process's whole life: each test has a process of its own.
#include "apps/office/quarantine.h"

#include <gtest/gtest.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <stdexcept>

#include "apps/command/office_document.h"
#include "files_under_test.h"

namespace korvane::office {
namespace {

using command::testing::SmallWorkbook;
using command::testing::TestFolder;

// The exit code of `call` in a process of its own; 99 when it throws.
template <class Call>
int InChild(Call&& call) {
    const pid_t child = fork();
    if (child == 0) {
        int code = 99;
        try {
            code = call();
        } catch (const std::exception& error) {
            std::fprintf(stderr, "%s\n", error.what());
        }
        _exit(code);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

// From now on this process and its children can set no filter.
bool TakeFiltersAway() {
    const auto statement = [](unsigned code, unsigned value) {
        return sock_filter{static_cast<unsigned short>(code), 0, 0, value};
    };
    sock_filter filter[] = {
        statement(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        {BPF_JMP | BPF_JEQ | BPF_K, 0, 1, __NR_seccomp},
        statement(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EPERM),
        statement(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    };
    const sock_fprog program{sizeof filter / sizeof filter[0], filter};
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           syscall(SYS_seccomp, SECCOMP_SET_MODE_FILTER, 0, &program) == 0;
}

TEST(Quarantine, LeavesNoSocketsButLocalOnes) {
    EXPECT_EQ(InChild([] {
                  CutOffNetwork();
                  if (socket(AF_INET, SOCK_STREAM, 0) >= 0 || errno != EACCES) return 1;
                  if (socket(AF_INET6, SOCK_DGRAM, 0) >= 0) return 2;
                  return socket(AF_UNIX, SOCK_STREAM, 0) >= 0 ? 0 : 3;
              }),
              0);
}

TEST(Quarantine, SaysWhenItCannotBe) {
    EXPECT_EQ(InChild([] {
                  if (!TakeFiltersAway()) return 1;
                  try {
                      CutOffNetwork();
                  } catch (const std::runtime_error& error) {
                      return std::strstr(error.what(), "network") != nullptr ? 0 : 2;
                  }
                  return 3;
              }),
              0);
}

TEST(Quarantine, WithoutItNoWorkbookIsOpened) {
    TestFolder folder;
    const std::string path = folder.Write("small.fods", SmallWorkbook());
    EXPECT_EQ(InChild([&] {
                  if (!TakeFiltersAway()) return 1;
                  try {
                      command::OfficeDocument document(path);
                  } catch (const command::CommandError& error) {
                      if (error.code() != command::kHostLost) return 2;
                      return std::strstr(error.what(), "network") != nullptr ? 0 : 3;
                  }
                  return 4;
              }),
              0);
    EXPECT_TRUE(folder.IsClean());
}

}  // namespace
}  // namespace korvane::office
