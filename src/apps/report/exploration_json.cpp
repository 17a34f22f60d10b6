#include "apps/report/exploration_json.h"

#include <nlohmann/json.hpp>

#include "base/text.h"

namespace korvane {
namespace {

using Json = nlohmann::ordered_json;

Json PartToJson(const PartReport& part) {
    Json children = Json::array();
    for (const auto& child : part.children) children.push_back(PartToJson(child));
    return Json{{"name", ToUtf8(part.name)},
                {"function", ToUtf8(part.function)},
                {"formula", ToUtf8(part.formula)},
                {"kind", part.kind},
                {"tag", part.tag},
                {"pos", part.position},
                {"rootPos", part.rootPosition},
                {"length", part.length},
                {"value", ToUtf8(part.value)},
                {"location", ToUtf8(part.location)},
                {"calc", ToUtf8(part.calcValue)},
                {"range", part.range ? Json(ToUtf8(*part.range)) : Json(nullptr)},
                {"children", std::move(children)}};
}

std::u16string TextAt(const Json& json, const char* key) {
    return ToUtf16(json.at(key).get_ref<const std::string&>());
}

PartReport PartFromJson(const Json& json) {
    PartReport part;
    part.name = TextAt(json, "name");
    part.function = TextAt(json, "function");
    part.formula = TextAt(json, "formula");
    part.kind = json.at("kind").get<std::int32_t>();
    part.tag = json.at("tag").get<std::int32_t>();
    part.position = json.at("pos").get<std::int32_t>();
    part.rootPosition = json.at("rootPos").get<std::int32_t>();
    part.length = json.at("length").get<std::int32_t>();
    part.value = TextAt(json, "value");
    part.location = TextAt(json, "location");
    part.calcValue = TextAt(json, "calc");
    if (!json.at("range").is_null()) part.range = TextAt(json, "range");
    for (const auto& child : json.at("children")) part.children.push_back(PartFromJson(child));
    return part;
}

}  // namespace

Json ToJson(const ExplorationReport& report) {
    Json log = Json::array();
    for (const auto& line : report.log) log.push_back(ToUtf8(line));
    Json json{{"ok", report.ok},
              {"cell", ToUtf8(report.cell)},
              {"formula", ToUtf8(report.formula)},
              {"bEveryFunction", report.bEveryFunction},
              {"bPreciseCalc", report.bPreciseCalc},
              {"bMaybeImprecise", report.bMaybeImprecise},
              {"bContainsIndirect", report.bContainsIndirect},
              {"log", std::move(log)}};
    if (report.tree) json["tree"] = PartToJson(*report.tree);
    return json;
}

ExplorationReport ReportFromJson(const Json& json) {
    ExplorationReport report;
    report.ok = json.at("ok").get<bool>();
    report.cell = TextAt(json, "cell");
    report.formula = TextAt(json, "formula");
    report.bEveryFunction = json.at("bEveryFunction").get<bool>();
    report.bPreciseCalc = json.at("bPreciseCalc").get<bool>();
    report.bMaybeImprecise = json.at("bMaybeImprecise").get<bool>();
    report.bContainsIndirect = json.at("bContainsIndirect").get<bool>();
    for (const auto& line : json.at("log")) {
        report.log.push_back(ToUtf16(line.get_ref<const std::string&>()));
    }
    if (const auto tree = json.find("tree"); tree != json.end()) report.tree = PartFromJson(*tree);
    return report;
}

}  // namespace korvane
