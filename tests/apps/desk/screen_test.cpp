// What the user sees of the add-in in Calc, and does with the mouse.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <sstream>
#include <utility>
#include <vector>

#include "addin_in_calc.h"
#include "support/screen_reader.h"

namespace korvane::test {
namespace {

// The explorer's window as a screen reader finds it.
class SeenInCalc : public AddinInCalc {
protected:
    void SetUp() override {
        if (const std::string why = ScreenReader::WhyNot(); !why.empty()) GTEST_SKIP() << why;
        AddinInCalc::SetUp();
    }
    void EndPrograms() override {
        AddinInCalc::EndPrograms();
        reader_.reset();
    }
    std::vector<std::string> Environment() override {
        reader_ = std::make_unique<ScreenReader>(*desktop_);
        return reader_->Environment();
    }
    std::vector<std::string> Lines(const std::string& arguments = {}) {
        std::istringstream in(reader_->Read("korvane-view", "--places " + arguments));
        std::vector<std::string> lines;
        for (std::string line; std::getline(in, line);) lines.push_back(line);
        return lines;
    }
    // Opens every row below the selected root.
    void UnfoldWithKeys() {
        Press("Down");
        Press("asterisk");
        std::string seen;  // until nothing changes any more
        calc_->AskUntil("ready", [&](const std::string&) {
            const std::string before = std::exchange(seen, Rows());
            return before == seen && std::count(seen.begin(), seen.end(), '\n') > 3;
        });
    }
    // The rows that are there, without their places.
    std::string Rows() {
        std::string rows;
        for (const std::string& line : Lines()) {
            const auto at = line.find("table cell: ");
            if (at != std::string::npos && Holds(line, ";")) rows += line.substr(at + 12) + "\n";
        }
        return rows;
    }
    static bool IsRow(const std::string& line, const std::string& element) {
        return Holds(line, "table cell: " + element + ";");
    }
    // The first line that is good, once there is one.
    std::string LineWhere(const std::function<bool(const std::string&)>& good,
                          const std::string& arguments = {}) {
        std::string found;
        calc_->AskUntil("ready", [&](const std::string&) {
            const auto lines = Lines(arguments);
            const auto line = std::find_if(lines.begin(), lines.end(), good);
            if (line != lines.end()) found = *line;
            return !found.empty();
        });
        return found;
    }
    std::string Row(const std::string& element) {
        const std::string row =
            LineWhere([&](const std::string& line) { return IsRow(line, element); });
        EXPECT_FALSE(row.empty()) << element;
        return row;
    }
    // The element of the row that is selected, once it is this one.
    std::string UntilSelected(const std::string& element) {
        const std::string row = LineWhere([&](const std::string& line) {
            return IsRow(line, element) && Holds(line, " * table cell");
        });
        return row.empty() ? "" : element;
    }
    std::string Place(const std::string& what) {
        return LineWhere([&](const std::string& line) { return Holds(line, what); });
    }
    std::string PlaceOfCharacter(int at) {
        const std::string line =
            LineWhere([](const std::string& text) { return text.starts_with("at "); },
                      "--at " + std::to_string(at));
        return line.empty() ? line : line.substr(3);
    }
    void ExpectState(const std::string& wanted) {
        const auto is = [&](const std::string& state) { return Holds(state, wanted); };
        const std::string state = calc_->AskUntil("state", is);
        EXPECT_TRUE(is(state)) << state;
    }
    // How many pixels of the place have a colour.
    int Pixels(const std::string& place, const std::string& colour) {
        int left = 0, top = 0, width = 0, height = 0;
        std::istringstream(place) >> left >> top >> width >> height;
        return Count(colour, "-crop " + std::to_string(width) + "x" + std::to_string(height) + "+" +
                                 std::to_string(left) + "+" + std::to_string(top));
    }
    int PixelsOnDesktop(const std::string& colour) { return Count(colour, ""); }
    // What is known is not always painted yet.
    int UntilPainted(const std::function<int()>& pixels, const std::function<bool(int)>& good) {
        int count = 0;
        calc_->AskUntil("ready", [&](const std::string&) { return good(count = pixels()); });
        return count;
    }
    int Count(const std::string& colour, const std::string& crop) {
        return std::atoi(OutputOf("convert " + desktop_->Picture("screen_test") + " " + crop +
                                  " +repage -fill black +opaque '" + colour +
                                  "' -fill white -opaque '" + colour +
                                  "' -format '%[fx:round(mean*w*h)]' info:")
                             .c_str());
    }
    void Click(const std::string& place) {
        int left = 0, top = 0, width = 0, height = 0;
        std::istringstream(place) >> left >> top >> width >> height;
        ASSERT_GT(width, 0) << place;
        desktop_->Do("mousemove " + std::to_string(left + std::min(width / 2, 20)) + " " +
                     std::to_string(top + height / 2) + " click 1");
    }
    // The runs of the formula's text that have this among their attributes.
    std::string Marked(const std::string& attribute) {
        std::string text, marked;
        for (const std::string& line : Lines()) {
            if (line.starts_with("text: =")) text = line.substr(6);
            if (!line.starts_with("run ") || text.empty() || !Holds(line, attribute)) continue;
            std::size_t from = 0, to = 0;
            std::istringstream(line.substr(4)) >> from >> to;
            marked += text.substr(from, to - from);
        }
        return marked;
    }
    std::string UntilMarked(const std::string& wanted) {
        std::string marked;
        calc_->AskUntil(
            "ready", [&](const std::string&) { return (marked = Marked("underline")) == wanted; });
        return marked;
    }

    std::unique_ptr<ScreenReader> reader_;
};

TEST_F(SeenInCalc, ThePartThatIsClickedIsMarkedAndItsCellsAreTinted) {
    Explore("Loan.B9");
    UnfoldWithKeys();
    // Aside of the cells.
    desktop_->Do("search --onlyvisible --name '^" + std::string(kExplorer) +
                 "$' windowmove --sync 560 440");
    const auto marked = [this] { return Pixels(Place("text: Formula"), "#0000FF"); };
    EXPECT_EQ(UntilPainted(marked, [](int count) { return count == 0; }), 0);
    Click(Row("C2:C4"));
    EXPECT_EQ(UntilMarked("Scenarios!C2:C4"), "Scenarios!C2:C4");
    EXPECT_GT(UntilPainted(marked, [](int count) { return count > 50; }), 50);
    ExpectState("$Scenarios.$C$2:$C$4 ");
    EXPECT_EQ(calc_->AskUntil("fills", [](const auto& fills) { return !fills.empty(); }),
              "Scenarios.C2=52479 Scenarios.C3=52479 Scenarios.C4=52479 ");
    // Seen on the other sheet, once they are not selected any more.
    Click(calc_->Ask("cell A30"));
    ExpectState("$Scenarios.$A$30 ");
    const auto tinted = [this] { return PixelsOnDesktop("#00CCFF"); };
    EXPECT_GT(UntilPainted(tinted, [](int count) { return count > 300; }), 300);
    Click(Row("Budget"));
    EXPECT_EQ(UntilMarked("Budget"), "Budget");
    ExpectState("$Loan.$B$7 ");
    Press("Escape");
    EXPECT_EQ(calc_->Windows(kExplorer, 0), 0);
    ExpectUntouched();
    EXPECT_EQ(UntilPainted(tinted, [](int count) { return count == 0; }), 0);
}

TEST_F(SeenInCalc, AClickIntoTheTextSelectsThePart) {
    Explore("Loan.B9");
    UnfoldWithKeys();
    Click(PlaceOfCharacter(30));  // within Scenarios!C2:C4
    EXPECT_EQ(UntilMarked("Scenarios!C2:C4"), "Scenarios!C2:C4");
    EXPECT_EQ(UntilSelected("C2:C4"), "C2:C4");
    Click(PlaceOfCharacter(12));  // within Budget
    EXPECT_EQ(UntilSelected("Budget"), "Budget");
    ExpectState("$Loan.$B$7 ");
    Press("Escape");
    EXPECT_EQ(calc_->Windows(kExplorer, 0), 0);
    ExpectUntouched();
}

TEST_F(SeenInCalc, MenuAndButtonExploreToo) {
    ASSERT_EQ(calc_->Ask("select Loan.B9"), "done");
    desktop_->Do("key alt+t sleep 0.3 key d sleep 0.3 key x");  // Tools, Detective
    EXPECT_EQ(calc_->Windows(kExplorer, 1), 1);
    WaitForKeyboard(kExplorer);
    EXPECT_TRUE(Holds(Row("B9"), "Value: fits"));
    Press("Escape");
    EXPECT_EQ(calc_->Windows(kExplorer, 0), 0);
    ASSERT_TRUE(calc_->Activate("loan.fods"));
    const std::string button = calc_->Ask("button Korvane Explorer");
    ASSERT_NE(button, "nowhere");
    desktop_->Do("mousemove " + button + " click 1");
    EXPECT_EQ(calc_->Windows(kExplorer, 1), 1);
    EXPECT_TRUE(Holds(Row("B9"), "Value: fits"));
    ExpectUntouched();
}

// A document that its user cannot change says what it says otherwise, in both modes.
TEST_F(SeenInCalc, AReadOnlyDocumentIsExploredAsAnyOther) {
    Explore("Loan.B9");
    UnfoldWithKeys();
    const std::string rows = Rows();
    ASSERT_TRUE(Holds(rows, "CHOOSE; Value: fits"));
    Press("Escape");
    EXPECT_EQ(calc_->Windows(kExplorer, 0), 0);
    Open(other(), "openreadonly");
    const std::string before = calc_->Ask("everything");
    Explore("Loan.B9");
    UnfoldWithKeys();
    EXPECT_EQ(Rows(), rows);
    Press("alt+p");
    EXPECT_EQ(UntilSelected("B9"), "B9");
    UnfoldWithKeys();
    EXPECT_EQ(Rows(), rows);
    Click(Row("C2:C4"));
    ExpectState("$Scenarios.$C$2:$C$4 ");
    Press("Escape");
    EXPECT_EQ(calc_->Windows(kExplorer, 0), 0);
    EXPECT_EQ(calc_->Ask("everything"), before);
    EXPECT_EQ(calc_->Ask("cells"), cells_);
    ExpectState("modified 0 undo 0 ");
}

// Where every sheet is protected, evaluating takes what is left of the undo list.
TEST_F(SeenInCalc, ProtectedSheetsShowTheSameAndNobodyIsLedAway) {
    Explore("Loan.B9");
    UnfoldWithKeys();
    const std::string rows = Rows();
    Press("Escape");
    EXPECT_EQ(calc_->Windows(kExplorer, 0), 0);
    for (const char* sheets : {"Loan", "Scenarios Schedule"}) {
        std::istringstream names(sheets);
        for (std::string name; names >> name;) {
            ASSERT_EQ(calc_->Ask("sheet protect " + name), "done");
        }
        const std::string steps = calc_->Ask("steps");
        Explore("Loan.B9");
        ExpectState("$Loan.$B$9 ");
        UnfoldWithKeys();
        EXPECT_EQ(Rows(), rows) << sheets;
        ExpectState("$Loan.$B$9 ");
        Press("Escape");
        EXPECT_EQ(calc_->Windows(kExplorer, 0), 0);
        EXPECT_EQ(calc_->Ask("steps"), steps) << sheets;
        ASSERT_EQ(calc_->Ask("select Loan.A1"), "done");
        ASSERT_TRUE(calc_->Activate("loan.fods"));
        Press("alt+q");
        ExpectState("$Loan.$B$9 ");
    }
}

TEST_F(SeenInCalc, WindowsCloseInEveryOrder) {
    std::vector<int> order{0, 1, 2};
    do {
        Explore("Loan.B9");
        UnfoldWithKeys();
        Click(Row("B6"));
        ExpectState("$Loan.$B$6 ");
        Press("ctrl+q");
        ASSERT_EQ(calc_->Windows(kExplorer, 2), 2);
        Press("Down");
        EXPECT_NE(WalkToTint(), "");
        Press("ctrl+q");
        ASSERT_EQ(calc_->Windows(kExplorer, 3), 3);
        std::vector<std::string> windows;
        std::istringstream found(
            desktop_->Do("search --onlyvisible --name '^" + std::string(kExplorer) + "$'"));
        for (std::string id; found >> id;) windows.push_back(id);
        ASSERT_EQ(windows.size(), 3u);
        for (int left = 2; const int which : order) {
            desktop_->Do("windowactivate --sync " + windows[static_cast<std::size_t>(which)] +
                         " key Escape");
            EXPECT_EQ(calc_->Windows(kExplorer, left), left);
            --left;
        }
        ExpectUntouched();
    } while (std::next_permutation(order.begin(), order.end()) && !HasFailure());
}

}  // namespace
}  // namespace korvane::test
