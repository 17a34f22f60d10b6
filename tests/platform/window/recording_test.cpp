#include "platform/window/recording.h"

#include <gtest/gtest.h>

#include "platform/window/codec.h"
#include "platform/window/test_windows.h"

namespace korvane::platform {
namespace {

// A little program: a window whose button opens a dialog, whose tree marks its
// text.
struct Session {
    explicit Session(ModalLoop& loop) : windows(loop) {
        windows.Attach(recorder);
        main = windows.Load(test::EveryControl());
        TreeView& tree = main->Get<TreeView>(test::kTree);
        RichText& pane = main->Get<RichText>(test::kRich);
        pane.SetText(u"=A1+B1");
        tree.AddNode(0, u"node 1", u"=A1+B1", {});
        tree.AddNode(1, u"node 2", u"A1", {});
        tree.onSelect = [&] {
            pane.SetSelection({1, 2});
            pane.SetSelBold(true);
        };
        main->Get<Button>(test::kButton).onClick = [this] {
            dialog = windows.Load(test::EveryControl());
            dialog->Get<Button>(test::kButton).onClick = [this] { dialog->Hide(); };
            dialog->ShowModal();
            dialog.reset();
        };
        main->Show();
    }
    ~Session() {
        main.reset();
        windows.Detach(recorder);
    }

    Recorder recorder;
    Windows windows;
    std::unique_ptr<Form> main;
    std::unique_ptr<Form> dialog;
};

// The user: what he does while something waits for him, too.
class User : public ModalLoop {
public:
    void Run(const std::function<bool()>& done) override {
        session->windows.Deliver(Toggled{2, 3, true});
        session->windows.Deliver(Clicked{2, 4});
        EXPECT_TRUE(done());
    }
    Session* session = nullptr;
};

std::string Record() {
    User user;
    Session session(user);
    user.session = &session;
    session.windows.Deliver(NodeSelected{1, 1, 2});
    session.windows.Deliver(Clicked{1, 4});
    session.windows.Deliver(Scrolled{1, 1, 5});
    return session.recorder.recording();
}

TEST(Recording, ReplayedGivesTheSameRecordingAgain) {
    const std::string recording = Record();
    Replay replay(recording);
    Session session(replay);
    replay.PlayTo(session.windows);
    EXPECT_TRUE(replay.PlayAll());
    EXPECT_EQ(session.recorder.recording(), recording);
}

TEST(Recording, ABrokenOneEndsWhereItBreaks) {
    std::string recording = Record();
    recording.resize(recording.size() - 1);
    Replay replay(recording);
    Session session(replay);
    replay.PlayTo(session.windows);
    EXPECT_FALSE(replay.PlayAll());
    EXPECT_EQ(session.main->Get<TreeView>(test::kTree).SelectedNode(), 2);
}

TEST(Recording, ABreakIsNotForgotten) {
    std::string recording = Record();
    AppendFrame(recording, "e\xFF");  // no event
    recording += Record();
    Replay replay(recording);
    Session session(replay);
    replay.PlayTo(session.windows);
    EXPECT_FALSE(replay.PlayAll());
    EXPECT_FALSE(replay.Step());
}

}  // namespace
}  // namespace korvane::platform
