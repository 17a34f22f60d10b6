#include "apps/office/requests.h"

#include <nlohmann/json.hpp>

#include "apps/command/document.h"
#include "apps/office/loader.h"
#include "apps/report/exploration.h"
#include "apps/report/exploration_json.h"
#include "base/text.h"
#include "bindings/calc/formula_cells.h"

namespace korvane::office {
namespace {

using Json = nlohmann::ordered_json;

using command::kHostLost;
using command::kNotFound;

Json Failure(command::ExitCode code, const std::string& message) {
    return Json{{"error", {{"code", static_cast<int>(code)}, {"message", message}}}};
}

}  // namespace

std::string Requests::Handle(const std::string& line) {
    Json answer;
    try {
        const Json request = Json::parse(line);
        if (request.contains("open")) {
            answer = Open(request);
        } else if (request.contains("explore")) {
            answer = Explore(request);
        } else if (request.contains("formulaCells")) {
            answer = FormulaCells();
        } else {
            answer = Failure(kHostLost, "The office component does not know the request.");
        }
    } catch (const std::exception& error) {  // korvane::Error is one
        answer = Failure(kHostLost, error.what());
    }
    return answer.dump(-1, ' ', false, Json::error_handler_t::replace);
}

Json Requests::Open(const Json& request) {
    try {
        const auto model = OpenWorkbook(context_, request.at("open").get<std::string>());
        application_ = std::make_shared<calc::CalcApplication>(context_, model);
    } catch (const NotAWorkbook& error) {
        return Failure(kNotFound, error.what());
    }
    return Json{{"ok", true}};
}

Json Requests::FormulaCells() {
    if (!application_) return Failure(kHostLost, "No workbook is open.");
    Json cells = Json::array();
    for (const auto& cell : calc::FormulaCells(application_->document())) {
        cells.push_back(ToUtf8(cell));
    }
    return Json{{"cells", std::move(cells)}};
}

Json Requests::Explore(const Json& request) {
    if (!application_) return Failure(kHostLost, "No workbook is open.");
    host::RangePtr cell;
    try {
        cell = application_->FindCell(ToUtf16(request.at("explore").get<std::string>()));
    } catch (const Error& error) {
        if (error.number() == kErrorObjectGone) throw;
        return Failure(kNotFound, error.what());
    }
    // What the formula says without a sheet means the explored cell's.
    cell->Select();
    return ToJson(korvane::Explore(*application_, cell, request.at("bEveryFunction").get<bool>(),
                                   request.at("bPreciseCalc").get<bool>()));
}

}  // namespace korvane::office
