// Every call to a host and to the platform's services fails in turn, over everything
// that a user does with the add-in. Runs unchanged whatever the host is.
#pragma once

#include <functional>
#include <memory>
#include <ostream>
#include <vector>

#include "scenarios/model_user.h"
#include "scenarios/world.h"

namespace korvane::test {

struct FaultyAction {
    const char* name;
    // What comes before, with no failure.
    void (*prepare)(World& world, ModelUser& user);
    void (*act)(World& world, ModelUser& user);
};

// How test reports name it.
inline void PrintTo(const FaultyAction& action, std::ostream* out) { *out << action.name; }

const std::vector<FaultyAction>& FaultyActions();

// Runs the action with its first, `stride`th next, … call failing until all succeed;
// behind each, shuts the add-in down. Fails the test unless nothing of it is left
// then, whatever failed.
void SweepFaults(const FaultyAction& action, int stride,
                 const std::function<std::unique_ptr<WorldHost>()>& makeHost);

}  // namespace korvane::test
