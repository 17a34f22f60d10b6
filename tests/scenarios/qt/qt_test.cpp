// Every scenario over the windows as widgets.
#include <gtest/gtest.h>

#include <QApplication>

#include "scenarios/model_user.h"
#include "scenarios/qt/qt_user.h"
#include "scenarios/scenarios.h"

namespace korvane::test {
namespace {

class OnTheDesktop : public ::testing::TestWithParam<Scenario> {};

// Behind everything that is done there is the same as without a desktop.
TEST_P(OnTheDesktop, IsPlayedAndTellsTheSameStory) {
    std::vector<std::string> expected;
    {
        World world;
        ModelUser user(world);
        world.Open();
        expected = Play(GetParam(), world, user);
    }
    World world;
    QtUser user(world);
    world.Open();
    const auto story = Play(GetParam(), world, user);
    ASSERT_EQ(story.size(), expected.size());
    for (std::size_t k = 0; k < story.size(); ++k) EXPECT_EQ(story[k], expected[k]) << k;
}

INSTANTIATE_TEST_SUITE_P(All, OnTheDesktop, ::testing::ValuesIn(Scenarios()),
                         [](const auto& played) { return played.param.name; });

}  // namespace
}  // namespace korvane::test

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    ::testing::InitGoogleTest(&argc, argv);
    QApplication application(argc, argv);
    QApplication::setStyle(QStringLiteral("Fusion"));
    QApplication::setQuitOnLastWindowClosed(false);
    return RUN_ALL_TESTS();
}
