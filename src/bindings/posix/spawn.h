// Programs that are started and left alone.
#pragma once

#include <string>
#include <vector>

namespace korvane::posix {

// Starts the program arguments[0], looked up in PATH unless it holds a "/", with
// this process's environment and folder, and returns as soon as it runs. Nothing
// else is inherited: it has no terminal, no open file but /dev/null three times,
// and every signal as by default. It is not our child, so it leaves no zombie and
// may outlast us. Raises, naming the program, when it cannot be started; how it
// fares then is not known. `arguments` is not empty and holds no NUL.
void SpawnDetached(const std::vector<std::string>& arguments);

}  // namespace korvane::posix
