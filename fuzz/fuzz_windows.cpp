// Any bytes as what a view sends and as what a model tells: nothing crashes,
// what is read is written as the same bytes, and a copy that follows the changes
// holds what the windows hold.
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "platform/window/codec.h"
#include "platform/window/test_windows.h"

namespace {

using namespace korvane::platform;

void Require(bool holds) {
    if (!holds) std::abort();
}

// A window whose handlers write, as the system's do.
struct Target : korvane::test::TestWindows {
    Target() {
        auto& tree = Get<TreeView>(korvane::test::kTree);
        auto& pane = Get<RichText>(korvane::test::kRich);
        tree.onSelect = [&tree, &pane] {
            pane.SetSelection({0, 99});
            pane.SetSelBold(false);
            pane.SetSelection({tree.SelectedNode(), 2});
            pane.SetSelBold(true);
        };
        pane.onSelChange = [&tree, &pane] { tree.SelectNode(pane.SelStart()); };
        form->onQueryClose = [](bool /*byUser*/) { return true; };
        windows.Attach(mirror);
    }
    ~Target() { windows.Detach(mirror); }
    WindowsMirror mirror;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Target target;
    WindowsMirror told;
    std::string_view rest(reinterpret_cast<const char*>(data), size);
    while (!rest.empty()) {
        // A message behind its length in a byte.
        const auto length = static_cast<std::uint8_t>(rest.front());
        rest.remove_prefix(1);
        const std::string_view message = rest.substr(0, length);
        rest.remove_prefix(message.size());
        if (const auto event = DecodeEvent(message)) {
            Require(Encode(*event) == message);
            target.windows.Deliver(*event);
        }
        if (const auto change = DecodeChange(message)) {
            Require(Encode(*change) == message);
            told.TryApply(*change);
        }
    }
    Require(target.mirror.forms().at(target.form->Id()) == target.form->State());
    return 0;
}
