// The scripted host's workbooks, sheets and names.
#include <gtest/gtest.h>

#include "base/text.h"
#include "host/name.h"
#include "host/workbook.h"
#include "host/worksheet.h"
#include "support/exploring.h"

namespace korvane::scripted {
namespace {

class ScriptedBooksTest : public testing::Test {
protected:
    ScriptedBooksTest()
        : host_(test::HostOf(R"({"workbooks":[{"name":"B.xls","names":{"Rate":"=S!$B$2"},
            "sheets":[{"name":"S"},{"name":"My Sheet","protected":true,
                "names":{"Own":"='My Sheet'!$A$1"}}]},
            {"name":"P.xls","sheets":[{"name":"T"}]}]})")) {}

    host::WorksheetPtr SheetAt(const char16_t* reference) {
        return host_->RangeAt(*FindPlace(host_->model(), reference))->Worksheet();
    }

    std::unique_ptr<ScriptedHost> host_;
};

TEST_F(ScriptedBooksTest, SheetsKnowTheirNameTheirBookAndTheirProtection) {
    EXPECT_EQ(SheetAt(u"A1")->Name(), u"S");
    EXPECT_EQ(SheetAt(u"A1")->Parent()->Name(), u"B.xls");
    EXPECT_EQ(SheetAt(u"[P.xls]T!A1")->Parent()->Name(), u"P.xls");
    EXPECT_FALSE(SheetAt(u"A1")->ProtectContents());
    EXPECT_TRUE(SheetAt(u"'My Sheet'!A1")->ProtectContents());
}

TEST_F(ScriptedBooksTest, NamesAreFoundIgnoringCase) {
    const auto name = SheetAt(u"A1")->Parent()->Names()->Item(u"RATE");
    ASSERT_TRUE(name);
    EXPECT_EQ(name->Name_(), u"Rate");
    EXPECT_EQ(name->RefersTo(), u"=S!$B$2");
    EXPECT_EQ(SheetAt(u"A1")->Names()->Item(u"Rate"), nullptr) << "the workbook's, not the sheet's";
    EXPECT_EQ(SheetAt(u"A1")->Parent()->Names()->Item(u"Own"), nullptr);
    EXPECT_EQ(SheetAt(u"A1")->Parent()->Names()->Item(u""), nullptr);
}

TEST_F(ScriptedBooksTest, ASheetsOwnNameIsFoundWithAndWithoutItsPrefix) {
    const auto names = SheetAt(u"'My Sheet'!A1")->Names();
    for (const auto* text : {u"Own", u"own", u"'My Sheet'!Own", u"'my sheet'!OWN"}) {
        const auto name = names->Item(text);
        ASSERT_TRUE(name) << ToUtf8(text);
        EXPECT_EQ(name->Name_(), u"'My Sheet'!Own") << "it carries the prefix";
    }
    EXPECT_EQ(names->Item(u"S!Own"), nullptr);
    EXPECT_EQ(names->Item(u"'open"), nullptr);
}

TEST_F(ScriptedBooksTest, ActivatingBringsASheetToTheFront) {
    SheetAt(u"'My Sheet'!A1")->Activate();
    EXPECT_EQ(host_->model().activeSheet->name, u"My Sheet");
    SheetAt(u"[P.xls]T!A1")->Parent()->Activate();
    EXPECT_EQ(host_->model().activeBook->name, u"P.xls");
    EXPECT_EQ(host_->model().activeSheet->name, u"T");
    // What is in front already stays as it is, its active cell too.
    host_->model().activeCell = Area{5, 5, 5, 5};
    SheetAt(u"[P.xls]T!A1")->Activate();
    SheetAt(u"[P.xls]T!A1")->Parent()->Activate();
    EXPECT_TRUE(host_->model().activeCell == (Area{5, 5, 5, 5}));
}

}  // namespace
}  // namespace korvane::scripted
