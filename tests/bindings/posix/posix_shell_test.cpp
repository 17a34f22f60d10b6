#include "bindings/posix/posix_shell.h"

#include <gtest/gtest.h>
#include <sys/wait.h>

#include "base/text.h"
#include "bindings/posix/errors.h"
#include "bindings/posix/recorder.h"
#include "bindings/posix/temp_folder.h"

namespace korvane::posix {
namespace {

using Arguments = std::vector<std::string>;

class PosixShellTest : public testing::Test {
protected:
    TempFolder temp_;
    Recorder opener_{temp_.path(), "opener"};
    PosixShell shell_{opener_.program()};
};

TEST_F(PosixShellTest, OpensWebPagesAndMailboxes) {
    for (const char* address : {"https://example.org/a?b=c&d=%20#e", "http://x", "HTTP://OK",
                                "mailto:a@b.c?subject=x", "MailTo:a", "https://x/$(touch$IFS'y')",
                                "https://x/`touch;y`|&>z\\\"'", "https://x/\xC3\xA9"}) {
        shell_.Open(ToUtf16(address), 0);
        EXPECT_EQ(opener_.TakeArguments(), Arguments{address});
        EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1);
    }
}

TEST_F(PosixShellTest, PassesAnAddressAsOneWord) {
    shell_.Open(u"https://x/$(touch y) --new z", 0);
    EXPECT_EQ(opener_.TakeArguments(), Arguments{"https://x/$(touch%20y)%20--new%20z"});
    EXPECT_FALSE(std::filesystem::exists("y"));
}

TEST_F(PosixShellTest, OpensNothingElse) {
    for (const std::u16string& address :
         {std::u16string(u""), std::u16string(u"file:///etc/passwd"),
          std::u16string(u"javascript:alert(1)"), std::u16string(u"-h"), std::u16string(u"--help"),
          std::u16string(u"-https://x"), std::u16string(u" https://x"), std::u16string(u"https"),
          std::u16string(u"www.example.org"), std::u16string(u"/etc/passwd"),
          std::u16string(u"ftp://x"), std::u16string(u"httpsx://x"),
          std::u16string(u"data:text/html,x"), std::u16string(u"https://x\ny"),
          std::u16string(u"https://x\ty"), std::u16string(u"https://x\u007F"),
          std::u16string(u"https://x\u0085"), std::u16string(u"https://x\0y", 11),
          std::u16string(u"http\u017F://x")}) {
        EXPECT_THROW(shell_.Open(address, 0), Error) << ToUtf8(address);
    }
    ::usleep(50'000);
    EXPECT_FALSE(opener_.WasRun());
}

TEST_F(PosixShellTest, RaisesWithoutAnOpener) {
    PosixShell shell("korvane-no-such-opener");
    EXPECT_THROW(shell.Open(u"https://x", 0), Error);
}

TEST_F(PosixShellTest, OpensWithTheDesktopsOpenerByDefault) {
    const Recorder opener(temp_.path(), "xdg-open");
    const std::string path = temp_.path().native() + ":" + std::getenv("PATH");
    const Variable search("PATH", path.c_str());
    PosixShell().Open(u"https://x", 0);
    EXPECT_EQ(opener.TakeArguments(), Arguments{"https://x"});
}

TEST_F(PosixShellTest, StartsPrograms) {
    const Recorder program(temp_.path(), "a program");
    const std::u16string quoted = u"\"" + ToUtf16(program.program().native()) + u"\"";
    shell_.Start(quoted + u" a \"b c\" $HOME ; touch x");
    EXPECT_EQ(program.TakeArguments(), (Arguments{"a", "b c", "$HOME", ";", "touch", "x"}));
    EXPECT_EQ(::waitpid(-1, nullptr, WNOHANG), -1);
}

TEST_F(PosixShellTest, RaisesForACommandLineWithoutAProgram) {
    for (const std::u16string& line :
         {std::u16string(u""), std::u16string(u"  "), std::u16string(u"\"\" a"),
          std::u16string(u"korvane-no-such-program a"), std::u16string(u"/bin/true\0 a", 12)}) {
        EXPECT_THROW(shell_.Start(line), Error);
    }
}

}  // namespace
}  // namespace korvane::posix
