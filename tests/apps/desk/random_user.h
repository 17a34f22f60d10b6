// Someone who does anything that can be done with a Calc and the add-in in it.
#pragma once

#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "calc_with_addin.h"
#include "chance.h"
#include "platform/window/host_waits.h"
#include "shadow_calc.h"

namespace korvane::test {

// What the user does to a document himself is done in the shadow, too; what he does
// with the add-in is not. So the two hold the same at any time that no explorer is
// open.
class RandomUser {
public:
    // What is not as it should be.
    struct Trouble : std::runtime_error {
        using std::runtime_error::runtime_error;
    };

    RandomUser(const Desktop& desktop, CalcWithAddin& calc, ShadowCalc& shadow, Chance& chance,
               std::filesystem::path folder, std::vector<std::string> documents);

    // Does something; throws Trouble.
    void Act();
    // Closes all windows of the add-in, and compares; throws Trouble.
    void Rest();
    // What was done so far.
    std::string Story() const;

private:
    struct Action;
    static const std::vector<Action>& Actions();

    // Selecting and moving.
    void SelectCell();
    void ClickCell();
    void OtherSheet();
    void OtherDocument();
    void OtherWindow();
    void NewWindow();
    void CloseWindow();
    // The add-in.
    void Explore();
    void GoBack();
    void WalkTree();
    void ClickInExplorer();
    void PressBox();
    void ExploreOn();
    void CloseExplorer();
    void Settings();
    void About();
    void EditAndExplore();
    void KillView();
    // The user's own edits.
    void Type();
    void Undo();
    void Redo();
    void Save();
    void Recalculate();
    void InsertRow();
    void DeleteRow();
    void Fill();
    void CopyAndPaste();
    void HideOrProtect();
    void Reopen();

    void Note(const std::string& what);
    void Press(const std::string& keys) const;
    // Brings a document to the front, ready to take keys; false when it is not.
    bool TakeCalc();
    bool IsInFront(const std::string& title) const;
    bool Activate(const std::string& window) const;
    // Gives one of the explorers the keyboard; false when there is none.
    bool TakeExplorer();
    std::vector<std::string> Find(const std::string& title) const;
    // A dialog or notice of the add-in waits for an answer.
    bool IsWaiting() const { return !Find(platform::kHostWaits).empty(); }
    void AnswerAll();
    void CloseAll();
    void CheckOwners();
    void CheckViews();
    void ExpectAlive();
    std::string Ask(const std::string& order);
    std::string AskShadow(const std::string& order);
    // Both have the same to undo, as soon as the keys have arrived.
    void ExpectSameSteps();
    void Compare(const std::string& order);
    // The cell of the cursor; empty where the user cannot write.
    std::string WritableCell();
    void ChangeRows(const char* keys, const char* command);
    void Key(const char* keys, const char* command);

    const Desktop& desktop_;
    CalcWithAddin& calc_;
    ShadowCalc& shadow_;
    Chance& chance_;
    std::filesystem::path folder_;
    std::vector<std::string> documents_;  // their titles
    std::string document_;                // the one in front
    std::set<std::string> protected_;     // "title sheet"
    std::set<std::string> hidden_;
    std::vector<std::string> story_;
    int typed_ = 0;
};

}  // namespace korvane::test
