#include "scenarios/faults.h"

#include <gtest/gtest.h>

#include "host/addin/entry_point.h"

namespace korvane::test {
namespace {

namespace names = explorer_controls;

platform::Form& Newest(World& world) { return *world.windows().forms().rbegin()->second; }

void Nothing(World& /*world*/, ModelUser& /*user*/) {}

void Open(World& world, ModelUser& /*user*/) { world.Open(); }

void Explore(World& world, ModelUser& user) {
    world.Select(u"A1");
    world.addin().Explore();
    user.Rest();
}

void OpenAndExplore(World& world, ModelUser& user) {
    Open(world, user);
    Explore(world, user);
}

void SelectEveryRow(World& world, ModelUser& user) {
    platform::Form& window = Newest(world);
    for (std::int32_t node = 1; node <= TreeOf(window).NodeCount(); ++node) {
        user.ClickRow(window, node);
    }
}

void PutTheCaret(World& world, ModelUser& user) {
    user.PutCaret(Newest(world), 17);
    user.PutCaret(Newest(world), 38);
}

void EvaluatePrecisely(World& world, ModelUser& user) {
    user.ClickBox(Newest(world), names::kPrecise);
}

void ShowReferencesOnly(World& world, ModelUser& user) {
    user.ClickBox(Newest(world), names::kEveryFunction);
}

void ExploreOn(World& world, ModelUser& user) {
    user.ClickRow(Newest(world), NodeWith(Newest(world), u"Rate"));
    user.Press(Newest(world), Key::kExplore);
    user.Rest();
}

void LayOut(World& world, ModelUser& user) {
    user.Resize(Newest(world), 60, 45);
    user.DragSplitter(Newest(world), 40);
}

// Two windows, each with a tint, one above the other.
void OpenTwo(World& world, ModelUser& user) {
    OpenAndExplore(world, user);
    user.ClickRow(Newest(world), NodeWith(Newest(world), u"Rate"));
    Explore(world, user);
    user.ClickRow(Newest(world), NodeWith(Newest(world), u"Rate"));
}

void CloseBoth(World& world, ModelUser& user) {
    user.Close(*world.windows().forms().begin()->second);
    if (world.Count() > 0) user.Close(Newest(world));
}

void GoBack(World& world, ModelUser& /*user*/) { world.addin().GoBack(); }

void OpenOtherwhere(World& world, ModelUser& user) {
    OpenAndExplore(world, user);
    world.Select(u"C1");
}

void ChangeKeys(World& world, ModelUser& /*user*/) {
    AtEntryPoint(world.state().errors, u"FOptions", u"cmdOK_Click", [&] {
        if (!world.state().options->bChangeKeys(u"^%j", u"^%k")) RaiseStepFailed();
    });
}

void ShutDown(World& world, ModelUser& /*user*/) { world.addin().ShutDown(); }

// What must hold behind every action, whether it failed or not.
void ExpectInOrder(World& world) {
    EXPECT_LE(world.platform().messageBoxes.shown.size(), 1U);
    EXPECT_EQ(world.state().errors.number(), 0) << "a failure is still pending";
    EXPECT_EQ(static_cast<std::size_t>(world.state().lExplorerCount), world.Count());
}

// A host that only does what it is told cannot put back what it was not told to.
bool IsLost(World& world, const std::string& failed) {
    if (world.host().PutsBackByItself()) return false;
    return failed.starts_with("Interior.") || failed == "Range.Interior" ||
           failed == "Range.SetFormula" || failed == "Application.SetScreenUpdating" ||
           failed == "Application.SetEnableEvents" || failed.starts_with("CommandBar") ||
           failed == "Application.CommandBars";
}

}  // namespace

const std::vector<FaultyAction>& FaultyActions() {
    static const std::vector<FaultyAction> kActions{
        {"Start", Nothing, Open},
        {"Explore", Open, Explore},
        {"SelectEveryRow", OpenAndExplore, SelectEveryRow},
        {"PutTheCaret", OpenAndExplore, PutTheCaret},
        {"EvaluatePrecisely", OpenAndExplore, EvaluatePrecisely},
        {"ShowReferencesOnly", OpenAndExplore, ShowReferencesOnly},
        {"ExploreOn", OpenAndExplore, ExploreOn},
        {"LayOut", OpenAndExplore, LayOut},
        {"CloseBoth", OpenTwo, CloseBoth},
        {"GoBack", OpenOtherwhere, GoBack},
        {"ChangeKeys", OpenAndExplore, ChangeKeys},
        {"ShutDown", OpenTwo, ShutDown},
    };
    return kActions;
}

void SweepFaults(const FaultyAction& action, int stride,
                 const std::function<std::unique_ptr<WorldHost>()>& makeHost) {
    constexpr int kMost = 5000;
    std::unique_ptr<World> world;
    for (int nth = 1; nth < kMost; nth += stride) {
        if (!world) world = std::make_unique<World>(makeHost());
        world->ForgetSettings();
        ModelUser user(*world);
        action.prepare(*world, user);
        world->platform().messageBoxes.shown.clear();
        world->accesses().FailNthCall(nth);
        action.act(*world, user);
        const std::string failed = world->accesses().lastFailure();
        SCOPED_TRACE(std::string(action.name) + ", call " + std::to_string(nth) + " " + failed);
        ExpectInOrder(*world);
        world->accesses().FailNothing();
        world->ShutDown();
        const std::string left = world->LeftBehind();
        EXPECT_TRUE(left.empty() || IsLost(*world, failed)) << left;
        if (failed.empty()) return;
        if (!left.empty()) world.reset();  // the next one finds all in order
    }
    FAIL() << action.name << " never succeeds";
}

}  // namespace korvane::test
