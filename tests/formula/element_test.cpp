#include "formula/element.h"

#include <gtest/gtest.h>

#include "base/text.h"
#include "bindings/scripted/objects.h"
#include "support/exploring.h"

namespace korvane {
namespace {

using test::Exploration;
using test::HostOf;
using test::HostWith;

// ---- The root ----

TEST(ElementRoot, AConstantGivesARootWithoutChildrenThatShowsItsAddressAndText) {
    const auto host = HostOf(R"({"workbooks":[{"name":"B.xls","sheets":[{"name":"S",
        "cells":{"C2":{"value":3.14159,"text":" 3.14 "}}}]}],"active":{"cell":"C2"}})");
    const Exploration exploration(*host, true);
    ASSERT_TRUE(exploration.ok);
    EXPECT_EQ(exploration.text(), "C2 | 3.14159 @0 | S<C2> | 3.14\n");
    EXPECT_EQ(host->CountOf("Application.Evaluate"), 0);
}

TEST(ElementRoot, AnEmptyCellIsAConstantToo) {
    const auto host = HostOf(R"({"workbooks":[{"sheets":[{"name":"S"}]}],"active":{"cell":"B9"}})");
    const Exploration exploration(*host, true);
    ASSERT_TRUE(exploration.ok);
    EXPECT_EQ(exploration.text(), "B9 |  @0 | S<B9> | \n");
    EXPECT_EQ(exploration.root().lLength(), 0);
}

TEST(ElementRoot, OnlyATextThatBeginsWithAnEqualsSignIsParsed) {
    for (const char* text : {"A1+B1", " =A1+B1", "+A1", "{=A1}", "'=A1"}) {
        const auto host = HostWith(text);
        const Exploration exploration(*host, true);
        ASSERT_TRUE(exploration.ok);
        EXPECT_TRUE(exploration.root().colSubs().empty()) << text;
        EXPECT_EQ(ToUtf8(exploration.root().sFormula()), text);
    }
}

constexpr const char* kArray =
    R"j({"workbooks":[{"name":"B.xls","sheets":[{"name":"S","protected":%s,
    "cells":{"C1":{"formula":"=SUM(A1:A3*B1:B3)","value":1,"hasArray":true,"currentArray":"C1:C3"},
             "C2":{"formula":"=SUM(A1:A3*B1:B3)","value":2,"hasArray":true,
                 "currentArray":"C1:C3"}}}]}],
    "active":{"cell":"C2"}})j";

std::string ArrayDocument(const std::string& isProtected) {
    std::string document = kArray;
    return document.replace(document.find("%s"), 2, isProtected);
}

TEST(ElementRoot, AnArrayFormulaShowsItsBracesAndTheWholeBlock) {
    const auto host = HostOf(ArrayDocument("false"));
    const Exploration exploration(*host, false);
    ASSERT_TRUE(exploration.ok);
    EXPECT_EQ(exploration.text(),
              "C1:C3 | {=SUM(A1:A3*B1:B3)} @0 | S<C1:C3> | \n"
              "  A1:A3 | A1:A3 @7 | S<A1:A3> | \n"
              "  B1:B3 | B1:B3 @13 | S<B1:B3> | \n");
    EXPECT_EQ(exploration.root().lLength(), 19);
}

TEST(ElementRoot, OnAProtectedSheetAnArrayFormulaShowsTheCellAlone) {
    const auto host = HostOf(ArrayDocument("true"));
    const Exploration exploration(*host, true);
    ASSERT_TRUE(exploration.ok);
    EXPECT_EQ(ToUtf8(exploration.root().sFormula()), "{=SUM(A1:A3*B1:B3)}");
    EXPECT_EQ(ToUtf8(exploration.root().sName()), "C2");
    EXPECT_EQ(ToUtf8(exploration.root().sValue()), "2");
    EXPECT_EQ(exploration.root().colSubs().size(), 1U);
}

TEST(ElementRoot, ANamedCellShowsItsNameWithoutSheetAndItsLocationWithAddress) {
    const auto host = HostOf(R"({"workbooks":[{"name":"B.xls","names":{"Total":"=S!$A$1"},
        "sheets":[{"name":"S","cells":{"A1":{"formula":"=B1","value":5}}}]}]})");
    const Exploration exploration(*host, false);
    ASSERT_TRUE(exploration.ok);
    EXPECT_EQ(exploration.text(),
              "Total | =B1 @0 | S!A1<A1> | \n"
              "  B1 | B1 @2 | S<B1> | \n");
    EXPECT_EQ(ToUtf8(exploration.root().sFunction()), "Total");
}

TEST(ElementRoot, ASheetsOwnNameOfTheCellLosesItsPrefix) {
    const auto host =
        HostOf(R"({"workbooks":[{"sheets":[{"name":"My Sheet","names":{"Own":"='My Sheet'!A1"},
        "cells":{"A1":7}}]}]})");
    const Exploration exploration(*host, false);
    EXPECT_EQ(exploration.text(), "Own | 7 @0 | My Sheet!A1<A1> | \n");
}

TEST(ElementRoot, TheNameIsThatOfTheCellNotOfItsArrayBlock) {
    const auto host = HostOf(R"({"workbooks":[{"names":{"Block":"=S!A1:A2","Cell":"=S!A2"},
        "sheets":[{"name":"S","cells":{"A2":{"formula":"=B1","hasArray":true,
            "currentArray":"A1:A2"}}}]}],
        "active":{"cell":"A2"}})");
    const Exploration exploration(*host, false);
    EXPECT_EQ(ToUtf8(exploration.root().sName()), "Cell");
    EXPECT_EQ(ToUtf8(exploration.root().sLocation()), "S!A1:A2");
}

TEST(ElementRoot, AHostThatCannotSayTheNameLeavesTheAddress) {
    const auto host = HostWith("=B1");
    host->FailMember("Range.Name");
    const Exploration exploration(*host, false);
    ASSERT_TRUE(exploration.ok);
    EXPECT_EQ(ToUtf8(exploration.root().sName()), "A1");
}

TEST(ElementRoot, ExploringAgainDropsTheEarlierTree) {
    const auto host = HostWith("=B1+C1");
    Exploration exploration(*host, false);
    ASSERT_EQ(exploration.root().colSubs().size(), 2U);
    const CElementPtr old = exploration.root().colSubs()[0];
    host->model().activeSheet->At(1, 1).content.formula = u"=D1";
    ASSERT_TRUE(exploration.root().bInitRoot(exploration.options()));
    EXPECT_EQ(exploration.text(), "A1 | =D1 @0 | S<A1> | 1\n  D1 | D1 @2 | S<D1> | \n");
    EXPECT_TRUE(old->bIsRoot()) << "a dropped child has no parent";
    test::CheckTree(exploration.root());
}

TEST(ElementRoot, AnotherExplorationBeginsWithBothFlagsOff) {
    const auto host = HostWith("=SUM(INDIRECT(B1),1)");
    Exploration exploration(*host, true);
    EXPECT_TRUE(exploration.options().bMaybeImprecise);
    EXPECT_TRUE(exploration.options().bContainsIndirect);
    host->model().activeSheet->At(1, 1).content.formula = u"=D1";
    ASSERT_TRUE(exploration.root().bInitRoot(exploration.options()));
    EXPECT_FALSE(exploration.options().bMaybeImprecise);
    EXPECT_FALSE(exploration.options().bContainsIndirect);
}

// ---- A failure ----

TEST(ElementFailure, EndsTheExplorationAndIsReported) {
    const auto host = HostWith("=B1+C1");
    host->FailMember("Application.Evaluate", 2);
    const Exploration exploration(*host, false);
    EXPECT_FALSE(exploration.ok);
    ASSERT_EQ(exploration.log().size(), 1U);
    EXPECT_EQ(exploration.log()[0], "CElement.bInitRoot: Application.Evaluate failed (bInitRoot)");
    EXPECT_EQ(exploration.root().colSubs().size(), 1U) << "the tree is left as far as it got";
}

TEST(ElementFailure, AnExplorationThatSucceedsReportsNothing) {
    const auto host = HostWith("=B1+NoName+NOFUNCTION(C1)");
    const Exploration exploration(*host, true);
    EXPECT_TRUE(exploration.ok);
    EXPECT_TRUE(exploration.log().empty());
}

// Every place where a quote can stay open.
TEST(ElementFailure, AnOpenQuoteAnywhereEndsTheExploration) {
    for (const char* formula :
         {"=\"abc", "='abc", "=A1+\"abc", "=SUM(A1,\"abc)", "=SUM('abc)", "=INDEX(\"a",
          "=IF(A1,\"b,c)", "=CHOOSE(1,'b)", "=A1:INDEX(\"b)", "=T(\"", "=\"", "='", "=\"a\"\"",
          "=INDIRECT(\"B1)", "=OFFSET('a,1)", "={\"a}", "=A1'b"}) {
        for (const bool functions : {false, true}) {
            const auto host = HostWith(formula);
            const Exploration exploration(*host, functions);
            EXPECT_FALSE(exploration.ok) << formula;
            ASSERT_EQ(exploration.log().size(), 1U) << formula;
            EXPECT_EQ(exploration.log()[0].rfind("CElement.bInitRoot: ", 0), 0U)
                << exploration.log()[0];
        }
    }
}

TEST(ElementFailure, AnOpenQuoteInANamesDefinitionEndsItToo) {
    const auto host = HostOf(R"({"workbooks":[{"names":{"Bad":"=1+\"open"},
        "sheets":[{"name":"S","cells":{"A1":{"formula":"=Bad"}}}]}]})");
    const Exploration exploration(*host, true);
    EXPECT_FALSE(exploration.ok);
}

// ---- Positions ----

TEST(ElementPositions, ComposeFromTheRootDown) {
    const auto host = HostWith("=A1+B2");
    const Exploration exploration(*host, false);
    const CElement& root = exploration.root();
    EXPECT_EQ(root.lRootPosition(), 0);
    EXPECT_EQ(root.lLength(), 6);
    ASSERT_EQ(root.colSubs().size(), 2U);
    EXPECT_EQ(root.colSubs()[0]->lRootPosition(), 2);
    EXPECT_EQ(root.colSubs()[0]->lLength(), 2);
    EXPECT_EQ(root.colSubs()[1]->lRootPosition(), 5);
}

TEST(ElementPositions, DeeperPartsAddTheirOffsetToTheirParentsStart) {
    const auto host = HostWith("=1+MAX(B1,MIN(C1,D1))");
    const Exploration exploration(*host, true);
    const CElement& max = *exploration.root().colSubs()[0];
    EXPECT_EQ(max.lRootPosition(), 4);
    EXPECT_EQ(max.lLength(), 18);
    const CElement& min = *max.colSubs()[1];
    EXPECT_EQ(min.lPos(), 8);
    EXPECT_EQ(min.lRootPosition(), 11);
    EXPECT_EQ(min.colSubs()[1]->lPos(), 8);
    EXPECT_EQ(min.colSubs()[1]->lRootPosition(), 18);
    EXPECT_EQ(min.colSubs()[1]->lGetRootPosition(), 18);
}

TEST(ElementPositions, WhatComesFromANamesDefinitionHasTheNamesPlace) {
    const auto host = HostOf(R"j({"workbooks":[{"names":{"Deep":"=MAX(S!B1,MIN(S!C1,S!D1))"},
        "sheets":[{"name":"S","cells":{"A1":{"formula":"=10*Deep+B1"}}}]}]})j");
    const Exploration exploration(*host, true);
    const CElement* part = exploration.root().colSubs()[0].get();
    for (int level = 0; level < 4; ++level) {
        EXPECT_EQ(part->lRootPosition(), 5) << level;
        EXPECT_EQ(part->lLength(), 4) << level;
        EXPECT_EQ(part->lPos(), level == 0 ? 5 : 0) << level;
        if (level < 3) {
            ASSERT_FALSE(part->colSubs().empty()) << level;
            part = part->colSubs().back().get();
        }
    }
    EXPECT_EQ(exploration.root().colSubs()[1]->lRootPosition(), 10);
}

TEST(ElementPositions, TakingThePositionAwayReachesEverythingBelow) {
    const auto host = HostWith("=MAX(B1,MIN(C1,D1))");
    Exploration exploration(*host, true);
    CElement& max = *exploration.root().colSubs()[0];
    max.DeletePosition();
    exploration.root().InitRootPositions();
    EXPECT_EQ(max.lPos(), 0);
    EXPECT_EQ(max.colSubs()[1]->colSubs()[0]->lPos(), 0);
    EXPECT_EQ(max.colSubs()[1]->colSubs()[0]->lRootPosition(), 0);
    EXPECT_EQ(max.colSubs()[1]->colSubs()[0]->lLength(), 19) << "the root's own length";
}

TEST(ElementPositions, CountUtf16Units) {
    const auto host = HostWith("=\"\xF0\x9F\x98\x80\"&B1");
    const Exploration exploration(*host, false);
    EXPECT_EQ(exploration.root().lLength(), 8);
    EXPECT_EQ(exploration.root().colSubs()[0]->lRootPosition(), 7);
}

// ---- Release ----

TEST(ElementRelease, LeavesEveryFormerChildWithoutAParent) {
    const auto host = HostWith("=MAX(B1,MIN(C1,D1))");
    Exploration exploration(*host, true);
    const CElementPtr max = exploration.root().colSubs()[0];
    const CElementPtr first = max->colSubs()[0];
    const CElementPtr min = max->colSubs()[1];
    const CElementPtr last = min->colSubs()[1];
    EXPECT_FALSE(last->bIsRoot());
    exploration.root().DeleteSubs();
    for (const auto& element : {max, first, min, last}) {
        EXPECT_TRUE(element->bIsRoot());
        EXPECT_TRUE(element->colSubs().empty());
    }
    EXPECT_TRUE(exploration.root().colSubs().empty());
}

// A host whose ranges note their address when they go.
class NotingRange : public scripted::ScriptedRange {
public:
    NotingRange(scripted::ScriptedHost& host, const scripted::Place& place,
                std::vector<std::string>& gone)
        : ScriptedRange(host, place),
          address_(ToUtf8(AreaText(place.area, false, false))),
          gone_(gone) {}
    NotingRange(const NotingRange&) = delete;
    NotingRange& operator=(const NotingRange&) = delete;
    ~NotingRange() override { gone_.push_back(address_); }

private:
    std::string address_;
    std::vector<std::string>& gone_;
};

class NotingApplication : public scripted::ScriptedApplication {
public:
    NotingApplication(scripted::ScriptedHost& host, std::vector<std::string>& gone)
        : ScriptedApplication(host), host_(host), gone_(gone) {}
    Value Evaluate(const std::u16string& expression) override {
        const auto place = scripted::FindPlace(host_.model(), expression.substr(1));
        if (!place) return ScriptedApplication::Evaluate(expression);
        return Value(ObjectPtr(std::make_shared<NotingRange>(host_, *place, gone_)));
    }

private:
    scripted::ScriptedHost& host_;
    std::vector<std::string>& gone_;
};

TEST(ElementRelease, LetsTheLastChildGoFirst) {
    class NoReporter : public ErrorReporter {
    public:
        void Report(const char16_t*, const char16_t*, const Error&, bool) override {}
    };
    const auto host = HostWith("=B1+MAX(C1,D1)+E1");
    std::vector<std::string> gone;
    {
        NoReporter reporter;
        NotingApplication application(*host, gone);
        CElementOptions options(application, reporter);
        options.bEveryFunction = true;
        options.rngRootCell = application.ActiveCell();
        CElement root;
        ASSERT_TRUE(root.bInitRoot(options));
        gone.clear();  // those that were only evaluated
        root.DeleteSubs();
        EXPECT_EQ(gone, (std::vector<std::string>{"E1", "D1", "C1", "B1"}));
    }
    EXPECT_EQ(host->LiveHandles(), 0);
}

TEST(ElementRelease, HappensWhenTheRootGoes) {
    const auto host = HostWith("=MAX(B1,C1)");
    std::weak_ptr<CElement> max;
    std::weak_ptr<CElement> last;
    {
        const Exploration exploration(*host, true);
        max = exploration.root().colSubs()[0];
        last = max.lock()->colSubs()[1];
        EXPECT_FALSE(last.expired());
    }
    EXPECT_TRUE(max.expired());
    EXPECT_TRUE(last.expired());
    EXPECT_EQ(host->LiveHandles(), 0);
}

TEST(ElementTexts, TheLabelCanBeChangedAndTheKeyIsTheWindowsOwn) {
    const auto host = HostWith("=B1+C1");
    Exploration exploration(*host, true);
    EXPECT_TRUE(exploration.root().sKey.empty());
    exploration.root().set_sName(u"changed");
    EXPECT_EQ(exploration.root().sName(), u"changed");
}

// ---- Depth and size ----

std::string Nested(const std::string& call, int depth, const std::string& inner) {
    std::string formula = "=";
    for (int k = 0; k < depth; ++k) formula += call;
    return formula + inner + std::string(static_cast<std::size_t>(depth), ')');
}

TEST(ElementDepth, FourHundredLevelsAreAllowedAndOneMoreIsAFailure) {
    // The innermost call and its argument collapse, so the argument is level 400.
    const auto host = HostWith(Nested("A(", 399, "B1"));
    const Exploration deepest(*host, true);
    EXPECT_TRUE(deepest.ok);
    const auto tooDeep = HostWith(Nested("A(", 400, "B1"));
    const Exploration failed(*tooDeep, true);
    EXPECT_FALSE(failed.ok);
    ASSERT_EQ(failed.log().size(), 1U);
    EXPECT_NE(failed.log()[0].find("nested too deeply"), std::string::npos) << failed.log()[0];
}

TEST(ElementDepth, FormulasAsLongAsTheHostTakesDoNotEndTheProcess) {
    constexpr std::size_t kLongest = 8192;
    for (const char* piece :
         {"(",    "SUM(",      "INDEX(", "T(",    "OFFSET(", "INDIRECT(", "IF(", "CHOOSE(1,",
          "A1:(", "A1:INDEX(", "-",      "A1+",   "A1,",     "\"\"",      "''",  "#N/A/",
          "{",    ":",         ")",      "IF(1,", "INDEX (", "IN DEX("}) {
        std::string formula = "=";
        while (formula.size() < kLongest) formula += piece;
        formula.resize(kLongest);
        for (const bool functions : {false, true}) {
            const auto host = HostWith(formula);
            const Exploration exploration(*host, functions);
            EXPECT_EQ(exploration.ok, exploration.log().empty()) << piece;
            EXPECT_EQ(exploration.root().sFormula().size(), kLongest) << piece;
        }
    }
}

TEST(ElementDepth, AChainOfTenThousandNamesDoesNotEndTheProcess) {
    for (const std::string tail : {"", "+1"}) {
        std::string names;
        for (int k = 0; k < 10'000; ++k) {
            names +=
                "\"n" + std::to_string(k) + "x\":\"=n" + std::to_string(k + 1) + "x" + tail + "\",";
        }
        const auto host = HostOf(R"({"workbooks":[{"names":{)" + names + R"("n10000x":"=S!B1"},
            "sheets":[{"name":"S","cells":{"A1":{"formula":"=n0x"},"B1":4}}]}]})");
        const Exploration exploration(*host, true);
        if (tail.empty()) {
            // Each definition is a single name: nothing to take apart.
            EXPECT_TRUE(exploration.ok);
            EXPECT_EQ(exploration.text(),
                      "A1 | =n0x @0 | S<A1> | \n  n0x | n0x @2 | S!B1<B1> | 4\n");
        } else {
            EXPECT_FALSE(exploration.ok);
            EXPECT_EQ(exploration.log().size(), 1U);
        }
    }
}

TEST(ElementDepth, NamesThatUseEachOtherTwiceEndInAFailureNotInAllMemory) {
    std::string names;
    for (int k = 0; k < 40; ++k) {
        const std::string next = "n" + std::to_string(k + 1) + "x";
        names += "\"n" + std::to_string(k) + "x\":\"=" + next + "+" + next + "\",";
    }
    const auto host = HostOf(R"({"workbooks":[{"names":{)" + names + R"("n40x":"=S!B1"},
        "sheets":[{"name":"S","cells":{"A1":{"formula":"=n0x"}}}]}]})");
    const Exploration exploration(*host, true);
    EXPECT_FALSE(exploration.ok);
    EXPECT_EQ(exploration.log().size(), 1U);
}

}  // namespace
}  // namespace korvane
