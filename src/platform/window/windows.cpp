#include "platform/window/windows.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace korvane::platform {

namespace {

bool IsTextBox(const FormState& state, ControlId control) {
    return control > 0 && state.design.controls[static_cast<std::size_t>(control) - 1].kind ==
                              ControlKind::kTextBox;
}

}  // namespace

Windows::~Windows() { assert(forms_.empty()); }

std::unique_ptr<Form> Windows::Load(const FormDesign& design) {
    Call("Windows.Load");
    return std::make_unique<Form>(*this, ++lastId_, design);
}

void Windows::Register(Form& form) {
    forms_[form.Id()] = &form;
    Tell(FormOpened{form.Id(), form.State().design, form.State().frame}, Source::kSystem);
}

void Windows::Unregister(Form& form) {
    forms_.erase(form.Id());
    if (locked_ == &form) locked_ = nullptr;
    Tell(FormClosed{form.Id()}, Source::kSystem);
}

Form* Windows::FindForm(std::int64_t handle) const {
    const auto found = std::find_if(forms_.begin(), forms_.end(), [handle](const auto& entry) {
        return entry.second->Handle() == handle;
    });
    return found == forms_.end() ? nullptr : found->second;
}

void Windows::SetFocus(std::int64_t handle) {
    Call("Windows.SetFocus");
    focused_ = handle;
    Tell(WindowFocused{handle}, Source::kSystem);
}

void Windows::LockUpdates(Form* form) {
    const auto lock = [](Form& which, bool locked) {
        which.Make(PropertySet{which.Id(), kFormItself, Property::kUpdatesLocked, locked},
                   Source::kSystem);
    };
    // Ends in any case: a window that is never painted again is worse than one
    // that flickers.
    if (Form* before = std::exchange(locked_, nullptr)) lock(*before, false);
    Call("Windows.LockUpdates");
    locked_ = form;
    if (locked_) lock(*locked_, true);
}

void Windows::Tell(const Change& change, Source source) {
    const std::vector<View*> views = views_;  // one that fails may be detached meanwhile
    for (View* view : views) {
        if (source == Source::kView && view == origin_) continue;
        if (std::find(views_.begin(), views_.end(), view) != views_.end()) view->Apply(change);
    }
}

void Windows::Attach(View& view) {
    for (const auto& [id, form] : forms_) TellAll(view, *form);
    if (focused_ != 0) view.Apply(WindowFocused{focused_});
    views_.push_back(&view);
}

void Windows::Detach(View& view) {
    std::erase(views_, &view);
    if (origin_ == &view) origin_ = nullptr;
    for (Waiting& waiting : queue_) {
        if (waiting.origin == &view) waiting.origin = nullptr;
    }
}

// Everything that a window holds beyond its design; the window itself last, so
// that it is shown when it is whole.
void Windows::TellAll(View& view, const Form& form) const {
    const FormState& state = form.State();
    const FormOpened opened{state.window, state.design, state.frame};
    const FormState designed(opened);
    view.Apply(opened);
    const auto tell = [&view, &state, &designed](ControlId id) {
        const ControlState& now = *state.Find(id);
        for (const TreeNode& node : now.nodes()) view.Apply(NodeAdded{state.window, id, node});
        for (std::size_t k = 0; k < static_cast<std::size_t>(Property::kCount_); ++k) {
            const auto property = static_cast<Property>(k);
            const PropertyValue& value = now.Value(property);
            if (value == designed.Find(id)->Value(property)) continue;
            view.Apply(PropertySet{state.window, id, property, value});
        }
        const auto& runs = now.runs();
        const auto size =
            static_cast<std::int32_t>(now.Get<std::u16string>(Property::kText).size());
        for (std::size_t k = 0; k < runs.size(); ++k) {
            if (runs[k].look == TextLook{}) continue;
            const std::int32_t end = k + 1 < runs.size() ? runs[k + 1].start : size;
            const TextSpan span{runs[k].start, end - runs[k].start};
            view.Apply(TextFormatted{state.window, id, span, runs[k].look});
        }
    };
    for (const auto& control : form.Controls()) tell(control->Id());
    tell(kFormItself);
}

// Whether the user can do this to the window while another one is modal: it can
// still be moved, and it can be told to go.
bool Windows::IsReached(const Form& form, const Event& event) const {
    if (modalForms_.empty() || modalForms_.back() == &form) return true;
    if (const auto* close = std::get_if<CloseAsked>(&event)) return !close->byUser;
    return std::holds_alternative<FormPlaced>(event);
}

void Windows::Run(const Waiting& waiting) {
    const auto id = std::visit([](const auto& what) { return what.window; }, waiting.event);
    const auto found = forms_.find(id);
    if (found == forms_.end()) return;
    const bool reached = IsReached(*found->second, waiting.event);
    if (reached) {
        const std::vector<View*> views = views_;
        for (View* view : views) view->Hear(waiting.event);
        origin_ = waiting.tellsBack ? nullptr : waiting.origin;
    }
    const bool taken = reached && found->second->Accept(waiting.event);
    const View* origin = std::exchange(origin_, nullptr);
    if (!taken && (!reached || waiting.tellsBack)) origin = waiting.origin;
    if (!taken) Correct(waiting.event, origin);
}

// A view shows its user's doing at once. What the window did not take has to be
// taken back there.
void Windows::Correct(const Event& event, const View* origin) {
    const auto view = std::find(views_.begin(), views_.end(), origin);
    const auto form = forms_.find(std::visit([](const auto& what) { return what.window; }, event));
    if (view == views_.end() || form == forms_.end()) return;
    const FormState& state = form->second->State();
    const auto control = std::visit(
        [](const auto& what) {
            if constexpr (requires { what.control; }) {
                return ControlId{what.control};
            } else {
                return kFormItself;
            }
        },
        event);
    const ControlState* now = state.Find(control);
    if (!now) return;
    for (const Property property :
         {Property::kPlace, Property::kText, Property::kSelection, Property::kChecked,
          Property::kListIndex, Property::kColumns, Property::kSelectedNode, Property::kScroll}) {
        const bool ofTheUser =
            property == Property::kPlace ? control == kFormItself : control != kFormItself;
        if (!ofTheUser) continue;
        // Only a text box can be written by the user; a new text would take a rich
        // one's formatting.
        if (property == Property::kText && !IsTextBox(state, control)) continue;
        (*view)->Apply(PropertySet{state.window, control, property, now->Value(property)});
    }
    const auto* toggled = std::get_if<NodeToggled>(&event);
    if (toggled && toggled->node >= 1 &&
        static_cast<std::size_t>(toggled->node) <= now->nodes().size()) {
        const TreeNode& node = now->nodes()[static_cast<std::size_t>(toggled->node) - 1];
        (*view)->Apply(NodeExpanded{state.window, control, toggled->node, node.expanded});
    }
}

void Windows::Deliver(const Event& event, const View* origin, bool tellsBack) {
    queue_.push_back({event, origin, tellsBack});
    if (delivering_) return;
    struct Delivery {
        Windows& windows;
        explicit Delivery(Windows& all) : windows(all) {
            windows.delivering_ = true;
            ++windows.handlers_;
        }
        ~Delivery() {
            windows.delivering_ = false;
            windows.origin_ = nullptr;
            if (--windows.handlers_ == 0) std::exchange(windows.leaving_, {}).clear();
        }
    } delivery(*this);
    while (!queue_.empty()) {
        const Waiting waiting = std::move(queue_.front());
        queue_.pop_front();
        Run(waiting);
    }
}

void Windows::LetGoLater(std::shared_ptr<void> object) {
    if (handlers_ > 0) leaving_.push_back(std::move(object));
}

ModalScope::ModalScope(Windows& windows, const Form* form)
    : windows_(windows), delivering_(windows.delivering_), origin_(windows.origin_) {
    windows_.delivering_ = false;
    windows_.origin_ = nullptr;
    windows_.modalForms_.push_back(form);
    // What came before is for the windows as they were: it waits for the end.
    waiting_.swap(windows_.queue_);
}

ModalScope::~ModalScope() {
    windows_.queue_.insert(windows_.queue_.begin(), waiting_.begin(), waiting_.end());
    windows_.modalForms_.pop_back();
    windows_.delivering_ = delivering_;
    windows_.origin_ = origin_;
}

}  // namespace korvane::platform
