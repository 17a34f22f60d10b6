#include "bindings/scripted/model.h"

#include <gtest/gtest.h>

#include "base/text.h"
#include "support/exploring.h"

namespace korvane::scripted {
namespace {

class ModelTest : public testing::Test {
protected:
    ModelTest()
        : host_(test::HostOf(R"({"workbooks":[
              {"name":"B.xls","sheets":[{"name":"S"},{"name":"My Sheet"},{"name":"It's"}]},
              {"name":"Other.xls","sheets":[{"name":"Prices"},{"name":"S"}]}]})")),
          model_(host_->model()) {}

    // "book/sheet/area" of the place that a text means, "" for none.
    std::string PlaceOf(const char16_t* reference) const {
        const auto place = FindPlace(model_, reference);
        if (!place) return "";
        return ToUtf8(place->book->name) + "/" + ToUtf8(place->sheet->name) + "/" +
               ToUtf8(AreaText(place->area, false, false));
    }

    std::unique_ptr<ScriptedHost> host_;
    Model& model_;
};

TEST_F(ModelTest, AReferenceWithoutSheetMeansTheActiveOne) {
    EXPECT_EQ(PlaceOf(u"A1"), "B.xls/S/A1");
    EXPECT_EQ(PlaceOf(u"$C$3:a1"), "B.xls/S/A1:C3");
    model_.activeSheet = model_.activeBook->FindSheet(u"my sheet");
    EXPECT_EQ(PlaceOf(u"A:A"), "B.xls/My Sheet/A:A");
}

TEST_F(ModelTest, SheetsAndBooksAreFoundIgnoringCase) {
    EXPECT_EQ(PlaceOf(u"s!B2"), "B.xls/S/B2");
    EXPECT_EQ(PlaceOf(u"'MY SHEET'!1:1"), "B.xls/My Sheet/1:1");
    EXPECT_EQ(PlaceOf(u"'It''s'!A1"), "B.xls/It's/A1");
    EXPECT_EQ(PlaceOf(u"[other.XLS]prices!A1"), "Other.xls/Prices/A1");
    EXPECT_EQ(PlaceOf(u"'[Other.xls]S'!A1"), "Other.xls/S/A1");
}

TEST_F(ModelTest, WhatLeadsNowhereIsNoPlace) {
    for (const auto* text :
         {u"", u"A", u"Nope!A1", u"[Nope.xls]S!A1", u"[B.xls]!A1", u"S!Rate", u"A0", u"A1048577",
          u"XFE1", u"'S!A1", u"S'!A1", u"A1:", u":A1", u"A1:B2:C3"}) {
        EXPECT_EQ(PlaceOf(text), "") << ToUtf8(text);
    }
}

TEST_F(ModelTest, AClosedBookIsNotFound) {
    host_->CloseBook(u"Other.xls");
    EXPECT_EQ(PlaceOf(u"[Other.xls]Prices!A1"), "");
    EXPECT_EQ(model_.FindBook(u"Other.xls"), nullptr);
}

TEST_F(ModelTest, CellsAreKeptByRowAndColumn) {
    Sheet& sheet = *model_.activeSheet;
    EXPECT_EQ(sheet.Find(1, 2), nullptr);
    sheet.At(1, 2).content.value = Value(7);
    ASSERT_NE(sheet.Find(1, 2), nullptr);
    EXPECT_EQ(*sheet.Find(1, 2)->content.value.Number(), 7);
    EXPECT_EQ(sheet.Find(2, 1), nullptr) << "row and column must not be mixed up";
}

}  // namespace
}  // namespace korvane::scripted
