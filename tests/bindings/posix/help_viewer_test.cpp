#include "bindings/posix/help_viewer.h"

#include <gtest/gtest.h>

#include "base/error.h"
#include "bindings/posix/posix_files.h"
#include "bindings/posix/posix_shell.h"
#include "bindings/posix/recorder.h"
#include "bindings/posix/temp_folder.h"

namespace korvane::posix {
namespace {

using Arguments = std::vector<std::string>;

class HelpViewerTest : public testing::Test {
protected:
    HelpViewerTest() {
        std::filesystem::create_directories(folder_);
        WriteBytes(folder_ / "index.html", "<html>");
        WriteBytes(folder_ / "keys.html", "<html>");
        WriteBytes(folder_ / "topics.txt", "7 keys.html#letters\n8 ../keys.html\n");
    }
    std::u16string HelpFile() const { return HostFolder(temp_.path()) + u"Korvane Explorer.chm"; }
    std::string Page(const std::string& page) const {
        return "file://" + (folder_ / page).native();
    }

    TempFolder temp_;
    std::filesystem::path folder_ = temp_.path() / "manual";
    Manual manual_{folder_};
    Recorder opener_{temp_.path(), "opener"};
    PosixFiles files_{temp_.folders(), temp_.path()};
    FilesWithHelp helped_{files_, manual_};
    PosixShell shell_{opener_.program()};
    ShellWithHelp viewer_{shell_, manual_, opener_.program()};
};

TEST_F(HelpViewerTest, TheHelpFileIsThereWhenTheManualIs) {
    EXPECT_TRUE(helped_.Exists(HelpFile()));
    EXPECT_TRUE(helped_.Exists(u"C:\\Add-ins\\Korvane Explorer.chm"));
    std::filesystem::remove(folder_ / "index.html");
    EXPECT_FALSE(helped_.Exists(HelpFile()));
}

TEST_F(HelpViewerTest, OtherFilesAreAsEver) {
    const std::u16string other = HostFolder(temp_.path()) + u"Other.chm";
    EXPECT_FALSE(helped_.Exists(other));
    helped_.AppendLine(other, u"text");
    EXPECT_TRUE(helped_.Exists(other));
    EXPECT_EQ(ReadBytes(temp_.path() / "Other.chm"), "text\n");
    EXPECT_EQ(helped_.StateFolder(), files_.StateFolder());
}

TEST_F(HelpViewerTest, OpensThePageOfTheTopic) {
    viewer_.Start(u"hh.exe " + HelpFile());
    EXPECT_EQ(opener_.TakeArguments(), Arguments{Page("index.html")});
    viewer_.Start(u"hh.exe -mapid 7 " + HelpFile());
    EXPECT_EQ(opener_.TakeArguments(), Arguments{Page("keys.html#letters")});
}

TEST_F(HelpViewerTest, OpensNothingElse) {
    for (const auto* topic : {u"8", u"9"}) {  // no page of the manual, no topic
        EXPECT_THROW(viewer_.Start(u"hh.exe -mapid " + std::u16string(topic) + u" " + HelpFile()),
                     Error);
    }
    std::filesystem::remove_all(folder_);
    EXPECT_THROW(viewer_.Start(u"hh.exe " + HelpFile()), Error);
    ::usleep(50'000);
    EXPECT_FALSE(opener_.WasRun());
}

TEST_F(HelpViewerTest, OtherProgramsAndAddressesAreAsEver) {
    viewer_.Open(u"https://example.org", 0);
    EXPECT_EQ(opener_.TakeArguments(), Arguments{"https://example.org"});
    EXPECT_THROW(viewer_.Open(u"file:///etc/passwd", 0), Error);
    const Recorder program(temp_.path(), "program");
    viewer_.Start(u"\"" + HostFolder(temp_.path()).substr(0, temp_.path().native().size()) +
                  u"/program\" a");
    EXPECT_EQ(program.TakeArguments(), Arguments{"a"});
}

TEST(HelpTopic, IsReadFromTheCommandLine) {
    const std::u16string file = u"/usr/lib/korvane\\Korvane Explorer.chm";
    EXPECT_EQ(HelpTopic(u"hh.exe " + file), 0);
    EXPECT_EQ(HelpTopic(u"hh.exe -mapid 1 " + file), 1);
    EXPECT_EQ(HelpTopic(u"hh.exe -mapid 2147483647 " + file), 2147483647);
    EXPECT_EQ(HelpTopic(u"hh.exe C:\\My Add-ins\\" + file), 0);
    for (const auto* other : {u"", u"hh.exe", u"hhx.exe a", u"xdg-open hh.exe a"}) {
        EXPECT_EQ(HelpTopic(other), std::nullopt);
    }
}

TEST(HelpTopic, RaisesForWhatIsNotAsked) {
    const std::u16string file = u"/usr/lib/korvane\\Korvane Explorer.chm";
    for (const std::u16string& line :
         {std::u16string(u"hh.exe "), u"hh.exe " + file + u"x", std::u16string(u"hh.exe a\\b.chm"),
          std::u16string(u"hh.exe Korvane Explorer.chm"), std::u16string(u"hh.exe -mapid 1"),
          u"hh.exe -mapid " + file, u"hh.exe -mapid 0 " + file, u"hh.exe -mapid -1 " + file,
          u"hh.exe -mapid 1.5 " + file, u"hh.exe -mapid 1E2 " + file, u"hh.exe -mapid 01 " + file,
          u"hh.exe -mapid 2147483648 " + file, u"hh.exe -mapid  1 " + file}) {
        EXPECT_THROW(HelpTopic(line), Error);
    }
}

}  // namespace
}  // namespace korvane::posix
