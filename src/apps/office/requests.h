// What the component is asked to do.
#pragma once

#include <com/sun/star/uno/XComponentContext.hpp>
#include <memory>
#include <nlohmann/json_fwd.hpp>
#include <string>

#include "bindings/calc/calc_application.h"

namespace korvane::office {

// The requests, each one JSON object:
//   {"open": path}: the workbook that later requests mean; {"ok":true}.
//   {"explore": cell, "bEveryFunction": b, "bPreciseCalc": b}: the report.
//   {"window": cell, "config": folder, "state": folder}: {"ok":true} when the
//     windows of the view behind the inherited socket (descriptor 4) are closed,
//     once only. The folders are the user's, empty for none; "bEveryFunction" and
//     "bPreciseCalc" may stand in for stored settings.
//   {"formulaCells": true}: {"cells":[address, …]}, sheet by sheet, row by row.
// A request that cannot be met is answered {"error":{"code":c,"message":m}} with
// the exit code that the command line ends with.
class Requests {
public:
    explicit Requests(
        const com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext>& context)
        : context_(context) {}

    // Answers one line. Throws nothing but std::bad_alloc.
    std::string Handle(const std::string& line);

private:
    nlohmann::ordered_json Open(const nlohmann::ordered_json& request);
    nlohmann::ordered_json FormulaCells();
    nlohmann::ordered_json Explore(const nlohmann::ordered_json& request);
    nlohmann::ordered_json Window(const nlohmann::ordered_json& request);
    host::RangePtr Select(const std::string& cell);

    com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext> context_;
    std::shared_ptr<calc::CalcApplication> application_;
};

}  // namespace korvane::office
