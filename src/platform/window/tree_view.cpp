#include "platform/window/tree_view.h"

#include <algorithm>

namespace korvane::platform {

void TreeView::AddColumn(const std::u16string& key, const std::u16string& text,
                         std::int32_t pixels) {
    auto columns = Columns();
    columns.push_back({key, text, std::max(pixels, 0)});
    Write(Property::kColumns, columns);
}

std::int32_t TreeView::ColumnWidth(std::int32_t column) const {
    return Columns().at(static_cast<std::size_t>(column) - 1).width;
}

void TreeView::SetColumnWidth(std::int32_t column, std::int32_t pixels) {
    auto columns = Columns();
    columns.at(static_cast<std::size_t>(column) - 1).width = std::max(pixels, 0);
    Write(Property::kColumns, columns);
}

std::int32_t TreeView::AddNode(std::int32_t parent, const std::u16string& key,
                               const std::u16string& text, std::vector<std::u16string> subItems) {
    TreeNode node{key, parent, text, std::move(subItems), false};
    if (!Make(NodeAdded{WindowNumber(), Id(), std::move(node)})) return 0;
    byKey_.try_emplace(key, NodeCount());
    return NodeCount();
}

void TreeView::ClearNodes() {
    byKey_.clear();
    Make(NodesCleared{WindowNumber(), Id()});
}

const TreeNode& TreeView::Node(std::int32_t node) const {
    return State().nodes().at(static_cast<std::size_t>(node) - 1);
}

std::int32_t TreeView::FindNode(const std::u16string& key) const {
    const auto found = byKey_.find(key);
    return found == byKey_.end() ? 0 : found->second;
}

void TreeView::Expand(std::int32_t node, bool expanded, Source source) {
    if (!HasNode(node) || Expanded(node) == expanded) return;
    Make(NodeExpanded{WindowNumber(), Id(), node, expanded}, source);
}

void TreeView::SetExpanded(std::int32_t node, bool expanded) {
    Expand(node, expanded, Source::kSystem);
}

std::u16string TreeView::SelectedKey() const {
    const std::int32_t node = SelectedNode();
    return node == 0 ? std::u16string() : Node(node).key;
}

void TreeView::Select(std::int32_t node, Source source) {
    if (!HasNode(node)) return;
    for (auto above = Node(node).parent; above != 0; above = Node(above).parent) {
        Expand(above, true, Source::kSystem);
    }
    if (Write(Property::kSelectedNode, node, source) && onSelect) onSelect();
}

void TreeView::SelectNode(std::int32_t node) { Select(node, Source::kSystem); }

bool TreeView::Accept(const Event& event) {
    if (Control::Accept(event)) return true;
    if (!IsOpenToUser()) return false;
    if (const auto* selected = std::get_if<NodeSelected>(&event)) {
        if (!HasNode(selected->node)) return false;
        Select(selected->node, Source::kView);
        return true;
    }
    if (const auto* toggled = std::get_if<NodeToggled>(&event)) {
        if (!HasNode(toggled->node)) return false;
        Expand(toggled->node, toggled->expanded, Source::kView);
        return true;
    }
    if (const auto* resized = std::get_if<ColumnResized>(&event)) {
        constexpr std::int32_t kWidest = 100'000;
        if (resized->column < 1 || resized->column > ColumnCount() || resized->width < 0 ||
            resized->width > kWidest) {
            return false;
        }
        auto columns = Columns();
        columns[static_cast<std::size_t>(resized->column) - 1].width = resized->width;
        Write(Property::kColumns, columns, Source::kView);
        return true;
    }
    if (const auto* scrolled = std::get_if<Scrolled>(&event)) {
        if (scrolled->position < 0) return false;
        Write(Property::kScroll, scrolled->position, Source::kView);
        return true;
    }
    return false;
}

}  // namespace korvane::platform
