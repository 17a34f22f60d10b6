#include "bindings/calc/desk/dead_journals.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <iterator>

#include "bindings/calc/desk/journal.h"
#include "bindings/calc/desk/process_mark.h"

namespace korvane::calc {
namespace {

namespace fs = std::filesystem;

FillNote Note(const std::u16string& url) {
    FillNote note;
    note.url = url;
    note.sheet = u"S";
    note.written = {0x00CCFF, true};
    note.parts = {{CellBlock(0, 1, 1, 1, 1), {}}};
    return note;
}

class DeadJournalsTest : public ::testing::Test {
protected:
    DeadJournalsTest() {
        std::string name = (fs::temp_directory_path() / "korvane-journal-XXXXXX").string();
        folder_ = fs::path(::mkdtemp(name.data())) / "made";
    }
    ~DeadJournalsTest() override { fs::remove_all(folder_.parent_path()); }
    // Of a process of an earlier start of the machine.
    fs::path Dead(const std::string& name, const std::string& lines) {
        fs::create_directories(folder_);
        const fs::path file = folder_ / ("calc-" + name + ".journal");
        std::ofstream(file, std::ios::binary)
            << LineText(JournalHead{{::getpid(), 1, "another"}}) << lines;
        return file;
    }
    std::size_t Files() const {
        std::error_code missing;
        return static_cast<std::size_t>(
            std::distance(fs::directory_iterator(folder_, missing), fs::directory_iterator()));
    }
    std::string TextOf(const fs::path& file) const {
        std::ifstream in(file, std::ios::binary);
        return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
    }
    std::size_t Found(const std::u16string& url) const {
        return DeadJournals(folder_).Of(url).size();
    }

    fs::path folder_;
};

TEST_F(DeadJournalsTest, AProcessKnowsWhetherAnotherIsTheSame) {
    ProcessMark own = OwnMark();
    EXPECT_TRUE(IsAlive(own));
    EXPECT_GT(own.start, 0);
    EXPECT_FALSE(own.boot.empty());
    ++own.start;
    EXPECT_FALSE(IsAlive(own));
    own = OwnMark();
    own.boot += "x";
    EXPECT_FALSE(IsAlive(own));
    own = OwnMark();
    own.id = 0x3FFFFFFF;
    EXPECT_FALSE(IsAlive(own));
}

TEST_F(DeadJournalsTest, TheOwnJournalExistsWhileSomethingIsNotedAndIsNotDead) {
    Journal journal(folder_);
    EXPECT_EQ(Files(), 0u);
    const long first = journal.Note(Note(u"file:///a"));
    const long second = journal.Note(Note(u"file:///b"));
    EXPECT_NE(first, 0);
    EXPECT_EQ(Files(), 1u);
    JournalContent content;
    ASSERT_EQ(ReadJournal(TextOf(journal.file()), content), JournalReading::kReady);
    EXPECT_EQ(content.process, OwnMark());
    EXPECT_EQ(content.fills.size(), 2u);
    EXPECT_EQ(fs::status(journal.file()).permissions(),
              fs::perms::owner_read | fs::perms::owner_write);
    EXPECT_EQ(Found(u"file:///a"), 0u);
    journal.Forget(first);
    ASSERT_EQ(ReadJournal(TextOf(journal.file()), content), JournalReading::kReady);
    ASSERT_EQ(content.fills.size(), 1u);
    EXPECT_EQ(content.fills.front().note.url, u"file:///b");
    journal.Forget(second);
    journal.Forget(second);
    EXPECT_EQ(Files(), 0u);
    FormulaNote formula;
    formula.url = u"file:///a";
    const long third = journal.Note(formula);
    journal.Complete(third, u"=1");
    ASSERT_EQ(ReadJournal(TextOf(journal.file()), content), JournalReading::kReady);
    ASSERT_EQ(content.formulas.size(), 1u);
    EXPECT_EQ(content.formulas.front().note.shown, u"=1");
}

TEST_F(DeadJournalsTest, WhereNothingCanBeWrittenNothingIsNoted) {
    std::ofstream(folder_) << "a file in place of the folder";
    Journal journal(folder_);
    EXPECT_EQ(journal.Note(Note(u"file:///a")), 0);
    journal.Complete(0, u"=1");
    journal.Forget(0);
    EXPECT_EQ(Found(u"file:///a"), 0u);
}

TEST_F(DeadJournalsTest, TheNotesOfADocumentAreFoundAndForgotten) {
    const std::string lines = LineText(FillLine{1, Note(u"file:///a")}) +
                              LineText(FillLine{2, Note(u"file:///b")}) +
                              LineText(FillLine{3, Note(u"file:///a")});
    const fs::path file = Dead("1", lines + "fill\t4\tcut o");
    Dead("2", LineText(FillLine{1, Note(u"file:///c")}));
    const auto found = DeadJournals(folder_).Of(u"file:///a");
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found.front().content.fills.size(), 2u);
    DeadJournals::Forget(file, {1, 3});
    EXPECT_EQ(Found(u"file:///a"), 0u);
    EXPECT_EQ(Found(u"file:///b"), 1u);
    DeadJournals::Forget(file, {2});
    EXPECT_FALSE(fs::exists(file));
    EXPECT_EQ(Files(), 1u);
}

TEST_F(DeadJournalsTest, AnUnreadableJournalIsKeptAside) {
    const fs::path file = Dead("1", "what is this\n");
    Dead("2", LineText(FillLine{1, Note(u"file:///a")}));
    EXPECT_EQ(Found(u"file:///a"), 1u);
    EXPECT_FALSE(fs::exists(file));
    EXPECT_TRUE(fs::exists(fs::path(file).concat(".unreadable")));
    EXPECT_EQ(Found(u"file:///a"), 1u);
}

}  // namespace
}  // namespace korvane::calc
