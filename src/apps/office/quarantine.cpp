#include "apps/office/quarantine.h"

#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>

namespace korvane::office {
namespace {

#if defined(__x86_64__)
constexpr unsigned kArchitecture = AUDIT_ARCH_X86_64;
#elif defined(__aarch64__)
constexpr unsigned kArchitecture = AUDIT_ARCH_AARCH64;
#else
constexpr unsigned kArchitecture = 0;
#endif

constexpr sock_filter Statement(unsigned code, unsigned value) {
    return {static_cast<unsigned short>(code), 0, 0, value};
}

constexpr sock_filter Jump(unsigned value, unsigned char whenEqual, unsigned char otherwise) {
    return {BPF_JMP | BPF_JEQ | BPF_K, whenEqual, otherwise, value};
}

}  // namespace

void CutOffNetwork() noexcept {
    if (kArchitecture == 0) return;
    // socket() of any family but AF_UNIX is refused; everything else is as ever.
    sock_filter filter[] = {
        Statement(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, arch)),
        Jump(kArchitecture, 0, 5),
        Statement(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        Jump(__NR_socket, 0, 3),
        Statement(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, args)),
        Jump(AF_UNIX, 1, 0),
        Statement(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EACCES),
        Statement(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    };
    const sock_fprog program{sizeof filter / sizeof filter[0], filter};
    if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0) return;
    syscall(SYS_seccomp, SECCOMP_SET_MODE_FILTER, SECCOMP_FILTER_FLAG_TSYNC, &program);
}

}  // namespace korvane::office
