// A desktop that only remembers what it was asked to open and to start.
#pragma once

#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "bindings/scripted/accesses.h"
#include "platform/shell.h"

namespace korvane::scripted {

class ScriptedShell : public platform::Shell {
public:
    explicit ScriptedShell(std::shared_ptr<Accesses> accesses) : accesses_(std::move(accesses)) {}

    // Raises kErrorInvalidCall for an address of another kind, and 53 ("File not
    // found") for one of `refused`.
    void Open(const std::u16string& address, std::int64_t owner) override;
    // Raises 53 for a command line of `refused`.
    void Start(const std::u16string& commandLine) override;

    struct Opened {
        std::u16string address;
        std::int64_t owner;
    };

    std::vector<Opened> opened;
    std::vector<std::u16string> started;
    std::set<std::u16string> refused;  // addresses and command lines

private:
    void RequireAccepted(const std::u16string& what) const;

    std::shared_ptr<Accesses> accesses_;
};

}  // namespace korvane::scripted
