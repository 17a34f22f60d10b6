// A user before a Calc with the sample workbook and the add-in.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "calc_with_addin.h"
#include "support/desktop_fixture.h"

namespace korvane::test {

// The title of explorer windows, and of the add-in's notices.
inline constexpr const char* kExplorer = "Korvane Explorer";
inline constexpr const char* kSettings = "Korvane Explorer Settings";

class AddinInCalc : public DesktopTest {
protected:
    void SetUp() override;
    void EndPrograms() override { calc_.reset(); }
    // What Calc is started with, besides what it needs.
    virtual std::vector<std::string> Environment() { return {}; }

    // The files that are opened: the sample workbook, unless a test has others.
    virtual void MakeBooks();
    // A copy of the sample workbook, and another of the same cells.
    std::filesystem::path book() const { return folder_ / "loan.fods"; }
    std::filesystem::path other() const { return folder_ / "other.fods"; }

    // Starts Calc with the book; it has the keyboard.
    void Start();
    // Opens a further workbook; it has the keyboard.
    void Open(const std::filesystem::path& path, const std::string& order = "open");
    // Explores a cell of the document in front by the shortcut; there are `windows`
    // of explorers then, and the new one has the keyboard.
    void Explore(const std::string& cell, int windows = 1);
    // Opens the settings from Calc's menu; they have the keyboard.
    void OpenSettings();
    // Opens another window of the sample workbook from Calc's menu; it has the keyboard.
    void OpenSecondWindow();
    // Waits until the order is answered so.
    void ExpectAnswer(const std::string& order, const std::string& wanted);
    // Waits until a window whose title holds this has the keyboard.
    void WaitForKeyboard(const std::string& title);
    // Walks down the tree until cells are tinted; which.
    std::string WalkToTint();
    // The same in a tree that is still folded.
    std::string UnfoldAndWalkToTint();
    // The workbook is as it was, whatever was selected.
    void ExpectUntouched();

    std::string cells_;  // the book's, before anything was done
    std::unique_ptr<CalcWithAddin> calc_;
};

}  // namespace korvane::test
