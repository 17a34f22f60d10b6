// What users do with explorer windows from beginning to end, by name. Each runs
// unchanged whoever the user is.
#pragma once

#include <ostream>
#include <string>
#include <vector>

#include "scenarios/stage.h"

namespace korvane::test {

struct Scenario {
    const char* name;
    // Closes every window that it opened.
    void (*play)(Stage& at);
};

// How test reports name it.
inline void PrintTo(const Scenario& scenario, std::ostream* out) { *out << scenario.name; }

const std::vector<Scenario>& Scenarios();

// Plays it over a world that is open, shuts that down, and checks that nothing of it
// is left. Returns its story: each thing done, with what was there behind it.
std::vector<std::string> Play(const Scenario& scenario, World& world, User& user);

}  // namespace korvane::test
