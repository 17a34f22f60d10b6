// A tree whose rows have a text per column.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/window/control.h"

namespace korvane::platform {

// Rows ("nodes") are numbered from 1 in the order in which they were added and
// are named by keys; 0 stands for no row. Columns are numbered from 1.
class TreeView : public Control {
public:
    using Control::Control;

    const std::vector<TreeColumn>& Columns() const {
        return Get<std::vector<TreeColumn>>(Property::kColumns);
    }
    void AddColumn(const std::u16string& key, const std::u16string& text, std::int32_t pixels);
    std::int32_t ColumnCount() const { return static_cast<std::int32_t>(Columns().size()); }
    // `column` must be one of them. Below 0 counts as 0.
    std::int32_t ColumnWidth(std::int32_t column) const;
    void SetColumnWidth(std::int32_t column, std::int32_t pixels);

    // Adds a row behind the others, below `parent` (0: at the top level),
    // collapsed. `subItems` are the texts of the second and further columns. A
    // key that stands already names the first of its rows. Returns its number.
    std::int32_t AddNode(std::int32_t parent, const std::u16string& key, const std::u16string& text,
                         std::vector<std::u16string> subItems);
    // Takes all rows away; nothing is selected or scrolled then, and no event
    // says so.
    void ClearNodes();
    std::int32_t NodeCount() const { return static_cast<std::int32_t>(State().nodes().size()); }
    // `node` must be one of them.
    const TreeNode& Node(std::int32_t node) const;
    // 0 when there is none.
    std::int32_t FindNode(const std::u16string& key) const;

    bool Expanded(std::int32_t node) const { return Node(node).expanded; }
    void SetExpanded(std::int32_t node, bool expanded);

    // The selected row's number, 0 for none; its key, empty for none.
    std::int32_t SelectedNode() const { return Get<std::int32_t>(Property::kSelectedNode); }
    std::u16string SelectedKey() const;
    // Selects a row and expands those above it, so that it can be seen. Raises
    // onSelect when another row was selected before.
    void SelectNode(std::int32_t node);

    // Pixels that are scrolled away above.
    std::int32_t ScrollPosition() const { return Get<std::int32_t>(Property::kScroll); }
    void SetScrollPosition(std::int32_t pixels) { Write(Property::kScroll, pixels); }

    // The selected row is another one; once per change, whoever made it.
    std::function<void()> onSelect;
    bool Accept(const Event& event) override;

private:
    void Select(std::int32_t node, Source source);
    void Expand(std::int32_t node, bool expanded, Source source);
    bool HasNode(std::int32_t node) const { return node >= 1 && node <= NodeCount(); }

    std::unordered_map<std::u16string, std::int32_t> byKey_;
};

}  // namespace korvane::platform
