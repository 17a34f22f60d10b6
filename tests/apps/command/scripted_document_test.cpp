#include "apps/command/scripted_document.h"

#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "base/text.h"
#include "bindings/scripted/load_document.h"

namespace korvane::command {
namespace {

class ScriptedDocumentTest : public testing::Test {
protected:
    ScriptedDocumentTest()
        : document_(scripted::LoadDocument(nlohmann::json::parse(R"({"workbooks":[
        {"name":"B.xls","names":{"Total":"=S!$A$1","Block":"='My Sheet'!$B$2:$C$3","Rate":"=0.5"},
         "sheets":[{"name":"S","cells":{"A1":{"formula":"=B1","value":1},"B10":{"formula":"=A1"},
                                        "B2":{"formula":"=A2"},"C1":3}},
                   {"name":"My Sheet","names":{"Own":"='My Sheet'!B2"},
                    "cells":{"B2":{"formula":"=A1"}}}]},
        {"name":"P.xls","sheets":[{"name":"Prices","cells":{"A1":{"formula":"=B1"}}}]}],
        "active":{"cell":"C1"},"evaluate":{"=Broken":{"fail":true}}})"))) {}

    std::string CellOf(const char16_t* text) {
        return ToUtf8(document_.Explore(text, true, false).cell);
    }

    ScriptedDocument document_;
};

TEST_F(ScriptedDocumentTest, FindsACellByReferenceNameOrRange) {
    EXPECT_EQ(CellOf(u"A1"), "[B.xls]S!$A$1");
    EXPECT_EQ(CellOf(u"S!A1"), "[B.xls]S!$A$1");
    EXPECT_EQ(CellOf(u"'My Sheet'!B2"), "'[B.xls]My Sheet'!$B$2");
    EXPECT_EQ(CellOf(u"'My Sheet'!C5:B2"), "'[B.xls]My Sheet'!$B$2") << "a range's first cell";
    EXPECT_EQ(CellOf(u"[P.xls]Prices!$A$1"), "[P.xls]Prices!$A$1");
}

TEST_F(ScriptedDocumentTest, FindsANamedCell) {
    EXPECT_EQ(CellOf(u"Total"), "[B.xls]S!$A$1");
    EXPECT_EQ(CellOf(u"total"), "[B.xls]S!$A$1");
    EXPECT_EQ(CellOf(u"Block"), "'[B.xls]My Sheet'!$B$2");
    EXPECT_EQ(CellOf(u"'My Sheet'!Own"), "'[B.xls]My Sheet'!$B$2");
}

TEST_F(ScriptedDocumentTest, ExploresOnTheCellsOwnSheet) {
    const auto report = document_.Explore(u"[P.xls]Prices!A1", true, false);
    ASSERT_TRUE(report.ok);
    EXPECT_EQ(report.tree->children.at(0).range, u"[P.xls]Prices!$B$1");
}

TEST_F(ScriptedDocumentTest, WhatLeadsToNoCellIsNotFound) {
    for (const auto* text :
         {u"", u"Nope", u"Nope!A1", u"Rate", u"A0", u"[Nope.xls]S!A1", u"Broken", u"'S!A1"}) {
        try {
            document_.Explore(text, true, false);
            FAIL() << ToUtf8(text);
        } catch (const CommandError& error) {
            EXPECT_EQ(error.code(), kNotFound) << ToUtf8(text);
            EXPECT_NE(std::string(error.what()).find("'" + ToUtf8(text) + "'"), std::string::npos);
        }
    }
}

TEST_F(ScriptedDocumentTest, ExploresItsActiveCellInTheModesAskedFor) {
    const auto report = document_.ExploreActiveCell(false, true);
    EXPECT_EQ(report.cell, u"[B.xls]S!$C$1");
    EXPECT_EQ(report.formula, u"3");
    EXPECT_FALSE(report.bEveryFunction);
    EXPECT_TRUE(report.bPreciseCalc);
    EXPECT_TRUE(report.ok);
}

TEST_F(ScriptedDocumentTest, ListsFormulaCellsRowByRow) {
    EXPECT_EQ(document_.FormulaCells(),
              (std::vector<std::u16string>{u"[B.xls]S!$A$1", u"[B.xls]S!$B$2", u"[B.xls]S!$B$10",
                                           u"'[B.xls]My Sheet'!$B$2", u"[P.xls]Prices!$A$1"}));
    for (const auto& cell : document_.FormulaCells()) {
        EXPECT_EQ(document_.Explore(cell, true, false).cell, cell);
    }
}

}  // namespace
}  // namespace korvane::command
