#include "bindings/calc/desk/journal_replay.h"

#include <gtest/gtest.h>

#include <com/sun/star/util/XModifiable.hpp>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "bindings/calc/change_journal.h"
#include "bindings/calc/uno_text.h"
#include "workbook.h"

namespace korvane::calc::testing {
namespace {

namespace fs = std::filesystem;

constexpr Fill kTint{0x00CCFF, true};

class JournalReplayTest : public ::testing::Test {
protected:
    JournalReplayTest()
        : book_("replay.fods", FlatText({{"Data",
                                          {{1, 1, "1"},
                                           {1, 2, "=[.A1]+7"},
                                           {1, 3, "{=SUM([.A1:.A3]*2)}"},
                                           {2, 1, "2"},
                                           {2, 2, "text"}}},
                                         {"Locked", {{1, 1, "1"}}, true}})),
          folder_(fs::path(std::getenv("TMPDIR")) / "journals") {
        url_ = ToText(Document()->model()->getURL());
        Document()->modifiable()->setModified(false);
    }
    ~JournalReplayTest() override { fs::remove_all(folder_); }
    DocumentPtr Document() { return book_.application().document(); }
    // A journal of another start of the machine.
    void Leave(const std::vector<JournalLine>& lines) {
        fs::create_directories(folder_);
        std::ofstream out(folder_ / "calc-1.journal", std::ios::binary);
        out << LineText(JournalHead{{1, 1, "another"}});
        for (const auto& line : lines) {
            out << LineText(line);
            const auto* const formula = std::get_if<FormulaLine>(&line);
            if (formula == nullptr || formula->note.shown.empty()) continue;
            out << LineText(ShownLine{formula->number, formula->note.shown});
        }
    }
    FillLine Tinted(long number, const char16_t* sheet, CellBlock block, Fill before) {
        FillLine line{number, {}};
        line.note.url = url_;
        line.note.sheet = sheet;
        line.note.written = kTint;
        line.note.parts = {{block, before}};
        return line;
    }
    FormulaLine Written(long number, sal_Int32 column, sal_Int32 row, const char16_t* before,
                        const char16_t* written, const char16_t* shown = u"") {
        FormulaLine line{number, {}};
        line.note.url = url_;
        line.note.sheet = u"Data";
        line.note.column = column;
        line.note.row = row;
        line.note.before = before;
        line.note.beforeIsFormula = line.note.before.find(u'=') != std::u16string::npos;
        line.note.written = written;
        line.note.shown = shown;
        return line;
    }
    bool PutBack() { return PutBackWhatDied(Document(), DeadJournals(folder_)); }
    Fill FillAt(sal_Int32 column, sal_Int32 row) {
        return FillsOf(CellsAt(*Document(), CellBlock(0, column, row, column, row)))
            .parts.front()
            .fill;
    }
    std::u16string FormulaAt(sal_Int32 column, sal_Int32 row) {
        return ToText(Document()->Sheet(0)->getCellByPosition(column, row)->getFormula());
    }
    bool IsModified() { return Document()->modifiable()->isModified(); }

    OpenBook book_;
    fs::path folder_;
    std::u16string url_;
};

TEST_F(JournalReplayTest, WhatStillHoldsTheTintGetsItsFillBack) {
    const Fill own{0x123456, true};
    WriteFill(*Document(), CellBlock(0, 0, 0, 1, 1), kTint);
    WriteFill(*Document(), CellBlock(0, 1, 1, 1, 1), own);
    WriteFill(*Document(), CellBlock(0, 3, 3, 3, 3), kTint);
    ASSERT_FALSE(IsModified());
    Leave({Tinted(1, u"Data", CellBlock(9, 0, 0, 0, 1), {0xABCDEF, true}),
           Tinted(2, u"data", CellBlock(0, 1, 0, 1, 1), {})});
    EXPECT_TRUE(PutBack());
    EXPECT_EQ(FillAt(0, 0), (Fill{0xABCDEF, true}));
    EXPECT_EQ(FillAt(0, 1), (Fill{0xABCDEF, true}));
    EXPECT_EQ(FillAt(1, 0), Fill{});
    EXPECT_EQ(FillAt(1, 1), own);
    EXPECT_EQ(FillAt(3, 3), kTint);  // nothing is noted of it
    EXPECT_TRUE(IsModified());
    EXPECT_EQ(Document()->undoManager()->getAllUndoActionTitles().getLength(), 0);
    EXPECT_TRUE(fs::is_empty(folder_));
}

TEST_F(JournalReplayTest, WhatStillHoldsTheFormulaGetsItsOwnBack) {
    Leave({Written(1, 1, 0, u"=A1*3", u"=A1+7"),
           Written(2, 2, 0, u"{=SUM(A1:A2)}", u"=0", u"{=SUM(A1:A3*2)}"),
           Written(3, 1, 1, u"before", u"=1", u"text")});
    EXPECT_TRUE(PutBack());
    EXPECT_EQ(FormulaAt(1, 0), u"=A1*3");
    EXPECT_EQ(FormulaAt(2, 0), u"{=SUM(A1:A2)}");
    EXPECT_EQ(FormulaAt(1, 1), u"before");
    EXPECT_TRUE(IsModified());
    EXPECT_EQ(Document()->undoManager()->getAllUndoActionTitles().getLength(), 0);
}

TEST_F(JournalReplayTest, AllElseIsLeftAlone) {
    const std::string before = book_.Snapshot();
    auto other = Tinted(8, u"Data", CellBlock(0, 0, 0, 0, 0), {});
    other.note.url = u"file:///other.ods";
    Leave({Tinted(1, u"Data", CellBlock(0, 0, 0, 5, 5), {0xABCDEF, true}),
           Tinted(2, u"Gone", CellBlock(0, 0, 0, 5, 5), {}),
           Tinted(3, u"Locked", CellBlock(1, 0, 0, 0, 0), {}),
           Tinted(4, u"Data", CellBlock(0, 5, 5, 1, 1), {}),
           Tinted(5, u"Data", CellBlock(0, 0, 0, 16'000'000, 16'000'000), {}),
           Written(6, 1, 0, u"=A1*3", u"=A1+8", u"=A1+9"),
           Written(7, 16'000'000, 0, u"=A1*3", u"=A1+8"), other});
    EXPECT_FALSE(PutBack());
    EXPECT_EQ(Difference(before, book_.Snapshot()), "");
    EXPECT_FALSE(IsModified());
    // The other document's note waits for it.
    EXPECT_EQ(DeadJournals(folder_).Of(url_).size(), 0u);
    EXPECT_EQ(DeadJournals(folder_).Of(u"file:///other.ods").size(), 1u);
}

}  // namespace
}  // namespace korvane::calc::testing
