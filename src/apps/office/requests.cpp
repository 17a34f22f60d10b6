#include "apps/office/requests.h"

#include <nlohmann/json.hpp>
#include <optional>

#include "apps/command/document.h"
#include "apps/office/loader.h"
#include "apps/office/own_file.h"
#include "apps/report/exploration.h"
#include "apps/report/exploration_json.h"
#include "apps/window/session.h"
#include "base/text.h"
#include "bindings/calc/formula_cells.h"

namespace korvane::office {
namespace {

using Json = nlohmann::ordered_json;

using command::CommandError;
using command::kHostLost;
using command::kNotFound;

Json Failure(command::ExitCode code, const std::string& message) {
    return Json{{"error", {{"code", static_cast<int>(code)}, {"message", message}}}};
}

constexpr int kViewLink = 4;

std::optional<bool> Flag(const Json& request, const char* name) {
    if (!request.contains(name)) return std::nullopt;
    return request.at(name).get<bool>();
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
        } else if (request.contains("window")) {
            answer = Window(request);
        } else if (request.contains("formulaCells")) {
            answer = FormulaCells();
        } else {
            answer = Failure(kHostLost, "The office component does not know the request.");
        }
    } catch (const CommandError& error) {
        answer = Failure(error.code(), error.what());
    } catch (const std::exception& error) {  // korvane::Error is one
        answer = Failure(kHostLost, error.what());
    }
    return answer.dump(-1, ' ', false, Json::error_handler_t::replace);
}

Json Requests::Open(const Json& request) {
    try {
        const auto model = OpenWorkbook(context_, request.at("open").get<std::string>());
        application_ = std::make_shared<calc::CalcApplication>(context_, model, OwnFile());
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
    const auto cell = Select(request.at("explore").get<std::string>());
    return ToJson(korvane::Explore(*application_, cell, request.at("bEveryFunction").get<bool>(),
                                   request.at("bPreciseCalc").get<bool>()));
}

Json Requests::Window(const Json& request) {
    Select(request.at("window").get<std::string>());
    window::SessionSettings settings;
    settings.bEveryFunction = Flag(request, "bEveryFunction");
    settings.bPreciseCalc = Flag(request, "bPreciseCalc");
    settings.folders.config = request.at("config").get<std::string>();
    settings.folders.state = request.at("state").get<std::string>();
    const auto addin = application_->ThisWorkbook();
    settings.addinFolder = ToUtf8(addin->Path());
    view_link::ViewLink link({});
    link.Adopt(kViewLink);
    window::ShowExplorer(link, application_, addin, settings);
    return Json{{"ok", true}};
}

// What a formula says without a sheet means the explored cell's: so that is the
// active one.
host::RangePtr Requests::Select(const std::string& text) {
    if (!application_) throw CommandError(kHostLost, "No workbook is open.");
    host::RangePtr cell;
    try {
        cell = application_->FindCell(ToUtf16(text));
    } catch (const Error& error) {
        if (error.number() == kErrorObjectGone) throw;
        throw CommandError(kNotFound, error.what());
    }
    cell->Select();
    return cell;
}

}  // namespace korvane::office
