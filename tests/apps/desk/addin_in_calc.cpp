#include "addin_in_calc.h"

namespace korvane::test {

namespace fs = std::filesystem;

void AddinInCalc::MakeBooks() {
    for (const fs::path& copy : {book(), other()}) {
        fs::copy_file(fs::path(KORVANE_EXAMPLES) / "loan.fods", copy);
    }
}

void AddinInCalc::SetUp() {
    DesktopTest::SetUp();
    if (!desktop_) return;
    MakeBooks();
    Start();
    cells_ = calc_->Ask("cells");
    ASSERT_TRUE(Holds(cells_, ".B9")) << cells_;
}

void AddinInCalc::Start() {
    calc_.reset();
    calc_ = std::make_unique<CalcWithAddin>(*desktop_, folder_, book(), Environment());
    ASSERT_TRUE(calc_->ready());
}

void AddinInCalc::Open(const fs::path& path, const std::string& order) {
    const std::string name = path.filename().string();
    ASSERT_EQ(calc_->Ask(order + " " + path.string()), "done");
    ASSERT_TRUE(calc_->Activate(name));
}

void AddinInCalc::Explore(const std::string& cell, int windows) {
    ASSERT_EQ(calc_->Ask("select " + cell), "done");
    const std::string state = calc_->Ask("state");
    ASSERT_TRUE(calc_->Activate(state.substr(0, state.find(' '))));
    Press("ctrl+q");
    ASSERT_EQ(calc_->Windows(kExplorer, windows), windows);
    WaitForKeyboard(kExplorer);
}

void AddinInCalc::OpenSettings() {
    desktop_->Do("key alt+t sleep 0.3 key x sleep 0.3 key s");
    ASSERT_EQ(calc_->Windows(kSettings, 1), 1);
    WaitForKeyboard(kSettings);
}

void AddinInCalc::OpenSecondWindow() {
    desktop_->Do("key alt+w sleep 0.3 key n");
    ASSERT_TRUE(calc_->Focus("loan.fods : 2"));
}

void AddinInCalc::ExpectAnswer(const std::string& order, const std::string& wanted) {
    const auto is = [&](const std::string& answer) { return answer == wanted; };
    EXPECT_EQ(calc_->AskUntil(order, is), wanted);
}

void AddinInCalc::WaitForKeyboard(const std::string& title) {
    std::string active;
    calc_->AskUntil("ready",
                    [&](const std::string&) { return Holds(active = ActiveWindow(), title); });
    EXPECT_TRUE(Holds(active, title)) << active;
}

std::string AddinInCalc::WalkToTint() {
    std::string fills;
    for (int step = 0; step < 30 && fills.empty(); ++step) {
        Press("Down");
        fills = calc_->AskUntil("fills", [tries = 0](const std::string& answer) mutable {
            return !answer.empty() || ++tries > 8;
        });
    }
    return fills;
}

std::string AddinInCalc::UnfoldAndWalkToTint() {
    Press("Down");
    Press("asterisk");
    return WalkToTint();
}

void AddinInCalc::ExpectUntouched() {
    ExpectAnswer("fills", "");
    EXPECT_EQ(calc_->Ask("cells"), cells_);
    const std::string state = calc_->Ask("state");
    EXPECT_TRUE(Holds(state, "modified 0 undo 0 locked 0")) << state;
}

}  // namespace korvane::test
