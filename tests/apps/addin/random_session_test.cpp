// Long random sequences of what a user can do, over the whole add-in. A failure
// prints its seed; KORVANE_SEED=seed repeats it, KORVANE_ROUNDS=n runs longer.
#include <gtest/gtest.h>

#include <cstdlib>
#include <random>

#include "apps/addin/addin.h"
#include "base/attempt.h"
#include "base/text.h"
#include "bindings/scripted/scripted_platform.h"
#include "explorer/explorer_design.h"
#include "support/exploring.h"

namespace korvane {
namespace {

using platform::Form;
using platform::Mouse;
using platform::MouseAction;
namespace names = explorer_controls;

constexpr int kNoTint = -4142;
constexpr int kAutomatic = -4105;
const char16_t* const kCells[] = {u"A1", u"A2", u"A3", u"B1", u"C1", u"D1"};

std::unique_ptr<scripted::ScriptedHost> HostToPlayWith() {
    return test::HostWith("=IF(B1>1,SUM(B1,C1),OFFSET(B1,0,1))+Rate",
                          R"json("B1":{"formula":"=C1-1","value":2},"C1":3,"D1":4,
                        "A2":{"formula":"=SUM(B1,C1)*2","value":10},
                        "A3":{"formula":"=D1","value":4})json",
                          R"json("literals":true,"evaluate":{
                        "=IF(B1>1,SUM(B1,C1),OFFSET(B1,0,1))":{"value":5},
                        "=B1>1":{"value":true},"=SUM(B1,C1)":{"value":5},
                        "=OFFSET(B1,0,1)":{"range":"S!C1"},
                        "=Rate":{"range":"S!D1"},"=B1*2":{"value":4}})json");
}

class RandomSession {
public:
    explicit RandomSession(unsigned seed)
        : random_(seed), where_("KORVANE_SEED=" + std::to_string(seed)) {
        host_->model().activeBook->names[u"rate"] = {u"Rate", u"=S!$D$1"};
        host_->thisWorkbookName = u"KorvaneExplorer.xla";
        host_->thisWorkbookPath = u"C:\\Add-ins";
        host_->hwnd = 7;
        platform_.screen.windows[7] = {host_->caption, {0, 0, 800, 600}};
        platform_.clock.now = {2026, 11, 16, 12, 0, 0};
        Start();
    }
    ~RandomSession() {
        addin_.main().ShutDown();
        EXPECT_EQ(host_->LiveHandles(), 0) << where_;
        EXPECT_TRUE(platform_.windows.forms().empty()) << where_;
    }

    // `faults`: calls of host and platform fail now and then.
    void Play(int actions, bool faults) {
        for (int k = 0; k < actions && !::testing::Test::HasFailure(); ++k) {
            if (faults && Chance(3)) accesses().FailNthCall(Below(60) + 1);
            Act();
            accesses().FailNothing();
            SCOPED_TRACE(where_ + ", action " + std::to_string(k) + ": " + action_);
            CheckAlways();
            if (!faults) CheckUndisturbed();
        }
        // The user closes what is open, in any order.
        while (!Forms().empty()) Any().Unload(true);
        SCOPED_TRACE(where_ + ", all closed");
        CheckAlways();
        if (!faults) CheckClosed();
    }

private:
    int Below(int count) { return std::uniform_int_distribution<int>(0, count - 1)(random_); }
    bool Chance(int oneIn) { return Below(oneIn) == 0; }
    scripted::Accesses& accesses() { return host_->accesses(); }
    const std::map<platform::WindowId, Form*>& Forms() const { return platform_.windows.forms(); }
    Form& Any() {
        return *std::next(Forms().begin(), Below(static_cast<int>(Forms().size())))->second;
    }
    void Start() {
        addin_.main().AutoOpen(host_->Application(), host_->AddinWorkbook());
        handles_ = host_->LiveHandles();
    }

    template <class E>
    void Deliver(Form& form, const char16_t* control, E event) {
        event.window = form.Id();
        event.control = form.Get<platform::Control>(control).Id();
        platform_.windows.Deliver(event);
    }
    const char16_t* AnyControl() {
        static constexpr const char16_t* kAll[] = {
            names::kTree, names::kFormula, names::kEveryFunction, names::kPrecise, names::kClose};
        return kAll[Below(5)];
    }

    void Act() {
        if (Forms().empty() || Chance(4)) return ActInHost();
        ActInWindow(Any());
    }
    void ActInHost() {
        switch (Below(8)) {
            case 0:
            case 1:
            case 2:
                action_ = "explore";
                Select(kCells[Below(6)]);
                if (Forms().size() < 12) addin_.main().Explore();
                break;
            case 3:
                action_ = "go back";
                addin_.main().GoBack();
                break;
            case 4:
                action_ = "select a cell";
                Select(kCells[Below(6)]);
                break;
            case 5:
                action_ = "change a formula";
                Content(u"A2").formula = Chance(2) ? u"=SUM(B1,C1)*2" : u"=D1+Rate";
                break;
            case 6:
                action_ = "change the options";
                if (!addin_.state().options) break;
                // Not a user's action: what fails here ends here.
                Succeeds([this] { addin_.state().options->SetbPreciseCalc(Chance(4)); });
                Succeeds([this] { addin_.state().options->SetbHighlightCells(!Chance(4)); });
                break;
            default:
                action_ = "the add-in goes and comes";
                if (!Chance(4)) break;
                addin_.main().ShutDown();
                EXPECT_TRUE(Forms().empty());
                EXPECT_EQ(host_->LiveHandles(), 0);
                Start();
                break;
        }
    }
    void ActInWindow(Form& form) {
        auto& tree = form.Get<platform::TreeView>(names::kTree);
        auto& pane = form.Get<platform::RichText>(names::kFormula);
        const int rows = tree.NodeCount();
        const int size = static_cast<int>(pane.Text().size());
        switch (Below(14)) {
            case 0:
            case 1:
            case 2:
                action_ = "select a row";
                return Deliver(form, names::kTree, platform::NodeSelected{0, 0, Below(rows + 2)});
            case 3:
                action_ = "expand or collapse";
                return Deliver(form, names::kTree,
                               platform::NodeToggled{0, 0, Below(rows + 2), Chance(2)});
            case 4:
            case 5:
                action_ = "select text";
                return Deliver(
                    form, names::kFormula,
                    platform::TextSelected{0, 0, {Below(size + 3) - 1, Chance(3) ? Below(8) : 0}});
            case 6:
                action_ = "the functions box";
                return Deliver(form, names::kEveryFunction, platform::Toggled{0, 0, Chance(2)});
            case 7:
                action_ = "the precise box";
                return Deliver(form, names::kPrecise, platform::Toggled{0, 0, Chance(2)});
            case 8:
                action_ = "the shortcut";
                if (Forms().size() >= 12) return;
                return Deliver(form, AnyControl(), platform::KeyDown{0, 0, 'Q', platform::kCtrl});
            case 9:
                action_ = "Enter or another key";
                return Deliver(form, AnyControl(),
                               platform::KeyDown{0, 0, Chance(2) ? platform::kKeyEnter : 'X',
                                                 Chance(2) ? 0 : Below(8)});
            case 10:
                action_ = "the splitter";
                Deliver(form, names::kSplitter, Mouse{0, 0, MouseAction::kDown, 1, 0, 0, 0});
                Deliver(form, names::kSplitter,
                        Mouse{0, 0, MouseAction::kMove, 1, 0, 0,
                              static_cast<float>(Below(40'000) - 20'000)});
                return Deliver(form, names::kSplitter, Mouse{0, 0, MouseAction::kUp, 1, 0, 0, 0});
            case 11:
                action_ = "resize";
                return platform_.windows.Deliver(platform::FormPlaced{
                    form.Id(),
                    {static_cast<float>(Below(3000)), static_cast<float>(Below(3000)),
                     static_cast<float>(Below(12'000)), static_cast<float>(Below(9000))}});
            case 12:
                action_ = "activate, scroll, drag a column";
                platform_.windows.Deliver(platform::FormActivated{form.Id()});
                if (!form.IsOpen()) return;
                Deliver(form, names::kTree, platform::Scrolled{0, 0, Below(200)});
                return Deliver(form, names::kTree,
                               platform::ColumnResized{0, 0, Below(4), Below(400)});
            default:
                action_ = "close";
                if (Chance(2)) return Deliver(form, names::kClose, platform::Clicked());
                return platform_.windows.Deliver(platform::CloseAsked{form.Id(), true});
        }
    }
    void Select(const char16_t* reference) {
        const auto cells = host_->FindCells(reference).value();
        host_->model().activeBook = cells.book;
        host_->model().activeSheet = cells.sheet;
        host_->model().activeCell = host_->selection = cells.area;
    }
    scripted::Content& Content(const char16_t* reference) {
        const auto area = host_->FindCells(reference).value().area;
        return host_->model().activeSheet->Find(area.top, area.left)->content;
    }

    // ---- what holds after every action, whatever failed ----
    void CheckAlways() {
        const SharedState& state = addin_.state();
        EXPECT_EQ(state.lExplorerCount, static_cast<int>(Forms().size()));
        EXPECT_EQ(state.errors.number(), 0);
        EXPECT_FALSE(state.errors.IsBusy());
        if (state.history) {
            EXPECT_LE(state.history->count(), 100U);
        }
        for (const auto& [id, form] : Forms()) {
            EXPECT_TRUE(form->IsShown());
            EXPECT_FALSE(form->State().self.Get<bool>(platform::Property::kUpdatesLocked));
            for (const auto& control : form->Controls()) {
                EXPECT_GT(control->GetPlace().width, 0) << ToUtf8(control->Name());
                EXPECT_GT(control->GetPlace().height, 0) << ToUtf8(control->Name());
            }
        }
    }
    // ---- what holds where nothing fails ----
    void CheckUndisturbed() {
        EXPECT_TRUE(platform_.messageBoxes.shown.empty())
            << ToUtf8(platform_.messageBoxes.shown.front().text);
        EXPECT_TRUE(host_->model().screenUpdating);
        EXPECT_TRUE(host_->enableEvents);
        EXPECT_EQ(host_->model().calculation, kAutomatic);
        for (const auto& [id, form] : Forms()) CheckWindow(*form);
        if (Forms().empty()) CheckClosed();
    }
    // Tree, text and selection agree.
    void CheckWindow(Form& form) {
        const auto& tree = form.Get<platform::TreeView>(names::kTree);
        const auto& pane = form.Get<platform::RichText>(names::kFormula);
        ASSERT_GT(tree.NodeCount(), 0);
        EXPECT_FALSE(pane.Text().empty());
        for (std::int32_t k = 1; k <= tree.NodeCount(); ++k) {
            EXPECT_EQ(tree.Node(k).key, u"node " + ToUtf16(std::to_string(k)));
        }
        std::u16string marked;
        int stretches = 0;
        bool before = false;
        for (std::int32_t k = 0; k < static_cast<std::int32_t>(pane.Text().size()); ++k) {
            const bool now = pane.LookAt(k) != platform::TextLook();
            if (now) marked += pane.Text()[static_cast<std::size_t>(k)];
            if (now && !before) ++stretches;
            before = now;
        }
        EXPECT_LE(stretches, 1);
        const std::int32_t row = tree.SelectedNode();
        EXPECT_EQ(marked.empty(), row <= 1) << "row " << row << " of " << tree.NodeCount();
        if (row <= 1) return;
        // A reference and a name are marked as they are written, a call from its
        // own name on.
        const std::u16string& text = tree.Node(row).text;
        const bool isLabel = text == u"condition" || text.find(u"if ") == 0;
        if (!isLabel) {
            EXPECT_EQ(marked.substr(0, text.size()), text);
        }
        const bool isCall = text == u"IF" || text == u"SUM" || text == u"OFFSET";
        if (!isLabel && !isCall) {
            EXPECT_EQ(marked, text);
        }
    }
    void CheckClosed() {
        for (const auto* cell : kCells) {
            const auto interior = host_->RangeAt(host_->FindCells(cell).value())->Interior();
            EXPECT_EQ(static_cast<int>(*interior->ColorIndex().Number()), kNoTint) << ToUtf8(cell);
        }
        const auto& history = addin_.state().history;
        EXPECT_EQ(host_->LiveHandles(),
                  handles_ + static_cast<int>(history ? history->count() : 0));
    }

    std::mt19937 random_;
    std::string where_;
    std::string action_;
    std::unique_ptr<scripted::ScriptedHost> host_ = HostToPlayWith();
    scripted::ScriptedPlatform platform_{host_->sharedAccesses()};
    Addin addin_{platform_.Services()};
    int handles_ = 0;  // that the add-in itself holds
};

int Rounds() {
    const char* const rounds = std::getenv("KORVANE_ROUNDS");
    return rounds ? std::atoi(rounds) : 200;
}

// The seeds of this run: the one that is to be repeated, or new ones.
std::vector<unsigned> Seeds() {
    if (const char* const seed = std::getenv("KORVANE_SEED")) {
        return {static_cast<unsigned>(std::strtoul(seed, nullptr, 10))};
    }
    std::random_device random;
    std::vector<unsigned> seeds(static_cast<std::size_t>(Rounds()));
    for (unsigned& seed : seeds) seed = random();
    return seeds;
}

void PlayAll(bool faults) {
    for (const unsigned seed : Seeds()) {
        {
            RandomSession session(seed);
            session.Play(300, faults);
        }
        if (::testing::Test::HasFailure()) {
            ::testing::Test::RecordProperty("seed", std::to_string(seed));
            FAIL() << "to repeat: KORVANE_SEED=" << seed;
        }
    }
}

TEST(RandomSessions, KeepTheInvariants) { PlayAll(false); }

TEST(RandomSessions, KeepThemWhateverFails) { PlayAll(true); }

}  // namespace
}  // namespace korvane
