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
#include <cstring>
#include <stdexcept>
#include <string>

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

[[noreturn]] void Refuse(const std::string& why) {
    throw std::runtime_error("LibreOffice could not be cut off from the network: " + why);
}

}  // namespace

void CutOffNetwork() {
    if (kArchitecture == 0) Refuse("no filter for this kind of processor");
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
    if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0) Refuse(std::strerror(errno));
    // A positive answer names a thread that could not be given the filter.
    const long failed =
        syscall(SYS_seccomp, SECCOMP_SET_MODE_FILTER, SECCOMP_FILTER_FLAG_TSYNC, &program);
    if (failed < 0) Refuse(std::strerror(errno));
    if (failed > 0) Refuse("thread " + std::to_string(failed) + " has a filter of its own");
}

}  // namespace korvane::office
