// Starts an office with a component of tests and ends as they end:
// run_inside_office COMPONENT [test program's arguments]
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <string>

#include "apps/command/office_files.h"
#include "apps/command/office_process.h"

int main(int argc, char** argv) {
    if (argc < 2) return 2;
    setenv("KORVANE_OFFICE_LOG", "/dev/stdout", 0);
    try {
        korvane::command::OfficeProcess office(korvane::command::FindOffice(),
                                               std::filesystem::absolute(argv[1]), {});
        std::string arguments;
        for (int k = 2; k < argc; ++k) arguments += (k > 2 ? " " : "") + std::string(argv[k]);
        return std::stoi(office.Ask(arguments, std::nullopt));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
