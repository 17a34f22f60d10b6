// What the user copies by other ways than the clipboard has his own fills: by the
// mouse, with a sheet, or because new cells take over the look of their neighbours.
#include <gtest/gtest.h>

#include <sstream>
#include <thread>

#include "tints_in_office.h"

namespace korvane::test {
namespace {

class CalcTintCopies : public CalcTints {
protected:
    struct Place {
        int left = -1;
        int top = 0;
        int width = 0;
        int height = 0;
    };
    Place PlaceOf(const std::string& what) {
        Place place;
        std::istringstream(Ask(what)) >> place.left >> place.top >> place.width >> place.height;
        EXPECT_GE(place.left, 0) << what;
        return place;
    }
    // From one point to another, slowly enough for the office to see a drag.
    void Drag(int x, int y, int toX, int toY, const std::string& with = {}) {
        const auto at = [](int left, int top) {
            return "mousemove " + std::to_string(left) + " " + std::to_string(top) + " sleep 0.1 ";
        };
        const std::string down = with.empty() ? "" : "keydown " + with + " ";
        const std::string up = with.empty() ? "" : " keyup " + with;
        desktop_->Do(at(x, y) + down + "mousedown 1 sleep 0.1 " + at(x + 4, y + 4) +
                     at((x + toX) / 2, (y + toY) / 2) + at(toX, toY) + at(toX + 1, toY) +
                     "mouseup 1" + up);
    }
    void DragFillHandle(const std::string& from, const std::string& to) {
        const Place corner = PlaceOf("cellplace " + from);
        const Place end = PlaceOf("cellplace " + to);
        Drag(corner.left + corner.width, corner.top + corner.height, end.left + end.width / 2,
             end.top + end.height / 2);
    }
    // Asks until the cells look so.
    void ExpectLook(const std::string& cells, const std::string& wanted) {
        EXPECT_EQ(office_->AskUntil("look " + cells,
                                    [&](const std::string& look) { return look == wanted; }),
                  wanted)
            << cells;
    }
    void ExpectFormula(const std::string& cell, const std::string& wanted) {
        EXPECT_EQ(office_->AskUntil("formula " + cell,
                                    [&](const std::string& text) { return text == wanted; }),
                  wanted)
            << cell;
    }
};

TEST_F(CalcTintCopies, TheFillHandleLeavesTheTintBehind) {
    Make("book.ods");
    ASSERT_EQ(Ask("tint A1:A2"), "done");
    ASSERT_EQ(Ask("select A2"), "done");
    DragFillHandle("A2", "A6");
    ExpectFormula("A4", "=A3+1");
    ExpectLook("A3:A6", kPlain);
    ExpectLook("A1:A2", kTinted);
    ASSERT_EQ(Ask("dispatch .uno:Undo"), "done");
    ExpectFormula("A4", "");
    ExpectLook("A3:A6", kPlain);
    ASSERT_EQ(Ask("dispatch .uno:Redo"), "done");
    ExpectFormula("A4", "=A3+1");
    ExpectLook("A3:A6", kPlain);
    ASSERT_EQ(Ask("untint A1:A2"), "done");
    ExpectLook("A1:A6", kPlain);
    // The test can tell: without a guard the tint goes with the drag.
    ASSERT_EQ(Ask("unguard"), "done");
    ASSERT_EQ(Ask("tint A2"), "done");
    ASSERT_EQ(Ask("select A2"), "done");
    DragFillHandle("A2", "A6");
    ExpectLook("A3:A4", kTinted);
}

TEST_F(CalcTintCopies, DraggedCellsLeaveTheTintBehind) {
    Make("book.ods");
    ASSERT_EQ(Ask("select A1:A2"), "done");
    ASSERT_EQ(Ask("tint A1:A2"), "done");
    const Place from = PlaceOf("cellplace A1");
    const Place to = PlaceOf("cellplace D1");
    Drag(from.left + from.width / 2, from.top + from.height / 2, to.left + to.width / 2,
         to.top + to.height / 2);
    ExpectFormula("D2", "=D1+1");
    ExpectLook("D1:D2", kPlain);
    // The next part that is shown is tinted whatever became of the drag.
    ASSERT_EQ(Ask("tint B1:B2"), "done");
    ExpectLook("B1:B2", kTinted);
    ASSERT_EQ(Ask("untint B1:B2"), "done");
    // What is where they were is the user's own by now.
    ASSERT_EQ(Ask("colour A1:A2"), "done");
    ASSERT_EQ(Ask("untint A1:A2"), "done");
    ExpectLook("A1:A2", "1193046 own");
    ExpectLook("B1:D2", kPlain);
}

TEST_F(CalcTintCopies, AClickElsewhereChangesNothing) {
    Make("book.ods");
    ASSERT_EQ(Ask("select A1:A2"), "done");
    ASSERT_EQ(Ask("tint A1:A2"), "done");
    const Place place = PlaceOf("cellplace C4");
    for (int click = 0; click < 2; ++click) {
        desktop_->Do("mousemove " + std::to_string(place.left + 5) + " " +
                     std::to_string(place.top + 5) + " click 1");
        ExpectLook("A1:A2", kTinted);
    }
    EXPECT_EQ(Ask("state"), "unmodified 2 1");
}

TEST_F(CalcTintCopies, NewRowsAndColumnsTakeNoTintOver) {
    Make("book.ods");
    ASSERT_EQ(Ask("tint A1:A2"), "done");
    for (const char* command : {".uno:InsertRowsAfter", ".uno:InsertColumnsAfter"}) {
        ASSERT_EQ(Ask("select A2"), "done");
        ASSERT_EQ(Ask("dispatch " + std::string(command)), "done");
        ExpectLook("A1:A2", kTinted);
        ExpectLook("A3:C3", kPlain);
        ExpectLook("B1:B3", kPlain);
    }
    ASSERT_EQ(Ask("untint A1:A2"), "done");
    ExpectLook("A1:C4", kPlain);
    // The test can tell: without a guard the new row is tinted.
    ASSERT_EQ(Ask("unguard"), "done");
    ASSERT_EQ(Ask("tint A1:A2"), "done");
    ASSERT_EQ(Ask("select A2"), "done");
    ASSERT_EQ(Ask("dispatch .uno:InsertRowsAfter"), "done");
    ExpectLook("A3", kTinted);
}

TEST_F(CalcTintCopies, SortedCellsLeaveTheTintInItsPlace) {
    Make("book.ods");
    ASSERT_EQ(Ask("type A2 3"), "done");
    ASSERT_EQ(Ask("type A3 1"), "done");
    ASSERT_EQ(Ask("tint A1"), "done");
    ASSERT_EQ(Ask("select A1:A3"), "done");
    ASSERT_EQ(Ask("dispatch .uno:SortAscending"), "done");
    ExpectFormula("A1", "1");
    ExpectFormula("A3", "5");
    ExpectLook("A1", kTinted);
    ExpectLook("A2:A3", kPlain);
    ASSERT_EQ(Ask("untint A1"), "done");
    ExpectLook("A1:A3", kPlain);
}

// By an interface that no command is asked for, as a drag of the sheet's tab does.
TEST_F(CalcTintCopies, ACopiedSheetHasNoTint) {
    Make("book.ods");
    ASSERT_EQ(Ask("colour A2"), "done");
    for (const char* cell : {"A1", "A2", "A3"}) {
        ASSERT_EQ(Ask("tint " + std::string(cell)), "done");
    }
    ASSERT_EQ(Ask("copysheet 0 Second"), "done");
    ExpectLook("1.A1", kPlain);
    ExpectLook("1.A2", "1193046 own");
    ExpectLook("1.A3", kPlain);
    ExpectLook("0.A1:A3", kTinted);
    ASSERT_EQ(Ask("dispatch .uno:Undo"), "done");
    ASSERT_EQ(Ask("dispatch .uno:Redo"), "done");
    ExpectLook("1.A1", kPlain);
    ExpectLook("1.A2", "1193046 own");
    ASSERT_EQ(Ask("untint A1"), "done");
    ASSERT_EQ(Ask("untint A2"), "done");
    ExpectLook("0.A1", kPlain);
    ExpectLook("0.A2", "1193046 own");
}

TEST_F(CalcTintCopies, ASheetThatComesBackHasNoTint) {
    Make("book.ods");
    ASSERT_EQ(Ask("copysheet 0 Second"), "done");
    ASSERT_EQ(Ask("tint 1.A1:A3"), "done");
    ASSERT_EQ(Ask("removesheet Second"), "done");
    ASSERT_EQ(Ask("dispatch .uno:Undo"), "done");
    ExpectLook("1.A1:A3", kPlain);
}

TEST_F(CalcTintCopies, ADraggedTabCopiesNoTint) {
    Make("book.ods");
    ASSERT_EQ(Ask("tint A1:A3"), "done");
    const Place tab = PlaceOf("tabplace Sheet1");
    Drag(tab.left + tab.width / 2, tab.top + tab.height / 2, tab.left + tab.width + 30,
         tab.top + tab.height / 2, "ctrl");
    const auto isCopied = [](const std::string& state) { return state.ends_with(" 2"); };
    EXPECT_TRUE(isCopied(office_->AskUntil("state", isCopied)));
    const auto oneIsTinted = [this](const std::string&) {
        return (Ask("look 0.A1:A3") == kTinted) != (Ask("look 1.A1:A3") == kTinted);
    };
    EXPECT_TRUE(oneIsTinted(office_->AskUntil("state", oneIsTinted)));
}

TEST_F(CalcTintCopies, ADialogsWorkTakesNoTintAlong) {
    Make("book.ods");
    ASSERT_EQ(Ask("tint A1:A3"), "done");
    ASSERT_EQ(Ask("select A1"), "done");
    Press("alt+s");  // Sheet, Move or Copy Sheet
    Press("m");
    EXPECT_EQ(office_->AskUntil(
                  "state",
                  [this](const std::string&) { return Holds(ActiveWindow(), "Move/Copy Sheet"); }),
              "unmodified 2 1");
    ExpectLook("A1:A3", kPlain);  // while it is open, and until something is shown again
    Press("Return");
    const auto isCopied = [](const std::string& state) { return state.ends_with(" 2"); };
    EXPECT_TRUE(isCopied(office_->AskUntil("state", isCopied)));
    ExpectLook("0.A1:A3", kPlain);
    ExpectLook("1.A1:A3", kPlain);
    ASSERT_EQ(Ask("tint 0.B1"), "done");
    ExpectLook("0.B1", kTinted);
}

}  // namespace
}  // namespace korvane::test
