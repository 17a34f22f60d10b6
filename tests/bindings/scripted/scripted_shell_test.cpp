#include "bindings/scripted/scripted_shell.h"

#include <gtest/gtest.h>

#include "base/error.h"
#include "base/text.h"

namespace korvane::scripted {
namespace {

class ScriptedShellTest : public testing::Test {
protected:
    // The number of the error that a call raises; 0 for none.
    template <typename Call>
    static int NumberOf(Call call) {
        try {
            call();
            return 0;
        } catch (const Error& error) {
            return error.number();
        }
    }

    std::shared_ptr<Accesses> accesses_ = std::make_shared<Accesses>();
    ScriptedShell shell_{accesses_};
};

TEST_F(ScriptedShellTest, OpensWebPagesAndMailAddresses) {
    shell_.Open(u"http://example.org/a", 5);
    shell_.Open(u"HTTPS://example.org", 0);
    shell_.Open(u"mailto:a@example.org", 0);
    ASSERT_EQ(shell_.opened.size(), 3U);
    EXPECT_EQ(shell_.opened[0].address, u"http://example.org/a");
    EXPECT_EQ(shell_.opened[0].owner, 5);
    EXPECT_EQ(shell_.opened[1].owner, 0);
}

TEST_F(ScriptedShellTest, OpensNothingElse) {
    for (const auto* address :
         {u"", u"file:///a", u"ftp://a", u"C:\\a.exe", u"http", u"xhttp:", u" http:"}) {
        EXPECT_EQ(NumberOf([&] { shell_.Open(address, 0); }), kErrorInvalidCall) << ToUtf8(address);
    }
    EXPECT_TRUE(shell_.opened.empty());
}

TEST_F(ScriptedShellTest, StartsPrograms) {
    shell_.Start(u"C:\\setup.exe /q");
    EXPECT_EQ(shell_.started, (std::vector<std::u16string>{u"C:\\setup.exe /q"}));
}

TEST_F(ScriptedShellTest, CannotStartWhatIsRefused) {
    shell_.refused = {u"http://a", u"a.exe"};
    EXPECT_EQ(NumberOf([&] { shell_.Open(u"http://a", 0); }), 53);
    EXPECT_EQ(NumberOf([&] { shell_.Start(u"a.exe"); }), 53);
    EXPECT_EQ(NumberOf([&] { shell_.Start(u"b.exe"); }), 0);
    EXPECT_TRUE(shell_.opened.empty());
    EXPECT_EQ(shell_.started.size(), 1U);
}

TEST_F(ScriptedShellTest, IsNotedAndFails) {
    accesses_->StartLog();
    shell_.Open(u"http://a", 0);
    shell_.Start(u"a.exe");
    EXPECT_EQ(accesses_->log(),
              (std::vector<std::string>{"Shell.Open http://a", "Shell.Start a.exe"}));
    accesses_->FailMember("Shell.Open");
    accesses_->FailMember("Shell.Start");
    EXPECT_EQ(NumberOf([&] { shell_.Open(u"http://a", 0); }), kErrorApplication);
    EXPECT_EQ(NumberOf([&] { shell_.Start(u"a.exe"); }), kErrorApplication);
    EXPECT_EQ(shell_.opened.size(), 1U);
    EXPECT_EQ(shell_.started.size(), 1U);
}

}  // namespace
}  // namespace korvane::scripted
