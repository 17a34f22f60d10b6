// Tinted cells in an office that its user works in: what is saved, exported,
// printed and copied has the user's own fills, and what a death leaves is put back.
#include "bindings/calc/desk/tint_guard.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "tints_in_office.h"

namespace korvane::test {
namespace {

namespace fs = std::filesystem;

TEST_F(CalcTints, WhatIsSavedIsNotTinted) {
    Make("book.ods");
    EXPECT_FALSE(AreThereJournals());
    ASSERT_EQ(Ask("tint A1:B3"), "done");
    EXPECT_TRUE(AreThereJournals());
    EXPECT_EQ(Ask("state"), "unmodified 2 1");
    ASSERT_EQ(Ask("type A2 =A1+2"), "done");
    ASSERT_EQ(Ask("save"), "done");
    EXPECT_EQ(Tints("book.ods"), 0);
    EXPECT_EQ(Ask("look A1:B3"), kTinted);
    EXPECT_EQ(Ask("state"), "unmodified 3 1");
    for (const char* order : {"export copy.xlsx", "export copy.fods", "recovery kept.ods"}) {
        const std::string words = order;
        const auto blank = words.find(' ');
        const std::string file = words.substr(blank + 1);
        ASSERT_EQ(Ask(words.substr(0, blank + 1) + Path(file)), "done");
        EXPECT_EQ(Tints(file), 0) << file;
        EXPECT_EQ(Ask("look A1:B3"), kTinted) << file;
        EXPECT_EQ(Ask("state"), "unmodified 3 1") << file;
    }
    ASSERT_EQ(Ask("saveas " + Path("other.ods")), "done");
    EXPECT_EQ(Tints("other.ods"), 0);
    EXPECT_EQ(Ask("look A1:B3"), kTinted);
    // Saving that fails.
    EXPECT_NE(Ask("export " + Path("other.ods/not_a_folder.ods")), "done");
    EXPECT_EQ(Ask("look A1:B3"), kTinted);
    // As the user does.
    ASSERT_EQ(Ask("type A2 =A1+3"), "done");
    desktop_->Do("key ctrl+s");
    EXPECT_EQ(office_->AskUntil("state", [](const auto& now) { return now == "unmodified 4 1"; }),
              "unmodified 4 1");
    EXPECT_EQ(Tints("other.ods"), 0);
    EXPECT_EQ(Ask("look A1:B3"), kTinted);
    ASSERT_EQ(Ask("untint A1:B3"), "done");
    EXPECT_EQ(Ask("look A1:B3"), kPlain);
    EXPECT_EQ(Ask("state"), "unmodified 4 1");
    EXPECT_FALSE(AreThereJournals());
    // The test can tell: without a guard the tint is in the file.
    ASSERT_EQ(Ask("unguard"), "done");
    ASSERT_EQ(Ask("tint A1:B3"), "done");
    ASSERT_EQ(Ask("export " + Path("tinted.ods")), "done");
    EXPECT_GT(Tints("tinted.ods"), 0);
    ASSERT_EQ(Ask("export " + Path("tinted.xlsx")), "done");
    EXPECT_GT(Tints("tinted.xlsx"), 0);
}

TEST_F(CalcTints, WhatIsCopiedIsNotTinted) {
    Make("book.ods");
    ASSERT_EQ(Ask("tint A1:A3"), "done");
    const auto copy = [&](const std::string& how, const std::string& to) {
        ASSERT_EQ(Ask("select A1:A2"), "done");
        if (how.starts_with(".uno")) {
            ASSERT_EQ(Ask("dispatch " + how), "done");
        } else {
            desktop_->Do("key " + how);
            EXPECT_EQ(Ask("look A1:A3"), kTinted);
        }
        ASSERT_EQ(Ask("select " + to), "done");
        ASSERT_EQ(Ask("dispatch .uno:Paste"), "done");
        EXPECT_EQ(Ask("formula " + to), "5") << how;
        EXPECT_EQ(Ask("look " + to), kPlain) << how;
        EXPECT_EQ(Ask("look A1:A3"), kTinted) << how;
    };
    copy(".uno:Copy", "D1");
    copy("ctrl+c", "F1");
    ASSERT_EQ(Ask("select A2:C2"), "done");
    ASSERT_EQ(Ask("dispatch .uno:FillRight"), "done");
    EXPECT_EQ(Ask("formula B2"), "=B1+1");
    EXPECT_EQ(Ask("look B2:C2"), kPlain);
    ASSERT_EQ(Ask("dispatch .uno:DuplicateSheet"), "done");
    EXPECT_EQ(Ask("look 1.A1:A3"), kPlain);
    EXPECT_EQ(Ask("look A1:A3"), kTinted);
    ASSERT_EQ(Ask("untint A1:A3"), "done");
    EXPECT_EQ(Ask("look A1:A3"), kPlain);
}

TEST_F(CalcTints, WhatIsCutLosesItsTint) {
    Make("book.ods");
    ASSERT_EQ(Ask("tint A1:A3"), "done");
    ASSERT_EQ(Ask("select A1:A3"), "done");
    ASSERT_EQ(Ask("dispatch .uno:Cut"), "done");
    ASSERT_EQ(Ask("select D1"), "done");
    ASSERT_EQ(Ask("dispatch .uno:Paste"), "done");
    EXPECT_EQ(Ask("formula D1"), "5");
    EXPECT_EQ(Ask("look A1:D3"), kPlain);
    EXPECT_FALSE(AreThereJournals());
    // What the user fills now is none of the tint's.
    ASSERT_EQ(Ask("colour A1:A3"), "done");
    ASSERT_EQ(Ask("untint A1:A3"), "done");
    EXPECT_EQ(Ask("look A1:A3"), "1193046 own");
    EXPECT_EQ(Ask("look B1:D3"), kPlain);
}

TEST_F(CalcTints, UndoingDoesNotBringATintBack) {
    Make("book.ods");
    ASSERT_EQ(Ask("select A1:A2"), "done");
    ASSERT_EQ(Ask("tint A1:A3"), "done");
    // Recorded with the tint.
    ASSERT_EQ(Ask("dispatch .uno:Bold"), "done");
    ASSERT_EQ(Ask("state"), "modified 3 1");
    ASSERT_EQ(Ask("untint A1:A3"), "done");
    EXPECT_EQ(Ask("look A1:A3"), kPlain);
    const auto plain = [](const std::string& look) { return look == kPlain; };
    ASSERT_EQ(Ask("dispatch .uno:Undo"), "done");
    EXPECT_EQ(office_->AskUntil("look A1:A3", plain), kPlain);
    ASSERT_EQ(Ask("dispatch .uno:Redo"), "done");
    EXPECT_EQ(office_->AskUntil("look A1:A3", plain), kPlain);
    EXPECT_EQ(Ask("state"), "modified 3 1");
    // While another tint stands, that one stays.
    ASSERT_EQ(Ask("tint A2"), "done");
    ASSERT_EQ(Ask("dispatch .uno:Undo"), "done");
    EXPECT_EQ(office_->AskUntil("look A1", plain), kPlain);
    EXPECT_EQ(office_->AskUntil("look A2", [](const auto& look) { return look == kTinted; }),
              kTinted);
    ASSERT_EQ(Ask("untint A2"), "done");
    EXPECT_EQ(Ask("look A1:A3"), kPlain);
    // The test can tell: without a guard it comes back.
    ASSERT_EQ(Ask("tint A1:A3"), "done");
    ASSERT_EQ(Ask("dispatch .uno:Italic"), "done");
    ASSERT_EQ(Ask("unguard"), "done");
    ASSERT_EQ(Ask("untint A1:A3"), "done");
    ASSERT_EQ(Ask("dispatch .uno:Undo"), "done");
    EXPECT_EQ(office_->AskUntil("look A1:A2", [](const auto& look) { return look == kTinted; }),
              kTinted);
}

TEST_F(CalcTints, WhatIsPrintedIsNotTinted) {
    Make("book.ods");
    const auto print = [&](const std::string& file) {
        EXPECT_EQ(Ask("print " + Path(file)), "done");
        std::ifstream in(Path(file), std::ios::binary);
        std::string text((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
        // Behind the pages it tells the time.
        const auto pages = text.find("/Type/Catalog");
        EXPECT_NE(pages, std::string::npos);
        return text.substr(0, pages);
    };
    const std::string plain = print("plain.pdf");
    ASSERT_FALSE(plain.empty());
    ASSERT_EQ(Ask("tint A1:B3"), "done");
    EXPECT_TRUE(print("guarded.pdf") == plain);
    EXPECT_EQ(Ask("look A1:B3"), kTinted);
    EXPECT_EQ(Ask("state"), "unmodified 2 1");
    ASSERT_EQ(Ask("unguard"), "done");
    EXPECT_FALSE(print("tinted.pdf") == plain);
}

TEST_F(CalcTints, AfterADeathWhatWasStoredIsPutBack) {
    Make("book.ods");
    ASSERT_EQ(Ask("tint A1:B3"), "done");
    ASSERT_EQ(Ask("unguard"), "done");
    ASSERT_EQ(Ask("write A2 =A1+7"), "done");
    // As a copy that is stored while the office dies.
    ASSERT_EQ(Ask("export " + Path("left.ods")), "done");
    Die();
    fs::copy_file(Path("left.ods"), Path("book.ods"), fs::copy_options::overwrite_existing);
    ASSERT_EQ(Ask("load " + Path("book.ods")), "done");
    EXPECT_EQ(Ask("look A1:B3"), kPlain);
    EXPECT_EQ(Ask("formula A2"), "=A1+1");
    EXPECT_EQ(Ask("state"), "modified 0 1");
    EXPECT_FALSE(AreThereJournals());
    ASSERT_EQ(Ask("save"), "done");
    EXPECT_EQ(Tints("book.ods"), 0);
}

TEST_F(CalcTints, AfterADeathNothingElseIsTouched) {
    Make("book.ods");
    ASSERT_EQ(Ask("tint A1:B3"), "done");
    ASSERT_EQ(Ask("write A2 =A1+7"), "done");
    Die();
    // Another document first: it is not meant.
    EXPECT_TRUE(AreThereJournals());
    ASSERT_EQ(Ask("load " + Path("book.ods")), "done");
    EXPECT_EQ(Ask("look A1:B3"), kPlain);
    EXPECT_EQ(Ask("formula A2"), "=A1+1");
    EXPECT_EQ(Ask("state"), "unmodified 0 1");
    EXPECT_FALSE(AreThereJournals());

    ASSERT_EQ(Ask("tint A1:B3"), "done");
    ASSERT_EQ(Ask("unguard"), "done");
    ASSERT_EQ(Ask("export " + Path("left.ods")), "done");
    Die();
    // What the user changed since is his: one cell he has filled, one he has not.
    ASSERT_EQ(Ask("load " + Path("left.ods")), "done");
    EXPECT_EQ(Ask("look A1:B3"), kTinted);
    ASSERT_EQ(Ask("colour B2"), "done");
    ASSERT_EQ(Ask("saveas " + Path("changed.ods")), "done");
    ASSERT_EQ(Ask("shut"), "done");
    fs::copy_file(Path("changed.ods"), Path("book.ods"), fs::copy_options::overwrite_existing);
    ASSERT_EQ(Ask("load " + Path("book.ods")), "done");
    EXPECT_EQ(Ask("look A1"), kPlain);
    EXPECT_EQ(Ask("look B2"), "1193046 own");
    EXPECT_EQ(Ask("look B3"), kPlain);
}

}  // namespace
}  // namespace korvane::test
