#include "apps/report/exploration_json.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

namespace korvane {
namespace {

using Json = nlohmann::ordered_json;

ExplorationReport Sample() {
    ExplorationReport report;
    report.ok = true;
    report.cell = u"'[B.xls]My Sheet'!$A$1";
    report.formula = u"=IF(B1>0,\"\u00e4\U0001F600\",C1)";
    report.bEveryFunction = false;
    report.bPreciseCalc = true;
    report.bMaybeImprecise = true;
    report.bContainsIndirect = true;
    report.log = {u"CElement.bInitRoot: one", u"two"};
    PartReport child;
    child.name = u"if true (chosen)";
    child.function = u"Rate";
    child.formula = u"Rate";
    child.kind = 2;
    child.tag = 1;
    child.position = 3;
    child.rootPosition = 8;
    child.length = 4;
    child.value = u"#N/A";
    child.location = u"S!B2";
    child.calcValue = u"#N/A";
    child.range = u"[B.xls]S!$B$2";
    PartReport root;
    root.name = u"A1";
    root.formula = report.formula;
    root.length = 21;
    root.children = {child, child};
    root.children[1].children.push_back(child);
    report.tree = root;
    return report;
}

TEST(ExplorationJson, HasTheMembersOfAReportInOrder) {
    const Json json = ToJson(Sample());
    std::vector<std::string> keys;
    for (const auto& [key, value] : json.items()) keys.push_back(key);
    EXPECT_EQ(keys,
              (std::vector<std::string>{"ok", "cell", "formula", "bEveryFunction", "bPreciseCalc",
                                        "bMaybeImprecise", "bContainsIndirect", "log", "tree"}));
    keys.clear();
    for (const auto& [key, value] : json["tree"].items()) keys.push_back(key);
    EXPECT_EQ(keys, (std::vector<std::string>{"name", "function", "formula", "kind", "tag", "pos",
                                              "rootPos", "length", "value", "location", "calc",
                                              "range", "children"}));
    EXPECT_EQ(json["tree"]["range"], Json(nullptr)) << "a part without cells";
    EXPECT_EQ(json["tree"]["children"][0].dump(),
              R"j({"name":"if true (chosen)","function":"Rate","formula":"Rate","kind":2,"tag":1,)j"
              R"j("pos":3,"rootPos":8,"length":4,"value":"#N/A","location":"S!B2","calc":"#N/A",)j"
              R"j("range":"[B.xls]S!$B$2","children":[]})j");
}

TEST(ExplorationJson, AReportSurvivesTheRoundTrip) {
    const Json json = ToJson(Sample());
    const ExplorationReport back = ReportFromJson(Json::parse(json.dump()));
    EXPECT_EQ(ToJson(back), json);
    EXPECT_EQ(back.formula, Sample().formula);
    ASSERT_TRUE(back.tree);
    EXPECT_EQ(back.tree->children[1].children[0].rootPosition, 8);
    EXPECT_FALSE(back.tree->range);
}

TEST(ExplorationJson, AFailureHasALogAndNoTree) {
    ExplorationReport report;
    report.cell = u"[B.xls]S!$A$1";
    report.log = {u"CElement.bInitRoot: A quote is not closed (bInitRoot)"};
    const Json json = ToJson(report);
    EXPECT_FALSE(json.contains("tree"));
    EXPECT_EQ(json["ok"], false);
    EXPECT_EQ(json["log"].dump(), R"j(["CElement.bInitRoot: A quote is not closed (bInitRoot)"])j");
    EXPECT_FALSE(ReportFromJson(json).tree);
    EXPECT_EQ(ToJson(ReportFromJson(json)), json);
}

TEST(ExplorationJson, AnotherObjectIsRefused) {
    for (const char* text : {"{}", "[]", "1", R"({"ok":1})"}) {
        EXPECT_THROW(ReportFromJson(Json::parse(text)), Json::exception) << text;
    }
    for (const char* key : {"ok", "cell", "formula", "log"}) {
        Json json = ToJson(Sample());
        json.erase(key);
        EXPECT_THROW(ReportFromJson(json), Json::exception) << key;
    }
    Json json = ToJson(Sample());
    json["tree"].erase("kind");
    EXPECT_THROW(ReportFromJson(json), Json::exception);
    json = ToJson(Sample());
    json["log"] = Json::array({1});
    EXPECT_THROW(ReportFromJson(json), Json::exception);
}

}  // namespace
}  // namespace korvane
