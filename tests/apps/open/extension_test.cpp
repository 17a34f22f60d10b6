// The extension file, installed by an ordinary user and removed again.
#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>

#include "user_office.h"

namespace korvane::test {
namespace {

const std::string kProgram = std::string(KORVANE_BUILD) + "/bin/korvane";
const std::string kOffice = "/usr/lib/libreoffice/program/";
const std::string kCalc = "LibreOffice Calc";

TEST(ExtensionTest, IsInstalledWorksAndGoes) {
    std::string why = UserOffice::WhyNot();
    // The office's tool refuses root.
    const std::string user = ::getuid() == 0 ? "daemon" : "";
    if (why.empty() && !user.empty() && !HasProgram("runuser"))
        why = "root cannot become another user: runuser is not installed";
    if (!why.empty()) GTEST_SKIP() << why;

    UserOffice office(user);
    const auto extension = office.folder() / "korvane.oxt";
    const auto made =
        OutputOf(std::string(KORVANE_SOURCE) + "/tools/make_oxt.sh " KORVANE_BUILD " " +
                 extension.string() + " 2>&1");
    ASSERT_TRUE(std::filesystem::exists(extension)) << made;
    std::filesystem::permissions(extension, std::filesystem::perms::all);

    const auto added = office.Run({kOffice + "unopkg", "add", extension});
    ASSERT_EQ(added.code, 0) << added.said;
    const auto listed = office.Run({kOffice + "unopkg", "list"});
    EXPECT_NE(listed.said.find("org.korvane.explorer"), std::string::npos) << listed.said;

    office.Start({kOffice + "soffice", office.Book("book.xlsx")});
    ASSERT_TRUE(office.Shows("book.xlsx.*" + kCalc));
    EXPECT_TRUE(office.Explores("book.xlsx.*" + kCalc));
    office.Stop();

    const auto removed = office.Run({kOffice + "unopkg", "remove", "org.korvane.explorer"});
    ASSERT_EQ(removed.code, 0) << removed.said;
    office.Start({kOffice + "soffice", office.Book("plain.xlsx")});
    ASSERT_TRUE(office.Shows("plain.xlsx.*" + kCalc));
    EXPECT_FALSE(office.HasComponent());
}

// Both ways at once: the office must not get the component twice.
TEST(ExtensionTest, GoesWithTheCommand) {
    const std::string why = UserOffice::WhyNot();
    if (!why.empty()) GTEST_SKIP() << why;
    if (::getuid() == 0 && !HasProgram("runuser")) GTEST_SKIP() << "runuser is not installed";
    UserOffice office(::getuid() == 0 ? "daemon" : "");
    const auto extension = office.folder() / "korvane.oxt";
    OutputOf(std::string(KORVANE_SOURCE) + "/tools/make_oxt.sh " KORVANE_BUILD " " +
             extension.string());
    std::filesystem::permissions(extension, std::filesystem::perms::all);
    const auto added = office.Run({kOffice + "unopkg", "add", extension});
    ASSERT_EQ(added.code, 0) << added.said;

    const auto book = office.Book("both.xlsx");
    office.Start({kProgram, "open", book});
    ASSERT_TRUE(office.Shows("both.xlsx.*" + kCalc));
    EXPECT_TRUE(office.Explores("both.xlsx.*" + kCalc));
}

}  // namespace
}  // namespace korvane::test
