#include "platform/window/state.h"

#include <algorithm>
#include <utility>

namespace korvane::platform {

namespace {

// Whether a number that stands for one of a few things stands for any.
bool IsKnown(Property property, const PropertyValue& value) {
    const auto* number = std::get_if<std::int32_t>(&value);
    if (!number) return true;
    switch (property) {
        case Property::kShown: return *number >= 0 && *number < static_cast<int>(Shown::kCount_);
        case Property::kPointer:
            return *number >= 0 && *number < static_cast<int>(Pointer::kCount_);
        case Property::kFocus:
        case Property::kScroll: return *number >= 0;
        case Property::kListIndex: return *number >= -1;
        default: return true;
    }
}

}  // namespace

ControlState::ControlState(const ControlDesign& design) {
    InitProperties();
    SetUnchecked(Property::kPlace, design.place);
    SetUnchecked(Property::kCaption, design.caption);
    SetUnchecked(Property::kPicture, design.picture);
}

ControlState::ControlState(const FormDesign& design, const FrameSize& frame) {
    InitProperties();
    Place place = design.place;
    place.width += frame.left + frame.right;
    place.height += frame.top + frame.bottom;
    SetUnchecked(Property::kPlace, place);
    SetUnchecked(Property::kCaption, design.caption);
    SetUnchecked(Property::kVisible, false);
}

void ControlState::InitProperties() {
    for (std::size_t k = 0; k < properties_.size(); ++k) {
        constexpr std::array<PropertyValue (*)(), std::variant_size_v<PropertyValue>> kEmpty{
            [] { return PropertyValue(bool{}); },
            [] { return PropertyValue(std::int32_t{}); },
            [] { return PropertyValue(std::int64_t{}); },
            [] { return PropertyValue(Place{}); },
            [] { return PropertyValue(TextSpan{}); },
            [] { return PropertyValue(std::u16string{}); },
            [] { return PropertyValue(std::vector<std::u16string>{}); },
            [] { return PropertyValue(std::vector<TreeColumn>{}); },
        };
        properties_[k] = kEmpty[TypeOf(static_cast<Property>(k))]();
    }
    SetUnchecked(Property::kVisible, true);
    SetUnchecked(Property::kEnabled, true);
    SetUnchecked(Property::kBackColour, std::int32_t{kDesktopColour});
    SetUnchecked(Property::kListIndex, std::int32_t{-1});
}

bool ControlState::SpanFits(const TextSpan& span) const {
    const auto size = static_cast<std::int64_t>(Get<std::u16string>(Property::kText).size());
    return span.start >= 0 && span.length >= 0 &&
           std::int64_t{span.start} + std::int64_t{span.length} <= size;
}

bool ControlState::Set(Property property, const PropertyValue& value) {
    if (property >= Property::kCount_ || value.index() != TypeOf(property)) return false;
    if (property == Property::kSelection && !SpanFits(std::get<TextSpan>(value))) return false;
    if (property == Property::kSelectedNode) {
        const auto node = std::get<std::int32_t>(value);
        if (node < 0 || static_cast<std::size_t>(node) > nodes_.size()) return false;
    }
    if (!IsKnown(property, value)) return false;
    SetUnchecked(property, value);
    if (property == Property::kText) {
        SetUnchecked(Property::kSelection, TextSpan{});
        runs_.clear();
        if (!Get<std::u16string>(Property::kText).empty()) runs_.push_back({});
    }
    return true;
}

void ControlState::ClearNodes() {
    nodes_.clear();
    SetUnchecked(Property::kSelectedNode, std::int32_t{0});
    SetUnchecked(Property::kScroll, std::int32_t{0});
}

bool ControlState::AddNode(const TreeNode& node) {
    if (node.parent < 0 || static_cast<std::size_t>(node.parent) > nodes_.size()) return false;
    nodes_.push_back(node);
    return true;
}

bool ControlState::Expand(std::int32_t node, bool expanded) {
    if (node < 1 || static_cast<std::size_t>(node) > nodes_.size()) return false;
    nodes_[static_cast<std::size_t>(node) - 1].expanded = expanded;
    return true;
}

// The run that begins at `start`, split off from the one before where needed; the
// count of runs when `start` is the text's end.
std::size_t ControlState::RunFrom(std::int32_t start) {
    const auto size = static_cast<std::int32_t>(Get<std::u16string>(Property::kText).size());
    if (start >= size) return runs_.size();
    const auto after =
        std::upper_bound(runs_.begin(), runs_.end(), start,
                         [](std::int32_t at, const TextRun& run) { return at < run.start; });
    const auto run = after - 1;  // the first run starts at 0
    if (run->start == start) return static_cast<std::size_t>(run - runs_.begin());
    const auto place = static_cast<std::size_t>(after - runs_.begin());
    const TextRun rest{start, run->look};
    runs_.insert(after, rest);
    return place;
}

bool ControlState::Format(const TextSpan& span, const TextLook& look) {
    if (!SpanFits(span)) return false;
    if (span.length == 0) return true;
    const std::size_t first = RunFrom(span.start);
    const std::size_t last = RunFrom(span.start + span.length);
    runs_[first].look = look;
    runs_.erase(runs_.begin() + static_cast<std::ptrdiff_t>(first) + 1,
                runs_.begin() + static_cast<std::ptrdiff_t>(last));
    // Neighbours that look alike are one run.
    runs_.erase(std::unique(runs_.begin(), runs_.end(),
                            [](const TextRun& a, const TextRun& b) { return a.look == b.look; }),
                runs_.end());
    return true;
}

FormState::FormState(const FormOpened& opened)
    : window(opened.window),
      design(opened.design),
      frame(opened.frame),
      self(opened.design, opened.frame) {
    controls.reserve(design.controls.size());
    for (const ControlDesign& control : design.controls) {
        controls.emplace_back(control);
    }
}

ControlState* FormState::Find(ControlId control) {
    return const_cast<ControlState*>(std::as_const(*this).Find(control));
}

const ControlState* FormState::Find(ControlId control) const {
    if (control == kFormItself) return &self;
    if (control < 0 || static_cast<std::size_t>(control) > controls.size()) return nullptr;
    return &controls[static_cast<std::size_t>(control) - 1];
}

bool FormState::Apply(const Change& change) {
    return std::visit(
        [this](const auto& what) {
            using What = std::decay_t<decltype(what)>;
            if constexpr (requires { what.control; }) {
                ControlState* state = Find(what.control);
                if (!state) return false;
                if constexpr (std::is_same_v<What, PropertySet>) {
                    return state->Set(what.property, what.value);
                } else if constexpr (std::is_same_v<What, NodesCleared>) {
                    state->ClearNodes();
                    return true;
                } else if constexpr (std::is_same_v<What, NodeAdded>) {
                    return state->AddNode(what.node);
                } else if constexpr (std::is_same_v<What, NodeExpanded>) {
                    return state->Expand(what.node, what.expanded);
                } else if constexpr (std::is_same_v<What, TextFormatted>) {
                    return state->Format(what.span, what.look);
                } else {
                    return true;  // to be painted anew: the state stays
                }
            } else {
                return false;  // about windows, not about this one's state
            }
        },
        change);
}

WindowId WindowOf(const Change& change) {
    return std::visit(
        [](const auto& what) {
            if constexpr (requires { what.window; }) {
                return what.window;
            } else {
                return WindowId{0};
            }
        },
        change);
}

bool WindowsMirror::TryApply(const Change& change) {
    if (const auto* opened = std::get_if<FormOpened>(&change)) {
        return forms_.try_emplace(opened->window, *opened).second;
    }
    if (const auto* closed = std::get_if<FormClosed>(&change)) {
        return forms_.erase(closed->window) == 1;
    }
    if (const auto* focus = std::get_if<WindowFocused>(&change)) {
        focused_ = focus->handle;
        return true;
    }
    const auto form = forms_.find(WindowOf(change));
    return form != forms_.end() && form->second.Apply(change);
}

}  // namespace korvane::platform
