// Reports as JSON: the command line's --json lines and the office process's
// answers are the same objects.
#pragma once

#include <nlohmann/json_fwd.hpp>

#include "apps/report/exploration.h"

namespace korvane {

nlohmann::ordered_json ToJson(const ExplorationReport& report);

// The report that ToJson wrote. Throws nlohmann::json::exception for an object
// of another form.
ExplorationReport ReportFromJson(const nlohmann::ordered_json& json);

}  // namespace korvane
