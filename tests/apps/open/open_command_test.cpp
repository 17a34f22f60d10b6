// `korvane open` as its user types it.
#include "apps/command/open_command.h"

#include <gtest/gtest.h>

#include "user_office.h"

namespace korvane::test {
namespace {

const std::string kProgram = std::string(KORVANE_BUILD) + "/bin/korvane";
const std::string kCalc = "LibreOffice Calc";

class OpenCommandTest : public testing::Test {
protected:
    void SetUp() override {
        const std::string why = UserOffice::WhyNot();
        if (!why.empty()) GTEST_SKIP() << why;
        office = std::make_unique<UserOffice>();
    }
    std::unique_ptr<UserOffice> office;
};

TEST_F(OpenCommandTest, StartsCalcWithTheAddinAndUsesItAgain) {
    const auto first = office->Book("first book.xlsx");
    const auto second = office->Book("-second.xlsx");
    office->Start({kProgram, "open", first});
    ASSERT_TRUE(office->Shows("first book.xlsx.*" + kCalc));
    EXPECT_TRUE(office->Explores("first book.xlsx.*" + kCalc));

    const auto again = office->Run({kProgram, "open", second});
    EXPECT_EQ(again.code, 0) << again.said;
    EXPECT_TRUE(office->Shows("^.second.xlsx.*" + kCalc));
    EXPECT_EQ(office->CountOffices(), 1);
}

TEST_F(OpenCommandTest, AdvisesWhenCalcRunsWithoutTheAddin) {
    office->Start({"/usr/lib/libreoffice/program/soffice", "--calc"});
    ASSERT_TRUE(office->Shows(kCalc));
    const auto outcome = office->Run({kProgram, "open"});
    EXPECT_EQ(outcome.code, 4);
    EXPECT_NE(outcome.said.find("already running without Korvane Explorer"), std::string::npos)
        << outcome.said;
    EXPECT_FALSE(office->HasComponent());
}

TEST_F(OpenCommandTest, TellsWhatIsMissing) {
    const auto noFile = office->Run({kProgram, "open", "none.xlsx"});
    EXPECT_EQ(noFile.code, 3);
    EXPECT_EQ(noFile.said, "korvane: no such file: none.xlsx\n");

    const auto folder = office->Run({kProgram, "open", office->folder()});
    EXPECT_EQ(folder.code, 3);

    const auto noDesktop = office->Run({"env", "-u", "DISPLAY", kProgram, "open"});
    EXPECT_EQ(noDesktop.code, 4);
    EXPECT_NE(noDesktop.said.find("there is no desktop"), std::string::npos) << noDesktop.said;

    const auto noOffice = office->Run({"env", "KORVANE_OFFICE=/nowhere", kProgram, "open"});
    EXPECT_EQ(noOffice.code, 4);
    EXPECT_NE(noOffice.said.find("KORVANE_OFFICE"), std::string::npos) << noOffice.said;

    const auto noView = office->Run({"env", "KORVANE_VIEW=/nowhere", kProgram, "open"});
    EXPECT_EQ(noView.code, 4);
    EXPECT_NE(noView.said.find("KORVANE_VIEW"), std::string::npos) << noView.said;
    EXPECT_EQ(office->CountOffices(), 0);
}

TEST_F(OpenCommandTest, TakesAnotherProfile) {
    const auto other = office->folder() / "other profile";
    office->Start({"env", "KORVANE_PROFILE=" + other.string(), kProgram, "open"});
    ASSERT_TRUE(office->Shows(kCalc));
    EXPECT_TRUE(office->HasComponent());
    EXPECT_TRUE(std::filesystem::exists(other / "user"));
}

}  // namespace
}  // namespace korvane::test
