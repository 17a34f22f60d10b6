// A workbook in an office process of its own: what is answered, what is refused,
// and that nothing stays behind whatever happens.
#include <gtest/gtest.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <thread>

#include "apps/command/office_document.h"
#include "apps/command/signal_watch.h"
#include "base/text.h"
#include "files_under_test.h"

namespace korvane::command {
namespace {

using testing::Ends;
using testing::SmallWorkbook;
using testing::TestFolder;

// The exit code of a failing call, and its message.
template <class Call>
std::pair<int, std::string> Failure(Call&& call) {
    try {
        call();
    } catch (const CommandError& error) {
        return {error.code(), error.what()};
    }
    return {0, ""};
}

TEST(OfficeDocument, ExploresCells) {
    TestFolder folder;
    const std::string path = folder.Write("small.fods", SmallWorkbook());
    {
        OfficeDocument document(path);
        const auto report = document.Explore(u"Data!C1", true, false);
        ASSERT_TRUE(report.ok);
        EXPECT_EQ(ToUtf8(report.cell), "[small.fods]Data!$C$1");
        EXPECT_EQ(ToUtf8(report.formula), "=SUM(A1:A3)*B1");
        ASSERT_EQ(report.tree->children.size(), 2u);
        EXPECT_EQ(ToUtf8(report.tree->value), "60");
        EXPECT_EQ(ToUtf8(report.tree->children[0].value), "6");
        EXPECT_EQ(ToUtf8(document.Explore(u"'My Sheet'!A1", true, true).cell),
                  "'[small.fods]My Sheet'!$A$1");
        EXPECT_EQ(ToUtf8(document.Explore(u"Rate", true, true).cell),
                  "'[small.fods]My Sheet'!$A$1");
        EXPECT_EQ(ToUtf8(document.Explore(u"Data!B2:C9", true, true).cell),
                  "[small.fods]Data!$B$2");
        EXPECT_EQ(document.FormulaCells(), std::vector<std::u16string>{u"[small.fods]Data!$C$1"});
        for (const char16_t* missing : {u"Nowhere!A1", u"NoName", u"", u"Data!", u"A1:", u"ZZZZ1",
                                        u"'Data!A1", u"[Other.xls]Data!A1"}) {
            const auto [code, message] = Failure([&] { document.Explore(missing, true, false); });
            EXPECT_EQ(code, kNotFound) << ToUtf8(missing);
            EXPECT_EQ(message.find('\n'), std::string::npos);
        }
        // A failed request loses nothing.
        EXPECT_TRUE(document.Explore(u"Data!C1", false, true).ok);
    }
    EXPECT_TRUE(folder.IsClean());
}

TEST(OfficeDocument, TheFileAndItsFolderStayAsTheyAre) {
    TestFolder folder;
    const std::string path = folder.Write("kept.fods", SmallWorkbook());
    chmod(path.c_str(), 0400);
    struct stat before {};
    stat(path.c_str(), &before);
    const auto entries = [&] {
        return std::distance(std::filesystem::directory_iterator(folder.path()), {});
    };
    const auto count = entries();
    {
        OfficeDocument document(path);
        EXPECT_TRUE(document.Explore(u"Data!C1", true, true).ok);
        EXPECT_EQ(entries(), count);  // no lock file beside it
    }
    struct stat after {};
    stat(path.c_str(), &after);
    EXPECT_EQ(before.st_mtim.tv_nsec, after.st_mtim.tv_nsec);
    EXPECT_EQ(before.st_ino, after.st_ino);
    std::ifstream in(path);
    EXPECT_EQ(std::string(std::istreambuf_iterator<char>(in), {}), SmallWorkbook());
}

// A new profile takes in what is installed for all users, and the office that has
// done so ends a moment later, to be started again.
TEST(OfficeDocument, ExtensionsOfAllUsersDoNotEndTheOffice) {
    TestFolder folder;
    const auto extension = folder.path() / "extensions/one";
    std::filesystem::create_directories(extension / "META-INF");
    folder.Write("extensions/one/description.xml",
                 "<description xmlns=\"http://openoffice.org/extensions/description/2006\">"
                 "<identifier value=\"org.korvane.test.one\"/><version value=\"1\"/>"
                 "</description>");
    folder.Write("extensions/one/one.xcu",
                 "<oor:component-data xmlns:oor=\"http://openoffice.org/2001/registry\" "
                 "oor:name=\"Jobs\" oor:package=\"org.openoffice.Office\"/>");
    folder.Write("extensions/one/META-INF/manifest.xml",
                 "<manifest:manifest xmlns:manifest=\"http://openoffice.org/2001/manifest\">"
                 "<manifest:file-entry manifest:full-path=\"one.xcu\" manifest:media-type="
                 "\"application/vnd.sun.star.configuration-data\"/></manifest:manifest>");
    setenv("BUNDLED_EXTENSIONS", ("file://" + extension.parent_path().string()).c_str(), 1);
    {
        OfficeDocument document(folder.Write("small.fods", SmallWorkbook()));
        std::this_thread::sleep_for(std::chrono::seconds(2));
        EXPECT_TRUE(document.Explore(u"Data!C1", true, false).ok);
    }
    unsetenv("BUNDLED_EXTENSIONS");
    EXPECT_TRUE(folder.IsClean());
}

TEST(OfficeDocument, RefusesWhatIsNoFileWithoutStartingAnOffice) {
    TestFolder folder;
    std::filesystem::create_directory(folder.path() / "folder.xlsx");
    for (const std::string& path :
         {(folder.path() / "missing.xlsx").string(), (folder.path() / "folder.xlsx").string(),
          folder.Write("empty.xlsx", ""), std::string("/dev/null"), std::string()}) {
        const auto [code, message] = Failure([&] { OfficeDocument document(path); });
        EXPECT_EQ(code, kNotFound) << path;
        EXPECT_EQ(message.find('\n'), std::string::npos);
    }
}

TEST(OfficeDocument, RefusesWhatIsNoWorkbook) {
    TestFolder folder;
    std::string garbage;
    for (unsigned k = 0, number = 1; k < 5000; ++k)
        garbage += static_cast<char>((number = number * 1103515245 + 12345) >> 16);
    const std::string broken = SmallWorkbook().substr(0, 900);
    for (const std::string& path :
         {folder.Write("garbage.xlsx", garbage), folder.Write("garbage.xls", garbage),
          folder.Write("garbage", garbage), folder.Write("garbage.csv", garbage),
          folder.Write("text.txt", "hello\n"),
          folder.Write("page.xls", "<html><body><table></table></body></html>"),
          folder.Write("broken.fods", broken)}) {
        const auto [code, message] = Failure([&] { OfficeDocument document(path); });
        EXPECT_EQ(code, kNotFound) << path << message;
        EXPECT_EQ(message.find('\n'), std::string::npos);
    }
    EXPECT_TRUE(folder.IsClean());
}

TEST(OfficeDocument, SaysWhatToDoWithoutAnOffice) {
    TestFolder folder;
    const std::string path = folder.Write("small.fods", SmallWorkbook());
    setenv("KORVANE_OFFICE", "/nowhere/at/all", 1);
    const auto [code, message] = Failure([&] { OfficeDocument document(path); });
    unsetenv("KORVANE_OFFICE");
    EXPECT_EQ(code, kHostLost);
    EXPECT_NE(message.find("KORVANE_OFFICE"), std::string::npos);
    EXPECT_TRUE(folder.IsClean());
}

TEST(OfficeDocument, ADyingOfficeIsAnErrorAndLeavesNothing) {
    TestFolder folder;
    const std::string path = folder.Write("small.fods", SmallWorkbook());
    {
        OfficeDocument document(path);
        kill(document.process().id(), SIGKILL);
        EXPECT_EQ(Failure([&] { document.Explore(u"Data!C1", true, false); }).first, kHostLost);
        EXPECT_EQ(Failure([&] { document.Explore(u"Data!C1", true, false); }).first, kHostLost);
    }
    EXPECT_TRUE(folder.IsClean());
}

TEST(OfficeDocument, AnOfficeThatDoesNotAnswerIsEnded) {
    TestFolder folder;
    const std::string path = folder.Write("small.fods", SmallWorkbook());
    OfficeTimes times;
    times.explore = std::chrono::milliseconds(300);
    pid_t office = 0;
    {
        OfficeDocument document(path, times);
        office = document.process().id();
        kill(office, SIGSTOP);
        EXPECT_EQ(Failure([&] { document.Explore(u"Data!C1", true, false); }).first, kHostLost);
    }
    EXPECT_TRUE(Ends(office));
    EXPECT_TRUE(folder.IsClean());
}

// Runs explorations in a process of its own without an end, sends it `number`
// while it explores, and tells how it ended.
int EndedBy(int number, const std::string& path, pid_t& office) {
    int ends[2];
    if (pipe(ends) != 0) return -1;
    const pid_t child = fork();
    if (child == 0) {
        for (const int ending : {SIGINT, SIGTERM, SIGHUP}) signal(ending, SIG_DFL);
        try {
            OfficeDocument document(path);
            const pid_t id = document.process().id();
            if (write(ends[1], &id, sizeof id) != sizeof id) _exit(9);
            for (;;) document.Explore(u"Data!C1", true, true);
        } catch (...) {
        }
        _exit(7);
    }
    close(ends[1]);
    if (read(ends[0], &office, sizeof office) != static_cast<ssize_t>(sizeof office)) return -2;
    close(ends[0]);
    usleep(50'000);
    kill(child, number);
    int status = 0;
    waitpid(child, &status, 0);
    return WIFSIGNALED(status) ? WTERMSIG(status) : -100 - WEXITSTATUS(status);
}

TEST(OfficeDocument, SignalsLeaveNothingBehind) {
    for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGKILL}) {
        TestFolder folder;
        const std::string path = folder.Write("small.fods", SmallWorkbook());
        pid_t office = 0;
        EXPECT_EQ(EndedBy(number, path, office), number);
        EXPECT_TRUE(Ends(office)) << number;
        EXPECT_TRUE(folder.IsClean()) << number;
    }
}

}  // namespace
}  // namespace korvane::command
