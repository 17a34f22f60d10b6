#include "bindings/scripted/scripted_files.h"

#include <gtest/gtest.h>

#include "base/error.h"

namespace korvane::scripted {
namespace {

using Lines = std::vector<std::u16string>;

class ScriptedFilesTest : public testing::Test {
protected:
    std::shared_ptr<Accesses> accesses_ = std::make_shared<Accesses>();
    ScriptedFiles files_{accesses_};
};

TEST_F(ScriptedFilesTest, AppendsLinesToFilesThatItMakes) {
    files_.AppendLine(u"C:\\a\\x.log", u"one");
    files_.AppendLine(u"C:\\a\\y.log", u"other");
    files_.AppendLine(u"C:\\a\\x.log", u"two");
    EXPECT_EQ(files_.lines.size(), 2U);
    EXPECT_EQ(files_.lines.at(u"C:\\a\\x.log"), (Lines{u"one", u"two"}));
    EXPECT_EQ(files_.lines.at(u"C:\\a\\y.log"), (Lines{u"other"}));
}

TEST_F(ScriptedFilesTest, NothingIsWrittenBelowAReadOnlyFolder) {
    files_.readOnly.insert(u"C:\\a\\");
    for (const auto* path : {u"C:\\a\\x.log", u"C:\\a\\b\\x.log"}) {
        try {
            files_.AppendLine(path, u"line");
            FAIL();
        } catch (const Error& error) {
            EXPECT_EQ(error.number(), 70);
            EXPECT_EQ(error.description(), u"Permission denied");
        }
    }
    EXPECT_TRUE(files_.lines.empty());
    EXPECT_NO_THROW(files_.AppendLine(u"C:\\ab\\x.log", u"line")) << "another folder";
}

TEST_F(ScriptedFilesTest, KnowsWhichFilesAreThere) {
    EXPECT_FALSE(files_.Exists(u"C:\\a\\x.log"));
    files_.AppendLine(u"C:\\a\\x.log", u"one");
    EXPECT_TRUE(files_.Exists(u"C:\\a\\x.log"));
    files_.existing.insert(u"C:\\a\\help.chm");
    EXPECT_TRUE(files_.Exists(u"C:\\a\\help.chm"));
    EXPECT_FALSE(files_.Exists(u"C:\\a\\")) << "a folder is no file";
    accesses_->FailMember("Files.Exists");
    EXPECT_FALSE(files_.Exists(u"C:\\a\\help.chm")) << "it cannot be found out";
}

TEST_F(ScriptedFilesTest, HasAFolderForState) {
    EXPECT_EQ(files_.StateFolder(), u"/state/korvane\\");
    files_.stateFolder = u"D:\\";
    EXPECT_EQ(files_.StateFolder(), u"D:\\");
}

TEST_F(ScriptedFilesTest, IsNotedAndFails) {
    accesses_->StartLog();
    files_.AppendLine(u"p", u"line");
    files_.Exists(u"p");
    files_.StateFolder();
    EXPECT_EQ(accesses_->log(), (std::vector<std::string>{"Files.AppendLine p", "Files.Exists p",
                                                          "Files.StateFolder"}));
    accesses_->FailMember("Files.AppendLine");
    accesses_->FailMember("Files.StateFolder");
    EXPECT_THROW(files_.AppendLine(u"p", u"line"), Error);
    EXPECT_THROW(files_.StateFolder(), Error);
    EXPECT_EQ(files_.lines.at(u"p").size(), 1U) << "a call that fails writes nothing";
}

}  // namespace
}  // namespace korvane::scripted
