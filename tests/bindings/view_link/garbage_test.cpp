// Whatever a view sends, the windows stay whole and the view is given up or
// heard.
#include <gtest/gtest.h>

#include "bindings/view_link/linked_windows.h"
#include "platform/window/random_messages.h"

namespace korvane::view_link {
namespace {

using namespace platform;
namespace names = korvane::test;

// What a view may send, with windows and controls that mostly are there.
FromView NextMessage(names::RandomMessages& random) {
    if (random.Below(10) == 0) return random.NextFromView();
    Event event = random.NextEvent();
    std::visit(
        [&](auto& what) {
            what.window = random.Below(3) + 1;
            if constexpr (requires { what.control; }) what.control = random.Below(13);
        },
        event);
    if (std::holds_alternative<CloseAsked>(event)) return Pong{random.Below(5)};
    return event;
}

void Damage(std::string& bytes, names::RandomMessages& random) {
    for (int count = random.Below(4); count > 0; --count) {
        const auto at = static_cast<std::size_t>(random.Below(static_cast<int>(bytes.size())));
        switch (random.Below(3)) {
            case 0: bytes[at] = static_cast<char>(random.Below(256)); break;
            case 1: bytes.erase(at, static_cast<std::size_t>(random.Below(5))); break;
            default: bytes.insert(at, 1, static_cast<char>(random.Below(256)));
        }
        if (bytes.empty()) return;
    }
}

std::string Script(names::RandomMessages& random) {
    std::string script;
    for (int burst = random.Below(20); burst >= 0; --burst) {
        std::string bytes;
        for (int k = random.Below(20); k > 0; --k) {
            AppendFrame(bytes, Encode(NextMessage(random)));
        }
        if (burst == 0 && !bytes.empty()) Damage(bytes, random);
        script += bytes;
    }
    return script;
}

// Handlers that write, and that wait within themselves.
void GiveHandlers(test::LinkedWindows& all) {
    auto& tree = all.Get<TreeView>(names::kTree);
    auto& pane = all.Get<RichText>(names::kRich);
    pane.SetText(u"=SUM(A1,B1)*2");
    tree.AddNode(0, u"k", u"t", {});
    tree.onSelect = [&] {
        pane.SetSelection({tree.SelectedNode(), 2});
        pane.SetSelBold(true);
        tree.AddNode(0, u"k", u"t", {});
    };
    all.Get<Button>(names::kButton).onClick = [&all] {
        if (all.link.HasView()) {
            all.boxes.Show({u"?", u"", MessageIcon::kNone, MessageButtons::kYesNo});
        }
    };
}

TEST(Garbage, NeverHarmsTheWindows) {
    int lost = 0;
    for (unsigned seed = 0; seed < 500; ++seed) {
        SCOPED_TRACE(seed);
        names::RandomMessages random(seed);
        test::LinkedWindows all(test::LongLimits());
        WindowsMirror witness;
        all.windows.Attach(witness);
        GiveHandlers(all);
        auto view = all.AttachNear(random.Below(10) > 0);
        view->SayBytes(Script(random));
        // A view that is gone altogether, and one that still takes what it is sent.
        if (seed % 2 == 0) view->Leave();
        ::shutdown(view->link().number(), SHUT_WR);
        all.pump.RunUntil([] { return false; });
        EXPECT_FALSE(all.link.HasView());
        for (const Loss loss : all.losses) lost += loss == Loss::kGarbage ? 1 : 0;
        all.ExpectSame(witness);
        all.windows.Detach(witness);
    }
    EXPECT_GT(lost, 100) << "hardly anything was garbage";
}

}  // namespace
}  // namespace korvane::view_link
