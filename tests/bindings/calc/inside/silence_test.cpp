// What is written for a moment leaves nothing in the undo and redo lists.
#include "bindings/calc/silence.h"

#include <gtest/gtest.h>

#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/document/XUndoManager.hpp>
#include <com/sun/star/table/XCell.hpp>

#include "apps/report/exploration.h"
#include "base/error.h"
#include "base/text.h"
#include "bindings/calc/uno_text.h"
#include "excel_file.h"
#include "workbook.h"

namespace korvane::calc::testing {
namespace {

namespace css = com::sun::star;
using css::uno::Reference;

// A conditional format reads the cells of column C: it asks for a repaint in the
// middle of every write into them. The view shows the first sheet.
std::string DataBook() {
    const std::vector<TestSheet::Cell> cells = {
        {1, 1, "1"},
        {1, 3, "=IF([.A1]>0;SUM([.A1:.A3])*2;INDEX([.A1:.A3];2))"},
        {1, 4, "=SUM([.A1:.A3])*2"},
        {2, 1, "2"},
        {2, 3, "{=SUM([.A1:.A3]*[.A1:.A3])}"},
        {3, 1, "3"},
        {3, 3, "=[.A1]=1"}};
    std::string text = FlatText({{"Data", cells}, {"Locked", cells, true}});
    text.insert(
        text.find("</table:table>"),
        "<calcext:conditional-formats xmlns:calcext=\"urn:org:documentfoundation:names:"
        "experimental:calc:xmlns:calcext:1.0\"><calcext:conditional-format "
        "calcext:target-range-address=\"Data.B1:Data.E3\"><calcext:condition "
        "calcext:apply-style-name=\"Default\" calcext:value=\"formula-is([.$C1]&lt;&gt;0)\" "
        "calcext:base-cell-address=\"Data.B1\"/></calcext:conditional-format>"
        "</calcext:conditional-formats>");
    return text;
}

Reference<css::document::XUndoManager> UndoManager(OpenBook& book) {
    return book.application().document()->undoManager();
}

// As the user does: with an undo step.
void Type(OpenBook& book, int column, int row, const char16_t* text) {
    book.application()
        .document()
        ->Sheet(0)
        ->getCellByPosition(column, row)
        ->setFormula(ToOUString(text));
}

// A list with steps to undo and one to redo.
void Work(OpenBook& book) {
    Type(book, 6, 0, u"typed");
    Type(book, 6, 1, u"and taken back");
    UndoManager(book)->undo();
    book.application().document()->modifiable()->setModified(false);
    ASSERT_GT(UndoManager(book)->getAllUndoActionTitles().getLength(), 0);
    ASSERT_EQ(UndoManager(book)->getAllRedoActionTitles().getLength(), 1);
}

TEST(Silence, ExploringKeepsTheListsThoughAConditionalFormatReadsTheCell) {
    OpenBook book("condition.fods", DataBook());
    Work(book);
    for (const char16_t* place : {u"Data!C1", u"Data!C2", u"Data!C3"}) {
        const auto cell = book.Cell(place);
        cell->Select();
        const std::string before = book.Snapshot();
        for (const bool functions : {true, false}) {
            for (const bool precise : {false, true}) {
                const auto report = Explore(book.application(), cell, functions, precise);
                EXPECT_TRUE(report.ok) << ToUtf8(place);
                EXPECT_EQ(Difference(before, book.Snapshot()), "")
                    << ToUtf8(place) << " functions " << functions << " precise " << precise;
            }
        }
    }
    UndoManager(book)->redo();
    EXPECT_EQ(Shown(book.Cell(u"Data!G2")->Value()), "\"and taken back\"");
    UndoManager(book)->undo();
    UndoManager(book)->undo();
    EXPECT_EQ(Shown(book.Cell(u"Data!G1")->Value()), "empty");
}

// Files of others say heights that the office would not choose itself.
TEST(Silence, RowsKeepTheHeightsOfTheirFile) {
    OpenBook book(
        "heights.xlsx",
        ExcelFile({{"Data", {{"A1", "2"}, {"B1", "=A1+SUM(A1:A2)"}, {"A2", "3"}}, "40"}}));
    book.GoTo(u"Data!B1");
    const std::string before = book.Snapshot();
    ASSERT_NE(before.find("row 1 height 1411"), std::string::npos) << before;
    for (const bool precise : {false, true}) {
        EXPECT_TRUE(Explore(book.application(), book.Cell(u"Data!B1"), precise, true).ok);
        EXPECT_EQ(Difference(before, book.Snapshot()), "");
    }
    const auto fill = book.Cell(u"Data!A2")->Interior();
    const Value plain = fill->ColorIndex();
    fill->SetColorIndex(Value(33));
    fill->SetColorIndex(plain);
    EXPECT_EQ(Difference(before, book.Snapshot()), "");
    // The test can tell: the office itself measures the row.
    css::uno::Any red;
    red <<= sal_Int32{0xFF0000};
    Reference<css::beans::XPropertySet>(
        book.application().document()->Sheet(0)->getCellByPosition(0, 1), css::uno::UNO_QUERY_THROW)
        ->setPropertyValue(ToOUString(u"CellBackColor"), red);
    EXPECT_EQ(book.Snapshot().find("row 1 height 1411"), std::string::npos);
}

TEST(Silence, AFailureLeavesTheListsToo) {
    OpenBook book("failures.fods", DataBook());
    Work(book);
    const auto cell = book.Cell(u"Data!C1");
    const std::string before = book.Snapshot();
    cell->Formula();
    for (const char16_t* text :
         {u"=SUM(1,2", u"=1+", u"=WEBSERVICE(\"http://127.0.0.1:9/\")", u"=[Other.xlsx]S!A1"}) {
        EXPECT_THROW(cell->SetFormula(text), Error) << ToUtf8(text);
        EXPECT_EQ(Difference(before, book.Snapshot()), "") << ToUtf8(text);
    }
    EXPECT_THROW(book.Cell(u"Locked!C1")->SetFormula(u"=1"), Error);
    EXPECT_THROW(book.Cell(u"Locked!A1")->Interior()->SetColorIndex(Value(33)), Error);
    EXPECT_EQ(Difference(before, book.Snapshot()), "");
    // An exception between two writes.
    try {
        Silence silence(*book.application().document());
        silence.BeforeWrite();
        Type(book, 2, 0, u"written for a moment");
        silence.BeforeWrite();
        Type(book, 2, 0, u"=IF(A1>0;SUM(A1:A3)*2;INDEX(A1:A3;2))");
        throw Error(kErrorApplication, u"Something else went wrong");
    } catch (const Error&) {
        EXPECT_EQ(Difference(before, book.Snapshot()), "");
    }
}

TEST(Silence, WithinAStepOfTheUsersNothingIsAddedToIt) {
    OpenBook book("context.fods", DataBook());
    book.GoTo(u"Data!C1");
    const auto undo = UndoManager(book);
    undo->enterUndoContext(ToOUString(u"Own"));
    Type(book, 6, 0, u"typed");
    EXPECT_TRUE(Explore(book.application(), book.Cell(u"Data!C1"), true, true).ok);
    EXPECT_EQ(Shown(book.Evaluate(u"=SUM(A1:A3)*2")), "12");
    Type(book, 6, 1, u"typed too");
    undo->leaveUndoContext();
    EXPECT_EQ(ToUtf8(ToText(undo->getCurrentUndoActionTitle())), "Own");
    undo->undo();
    EXPECT_EQ(Shown(book.Cell(u"Data!G1")->Value()), "empty");
    EXPECT_EQ(Shown(book.Cell(u"Data!G2")->Value()), "empty");
    EXPECT_EQ(Shown(book.Cell(u"Data!C1")->Value()), "12");
    undo->redo();
    EXPECT_EQ(Shown(book.Cell(u"Data!G1")->Value()), "\"typed\"");
    EXPECT_EQ(Shown(book.Cell(u"Data!G2")->Value()), "\"typed too\"");
}

TEST(Silence, AFullListKeepsItsOldestStep) {
    OpenBook book("full.fods", DataBook());
    const sal_Int32 steps = book.application().document()->UndoSteps();
    ASSERT_GT(steps, 0);
    for (sal_Int32 k = 0; k < steps; ++k) Type(book, 6, k, u"typed");
    ASSERT_EQ(UndoManager(book)->getAllUndoActionTitles().getLength(), steps);
    // A cell that no conditional format reads: beside a full list, those are not kept apart.
    book.GoTo(u"Data!D1");
    const std::string before = book.Snapshot();
    EXPECT_TRUE(Explore(book.application(), book.Cell(u"Data!D1"), true, true).ok);
    EXPECT_EQ(Difference(before, book.Snapshot()), "");
    for (sal_Int32 k = 0; k < steps; ++k) UndoManager(book)->undo();
    EXPECT_EQ(Shown(book.Cell(u"Data!G1")->Value()), "empty");
}

TEST(Silence, EndsWithTheLastOneOfSeveral) {
    OpenBook book("nested.fods", DataBook());
    Work(book);
    const std::string before = book.Snapshot();
    const DocumentPtr& document = book.application().document();
    auto outer = book.application().BeginEvaluations();
    ASSERT_TRUE(outer);
    EXPECT_EQ(Shown(book.Evaluate(u"=SUM(A1:A3)*2")), "12");
    {
        Silence silence(*document);
        silence.BeforeWrite();
        Type(book, 2, 0, u"silent");
    }
    EXPECT_TRUE(document->model()->hasControllersLocked());
    {
        Silence silence(*document);
        silence.BeforeWrite();
        Type(book, 2, 0, u"=IF(A1>0;SUM(A1:A3)*2;INDEX(A1:A3;2))");
    }
    outer.reset();
    EXPECT_FALSE(document->model()->hasControllersLocked());
    EXPECT_EQ(Difference(before, book.Snapshot()), "");
    Type(book, 6, 2, u"typed again");
    EXPECT_TRUE(document->modifiable()->isModified());
}

TEST(Silence, OneWriteCanBeTakenBack) {
    OpenBook book("taken.fods", DataBook());
    Type(book, 6, 0, u"typed");
    const std::string before = book.Snapshot();
    {
        Silence silence(*book.application().document());
        silence.BeforeWrite();
        Type(book, 2, 0, u"silent");
        silence.BeforeWrite();
        Type(book, 2, 0, u"=IF(A1>0;SUM(A1:A3)*2;INDEX(A1:A3;2))");
        silence.BeforeWriteToTakeBack();
        Type(book, 2, 0, u"recorded");
        silence.TakeBack();
    }
    EXPECT_EQ(Difference(before, book.Snapshot()), "");
}

}  // namespace
}  // namespace korvane::calc::testing
