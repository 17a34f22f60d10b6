#include "bindings/calc/desk/process_mark.h"

#include <unistd.h>

#include <fstream>
#include <sstream>

namespace korvane::calc {

namespace {

std::string Boot() {
    std::ifstream in("/proc/sys/kernel/random/boot_id");
    std::string id;
    std::getline(in, id);
    return id;
}

// The 22nd field; the second, a name in brackets, may hold anything. 0 for none.
long long StartOf(long id) {
    std::ifstream in("/proc/" + std::to_string(id) + "/stat");
    std::string line;
    std::getline(in, line);
    const auto name = line.rfind(')');
    if (name == std::string::npos) return 0;
    std::istringstream fields(line.substr(name + 1));
    std::string field;
    for (int k = 3; k < 22; ++k) fields >> field;
    long long start = 0;
    fields >> start;
    return start;
}

}  // namespace

ProcessMark OwnMark() { return {::getpid(), StartOf(::getpid()), Boot()}; }

bool IsAlive(const ProcessMark& process) {
    if (process.boot != Boot()) return false;
    const long long start = StartOf(process.id);
    return start != 0 && start == process.start;
}

}  // namespace korvane::calc
