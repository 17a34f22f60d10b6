#include "support/exploring.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "base/text.h"
#include "bindings/scripted/load_document.h"
#include "support/tree_text.h"

namespace korvane::test {

std::unique_ptr<scripted::ScriptedHost> HostOf(const std::string& json) {
    return std::make_unique<scripted::ScriptedHost>(
        scripted::LoadDocument(nlohmann::json::parse(json)));
}

std::unique_ptr<scripted::ScriptedHost> HostWith(const std::string& formula,
                                                 const std::string& cells,
                                                 const std::string& rest) {
    const std::string first =
        R"("A1":{"formula":)" + nlohmann::json(formula).dump() + R"(,"value":1})";
    return HostOf(R"({"workbooks":[{"name":"B.xls","sheets":[{"name":"S","cells":{)" + first +
                  (cells.empty() ? "" : "," + cells) + R"(}},{"name":"My Sheet"}]}])" +
                  (rest.empty() ? "" : "," + rest) + "}");
}

void Exploration::Lines::Report(const char16_t* module, const char16_t* procedure,
                                const Error& error, bool /*isEntryPoint*/) {
    lines.push_back(
        ToUtf8(std::u16string(module) + u"." + procedure + u": " + error.description()));
}

Exploration::Exploration(scripted::ScriptedHost& host, bool bEveryFunction, bool bPreciseCalc)
    : host_(host), handlesBefore_(host.LiveHandles()), application_(host.Application()) {
    options_ = std::make_unique<CElementOptions>(*application_, reporter_);
    options_->bEveryFunction = bEveryFunction;
    options_->bPreciseCalc = bPreciseCalc;
    options_->rngRootCell =
        host.RangeAt({host.model().activeBook, host.model().activeSheet, host.model().activeCell});
    root_ = std::make_unique<CElement>();
    ok = root_->bInitRoot(*options_);
    if (ok) CheckTree(*root_);
}

Exploration::~Exploration() {
    root_.reset();
    options_.reset();
    application_.reset();
    EXPECT_EQ(host_.LiveHandles(), handlesBefore_) << "an exploration left handles behind";
}

std::string Exploration::text() const { return TreeText(*root_); }

namespace {

void CheckBelow(const CElement& parent) {
    for (const auto& sub : parent.colSubs()) {
        ASSERT_EQ(sub->clsParent(), &parent);
        EXPECT_EQ(sub->lRootPosition(), sub->lGetRootPosition());
        EXPECT_EQ(sub->lLength(), sub->lGetLength());
        if (sub->lPos() == 0) {
            EXPECT_EQ(sub->lRootPosition(), parent.lRootPosition());
            EXPECT_EQ(sub->lLength(), parent.lLength());
        } else {
            const auto length = static_cast<std::int32_t>(parent.sFormula().size());
            EXPECT_GE(sub->lPos(), 1);
            EXPECT_LE(sub->lPos() + sub->lLength() - 1, length)
                << ToUtf8(sub->sFormula()) << " in " << ToUtf8(parent.sFormula());
            const bool positioned = parent.lRootPosition() > 0;
            EXPECT_EQ(sub->lRootPosition(),
                      positioned ? parent.lRootPosition() + sub->lPos() - 1 : sub->lPos());
        }
        CheckBelow(*sub);
    }
}

}  // namespace

void CheckTree(const CElement& root) {
    EXPECT_TRUE(root.bIsRoot());
    EXPECT_EQ(root.lPos(), 0);
    EXPECT_EQ(root.lRootPosition(), 0);
    EXPECT_EQ(root.lLength(), static_cast<std::int32_t>(root.sFormula().size()));
    CheckBelow(root);
}

}  // namespace korvane::test
