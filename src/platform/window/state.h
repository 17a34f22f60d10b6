// All that windows hold, as plain data. The model keeps it and a view far away
// keeps a copy: both by applying the same changes, so that they cannot differ.
#pragma once

#include <array>
#include <map>
#include <string>
#include <vector>

#include "platform/window/change.h"
#include "platform/window/view.h"

namespace korvane::platform {

// Characters of a rich text that look alike, up to the next run or the end.
struct TextRun {
    std::int32_t start = 0;
    TextLook look;
    friend bool operator==(const TextRun&, const TextRun&) = default;
};

// One control, or a window itself.
class ControlState {
public:
    // As designed.
    explicit ControlState(const ControlDesign& design);
    ControlState(const FormDesign& design, const FrameSize& frame);

    // The property's value; of a property that was never set, what the design
    // says or else false, 0, no text. T is the property's type.
    template <class T>
    const T& Get(Property property) const {
        return std::get<T>(properties_[static_cast<std::size_t>(property)]);
    }
    const PropertyValue& Value(Property property) const {
        return properties_[static_cast<std::size_t>(property)];
    }
    const std::vector<TreeNode>& nodes() const { return nodes_; }
    // In order and without gaps: the first starts at 0. Empty for an empty text.
    const std::vector<TextRun>& runs() const { return runs_; }

    // Each keeps the state whole: a new text has one plain run, its selection is
    // at its start; rows that vanish lose the selection. Each answers false, and
    // changes nothing, for what does not fit: a wrong type, a span outside the
    // text, a row that is not there.
    bool Set(Property property, const PropertyValue& value);
    void ClearNodes();
    bool AddNode(const TreeNode& node);
    bool Expand(std::int32_t node, bool expanded);
    bool Format(const TextSpan& span, const TextLook& look);

    friend bool operator==(const ControlState&, const ControlState&) = default;

private:
    void InitProperties();
    void SetUnchecked(Property property, PropertyValue value) {
        properties_[static_cast<std::size_t>(property)] = std::move(value);
    }
    bool SpanFits(const TextSpan& span) const;
    std::size_t RunFrom(std::int32_t start);

    std::array<PropertyValue, static_cast<std::size_t>(Property::kCount_)> properties_;
    std::vector<TreeNode> nodes_;
    std::vector<TextRun> runs_;
};

// One window with its controls.
struct FormState {
    explicit FormState(const FormOpened& opened);

    WindowId window;
    FormDesign design;
    FrameSize frame;
    ControlState self;
    std::vector<ControlState> controls;

    // Null when there is no such control; kFormItself is the window.
    ControlState* Find(ControlId control);
    const ControlState* Find(ControlId control) const;
    // Makes a change to this window; false when it does not fit.
    bool Apply(const Change& change);

    friend bool operator==(const FormState&, const FormState&) = default;
};

// The window that a change is about; 0 for one that is about none.
WindowId WindowOf(const Change& change);

// A copy of all windows, kept by their changes.
class WindowsMirror : public View {
public:
    void Apply(const Change& change) override { TryApply(change); }
    // False, and nothing happens, for a change that does not fit.
    bool TryApply(const Change& change);

    const std::map<WindowId, FormState>& forms() const { return forms_; }
    // The handle that was given the focus last.
    std::int64_t focused() const { return focused_; }

private:
    std::map<WindowId, FormState> forms_;
    std::int64_t focused_ = 0;
};

}  // namespace korvane::platform
