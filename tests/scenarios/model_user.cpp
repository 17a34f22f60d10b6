#include "scenarios/model_user.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace korvane::test {
namespace {

using platform::Control;
using platform::Form;
using platform::MouseAction;
namespace names = explorer_controls;

// What the desktop tells the windows of a key; 0: they hear nothing of it.
std::int32_t CodeOf(Key key) {
    switch (key) {
        case Key::kUp: return 38;
        case Key::kDown: return 40;
        case Key::kLeft: return 37;
        case Key::kRight: return 39;
        case Key::kHome: return 36;
        case Key::kEnd: return 35;
        case Key::kSpace: return 32;
        case Key::kTab: return 9;
        case Key::kEnter: return platform::kKeyEnter;
        case Key::kEscape: return 27;
        case Key::kExplore: return 'Q';
        case Key::kExpandAll: break;
    }
    return 0;
}

platform::ControlId IdOf(const Form& window, const char16_t* name) {
    return window.Get<Control>(name).Id();
}

bool HasRowsBelow(const platform::TreeView& tree, std::int32_t node) {
    return node < tree.NodeCount() && tree.Node(node + 1).parent == node;
}

bool IsBelow(const platform::TreeView& tree, std::int32_t node, std::int32_t above) {
    while (node > above) node = tree.Node(node).parent;
    return node == above;
}

}  // namespace

ModelUser::ModelUser(World& world) : world_(world) { world_.windows().Attach(seen_); }

ModelUser::~ModelUser() { world_.windows().Detach(seen_); }

template <class E>
void ModelUser::Deliver(const Form& window, platform::ControlId control, E event) {
    event.window = window.Id();
    event.control = control;
    world_.windows().Deliver(event);
}

void ModelUser::Focus(Form& window, platform::ControlId control) {
    if (window.FocusedControl() == control) return;
    Deliver(window, control, platform::ControlFocused());
}

// To the next control in the order of Tab, and from the last to the first.
void ModelUser::MoveFocus(Form& window) {
    std::vector<const Control*> order;
    const auto& designed = window.State().design.controls;
    for (const auto& control : window.Controls()) {
        const bool counts = designed[static_cast<std::size_t>(control->Id()) - 1].tabIndex >= 0;
        if (counts && control->Enabled() && control->Visible()) order.push_back(control.get());
    }
    const auto now = std::find_if(order.begin(), order.end(), [&](const Control* control) {
        return control->Id() == window.FocusedControl();
    });
    const bool wraps = now == order.end() || now + 1 == order.end();
    Focus(window, wraps ? order.front()->Id() : (*(now + 1))->Id());
}

void ModelUser::Press(Form& window, Key key) {
    const platform::ControlId control = window.FocusedControl();
    const std::int32_t held = key == Key::kExplore ? platform::kCtrl : 0;
    if (held != 0) Deliver(window, control, platform::KeyDown{0, 0, platform::kKeyCtrl, held});
    if (const std::int32_t code = CodeOf(key)) {
        Deliver(window, control, platform::KeyDown{0, 0, code, held});
    }
    const platform::WindowId id = window.Id();
    if (held != 0 || world_.windows().forms().count(id) == 0) return;
    if (key == Key::kTab) return MoveFocus(window);
    if (key == Key::kEscape) return ClickClose(window);
    if (control == IdOf(window, names::kTree)) return PressInTree(window, key);
    if (control == IdOf(window, names::kFormula)) return PressInText(window, key);
    for (const auto* box : {names::kEveryFunction, names::kPrecise}) {
        if (control == IdOf(window, box)) return PressInBox(window, box, key);
    }
    if (key == Key::kSpace || key == Key::kEnter) ClickClose(window);
}

void ModelUser::PressInBox(Form& window, const char16_t* box, Key key) {
    if (key != Key::kSpace) return;
    Deliver(window, IdOf(window, box),
            platform::Toggled{0, 0, !window.Get<platform::CheckBox>(box).Checked()});
}

void ModelUser::PressInText(Form& window, Key key) {
    const auto& pane = PaneOf(window);
    const auto size = static_cast<std::int32_t>(pane.Text().size());
    std::int32_t caret = pane.SelStart();
    if (key == Key::kLeft) --caret;
    if (key == Key::kRight) ++caret;
    if (caret == pane.SelStart() || caret < 0 || caret > size) return;
    Deliver(window, pane.Id(), platform::TextSelected{0, 0, {caret, 0}});
}

// As trees of all desktops have it: the keys follow the visible rows.
void ModelUser::PressInTree(Form& window, Key key) {
    const auto& tree = TreeOf(window);
    const auto rows = VisibleRows(window);
    const std::int32_t row = tree.SelectedNode();
    const auto at = std::find(rows.begin(), rows.end(), row);
    const bool moves = key != Key::kExpandAll && key != Key::kSpace;
    if (at == rows.end() && moves) return SelectRow(window, rows.front());
    if (at == rows.end()) return;
    if (key == Key::kHome) return SelectRow(window, rows.front());
    if (key == Key::kEnd) return SelectRow(window, rows.back());
    if (key == Key::kDown && at + 1 != rows.end()) return SelectRow(window, *(at + 1));
    if (key == Key::kUp && at != rows.begin()) return SelectRow(window, *(at - 1));
    if (key == Key::kRight && HasRowsBelow(tree, row)) {
        return tree.Expanded(row) ? SelectRow(window, row + 1) : Toggle(window, row, true);
    }
    if (key == Key::kLeft) {
        if (tree.Expanded(row) && HasRowsBelow(tree, row)) return Toggle(window, row, false);
        if (tree.Node(row).parent != 0) return SelectRow(window, tree.Node(row).parent);
    }
    if (key != Key::kExpandAll) return;
    for (std::int32_t below = row; below <= tree.NodeCount(); ++below) {
        if (IsBelow(tree, below, row) && HasRowsBelow(tree, below)) Toggle(window, below, true);
    }
}

void ModelUser::SelectRow(Form& window, std::int32_t node) {
    if (TreeOf(window).SelectedNode() == node) return;
    Deliver(window, IdOf(window, names::kTree), platform::NodeSelected{0, 0, node});
}

void ModelUser::Toggle(Form& window, std::int32_t node, bool expanded) {
    if (TreeOf(window).Expanded(node) == expanded) return;
    Deliver(window, IdOf(window, names::kTree), platform::NodeToggled{0, 0, node, expanded});
}

void ModelUser::ClickRow(Form& window, std::int32_t node) {
    Focus(window, IdOf(window, names::kTree));
    SelectRow(window, node);
}

// Folding what holds the selected row selects the row that is folded.
void ModelUser::ClickArrow(Form& window, std::int32_t node) {
    const auto& tree = TreeOf(window);
    Focus(window, tree.Id());
    const bool folds = tree.Expanded(node);
    Toggle(window, node, !folds);
    if (folds && IsBelow(tree, tree.SelectedNode(), node)) SelectRow(window, node);
}

void ModelUser::PutCaret(Form& window, std::int32_t position) {
    Focus(window, IdOf(window, names::kFormula));
    Deliver(window, IdOf(window, names::kFormula), platform::TextSelected{0, 0, {position, 0}});
}

// The press puts the caret there already.
void ModelUser::SelectText(Form& window, platform::TextSpan span) {
    PutCaret(window, span.start);
    Deliver(window, IdOf(window, names::kFormula), platform::TextSelected{0, 0, span});
}

void ModelUser::ClickBox(Form& window, const char16_t* box) {
    Focus(window, IdOf(window, box));
    PressInBox(window, box, Key::kSpace);
}

void ModelUser::ClickClose(Form& window) {
    Deliver(window, IdOf(window, names::kClose), platform::Clicked());
}

// The bar follows in steps, and the pointer's place is told relative to it.
void ModelUser::DragSplitter(Form& window, int down) {
    const auto& bar = window.Get<Control>(names::kSplitter);
    const double perPixel = world_.screen().twipsPerPixelY;
    const float grip = bar.Height() / 2;
    const double pointer = double{bar.Top()} + grip + down * perPixel;
    const auto tell = [&](MouseAction action, double y) {
        Deliver(window, bar.Id(),
                platform::Mouse{0, 0, action, platform::kLeftButton, 0, 0, static_cast<float>(y)});
    };
    tell(MouseAction::kDown, grip);
    for (int step = 0; step < 1000 && std::abs(pointer - bar.Top() - grip) > perPixel / 2; ++step) {
        tell(MouseAction::kMove, pointer - bar.Top());
    }
    tell(MouseAction::kUp, pointer - bar.Top());
}

void ModelUser::Resize(Form& window, int wider, int higher) {
    platform::Place place = window.GetPlace();
    place.width += static_cast<float>(wider * world_.screen().twipsPerPixelX);
    place.height += static_cast<float>(higher * world_.screen().twipsPerPixelY);
    world_.windows().Deliver(platform::FormPlaced{window.Id(), place});
}

void ModelUser::Close(Form& window) {
    world_.windows().Deliver(platform::CloseAsked{window.Id(), true});
}

void ModelUser::BringToFront(Form& window) {
    world_.windows().Deliver(platform::FormActivated{window.Id()});
}

void ModelUser::Rest() {
    for (const auto& [id, form] : world_.windows().forms()) {
        if (!form->IsShown() || !known_.insert(id).second) continue;
        BringToFront(*form);
        if (form->FocusedControl() == platform::kFormItself) MoveFocus(*form);
    }
    if (std::exchange(focused_, seen_.focused()) == focused_) return;
    if (Form* led = world_.windows().FindForm(focused_)) BringToFront(*led);
}

void ModelUser::ExpectToSeeAll() {
    const auto& forms = world_.windows().forms();
    ASSERT_EQ(seen_.forms().size(), forms.size());
    for (const auto& [id, form] : forms) EXPECT_EQ(seen_.forms().at(id), form->State());
}

}  // namespace korvane::test
