// The desktop's own way to open addresses.
#pragma once

#include <cstdint>
#include <string>
#include <utility>

#include "platform/shell.h"

namespace korvane::posix {

// Starts programs without a shell in between, so that nothing in an address or a
// command line is ever run but the program that is meant.
class PosixShell : public platform::Shell {
public:
    // `opener` is the program that opens an address, its only argument.
    explicit PosixShell(std::string opener = "xdg-open") : opener_(std::move(opener)) {}

    // Also raises for an address with a control character. The blanks in an
    // address are written as %20, so that what the opener starts cannot take it
    // for several. `owner` has no meaning to the opener.
    void Open(const std::u16string& address, std::int64_t owner) override;
    // The command line is taken apart as SplitCommandLine says. Whether the
    // program's window takes the focus lies with the window system.
    void Start(const std::u16string& commandLine) override;

private:
    std::string opener_;
};

}  // namespace korvane::posix
