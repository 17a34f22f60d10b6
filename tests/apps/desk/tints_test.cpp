// What the user saves while an explorer shows its cells, and what is left when the
// office dies meanwhile.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>

#include <cstdlib>
#include <fstream>
#include <iterator>

#include "calc_with_addin.h"

namespace korvane::test {
namespace {

namespace fs = std::filesystem;

constexpr const char* kExplorer = "Korvane Explorer";

bool Holds(const std::string& text, const std::string& part) {
    return text.find(part) != std::string::npos;
}

class TintsInCalc : public ::testing::Test {
protected:
    void SetUp() override {
        if (const std::string why = CalcWithAddin::WhyNot(); !why.empty()) GTEST_SKIP() << why;
        std::string name = (fs::temp_directory_path() / "tints-in-calc-XXXXXX").string();
        ASSERT_NE(::mkdtemp(name.data()), nullptr);
        folder_ = name;
        book_ = folder_ / "loan.fods";
        fs::copy_file(fs::path(KORVANE_EXAMPLES) / "loan.fods", book_);
        desktop_ = std::make_unique<Desktop>();
        calc_ = std::make_unique<CalcWithAddin>(*desktop_, folder_, book_);
        ASSERT_TRUE(calc_->ready());
    }
    void TearDown() override {
        calc_.reset();
        desktop_.reset();
        if (!folder_.empty()) fs::remove_all(folder_);
    }
    void Press(const std::string& keys) { desktop_->Do("key " + keys); }
    bool IsActive(const std::string& title) {
        return Holds(desktop_->Do("getactivewindow getwindowname 2>/dev/null"), title);
    }
    // Explores a cell and goes to a part with cells; which are tinted then.
    std::string Explore() {
        EXPECT_EQ(calc_->Ask("select Loan.B9"), "done");
        EXPECT_TRUE(calc_->Focus("loan.fods"));
        Press("ctrl+q");
        EXPECT_EQ(calc_->Windows(kExplorer, 1), 1);
        calc_->AskUntil("ready", [&](const std::string&) { return IsActive(kExplorer); });
        Press("Down");
        Press("asterisk");
        std::string fills;
        for (int step = 0; step < 30 && fills.empty(); ++step) {
            Press("Down");
            fills = calc_->AskUntil("fills", [tries = 0](const std::string& answer) mutable {
                return !answer.empty() || ++tries > 8;
            });
        }
        return fills;
    }
    std::string Text() const {
        std::ifstream in(book_, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    }
    // The journals, wherever the state is kept.
    std::size_t Journals() const {
        std::size_t count = 0;
        for (const auto& entry : fs::recursive_directory_iterator(folder_)) {
            if (entry.path().extension() == ".journal") ++count;
        }
        return count;
    }

    fs::path folder_;
    fs::path book_;
    std::unique_ptr<Desktop> desktop_;
    std::unique_ptr<CalcWithAddin> calc_;
};

TEST_F(TintsInCalc, WhatIsSavedMeanwhileHasNone) {
    const std::string tinted = Explore();
    ASSERT_TRUE(Holds(tinted, "=52479")) << tinted;
    EXPECT_EQ(Journals(), 1u);
    ASSERT_EQ(calc_->Ask("put Loan.D20 changed"), "done");
    ASSERT_TRUE(Holds(calc_->Ask("state"), "modified 1"));
    ASSERT_TRUE(calc_->Focus("loan.fods"));
    Press("ctrl+s");
    EXPECT_TRUE(
        Holds(calc_->AskUntil("state",
                              [](const std::string& state) { return Holds(state, "modified 0"); }),
              "modified 0"));
    EXPECT_TRUE(Holds(Text(), "changed"));
    EXPECT_FALSE(Holds(Text(), "00ccff"));
    EXPECT_EQ(calc_->Ask("fills"), tinted);
    EXPECT_EQ(calc_->Windows(kExplorer, 1), 1);
    // Closing the document takes the tint off, too.
    ASSERT_EQ(calc_->Ask("close"), "done");
    EXPECT_EQ(calc_->Windows(kExplorer, 0), 0);
    EXPECT_EQ(Journals(), 0u);
}

TEST_F(TintsInCalc, TheJournalOutlivesAnOfficeThatDies) {
    ASSERT_TRUE(Holds(Explore(), "=52479"));
    ASSERT_EQ(Journals(), 1u);
    ::kill(calc_->id(), SIGKILL);
    EXPECT_TRUE(WIFSIGNALED(calc_->WaitForEnd()));
    EXPECT_EQ(Journals(), 1u);
    // The next one finds nothing to be put back, and is done with it.
    calc_ = std::make_unique<CalcWithAddin>(*desktop_, folder_, book_);
    ASSERT_TRUE(calc_->ready());
    calc_->AskUntil("ready", [&](const std::string&) { return Journals() == 0; });
    EXPECT_EQ(Journals(), 0u);
    EXPECT_EQ(calc_->Ask("fills"), "");
    EXPECT_TRUE(Holds(calc_->Ask("state"), "modified 0 undo 0 locked 0"));
}

}  // namespace
}  // namespace korvane::test
