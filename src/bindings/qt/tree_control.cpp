#include "bindings/qt/tree_control.h"

#include <QHeaderView>
#include <QScrollBar>
#include <algorithm>

#include "bindings/qt/keys.h"

namespace korvane::qt {

using platform::Property;

TreeControl::TreeControl(Desk& desk, platform::WindowId window, platform::ControlId id,
                         QWidget* parent)
    : ControlView(desk, window, id), tree_(*new ColumnTree(rows_, parent)) {
    Adopt(&tree_);
    connect(tree_.selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& index) { TellSelected(index); });
    connect(&tree_, &QTreeView::expanded, this,
            [this](const QModelIndex& index) { TellToggled(index, true); });
    connect(&tree_, &QTreeView::collapsed, this,
            [this](const QModelIndex& index) { TellToggled(index, false); });
    connect(tree_.header(), &QHeaderView::sectionResized, this,
            [this](int section, int /*before*/, int width) {
                Tell(platform::ColumnResized{this->window(), this->id(), section + 1, width});
            });
    connect(tree_.verticalScrollBar(), &QScrollBar::valueChanged, this, [this](int position) {
        Tell(platform::Scrolled{this->window(), this->id(), position});
    });
}

void TreeControl::TellSelected(const QModelIndex& index) {
    // None is current while the rows are exchanged.
    if (!index.isValid() || rowsNoted_) return;
    Tell(platform::NodeSelected{window(), id(), TreeRows::NodeOf(index)});
}

void TreeControl::TellToggled(const QModelIndex& index, bool expanded) {
    if (rowsNoted_) return;
    Tell(platform::NodeToggled{window(), id(), TreeRows::NodeOf(index), expanded});
    if (expanded || desk().IsQuiet() || !IsOpen() || rowsNoted_) return;
    // The selected row does not vanish: the one above it is selected instead.
    for (QModelIndex above = tree_.currentIndex().parent(); above.isValid();
         above = above.parent()) {
        if (above == index.siblingAtColumn(0)) return tree_.setCurrentIndex(above);
    }
}

void TreeControl::Note(const platform::Change& change) {
    ControlView::Note(change);
    if (const auto* row = std::get_if<platform::NodeExpanded>(&change)) {
        toggled_.push_back(row->node);
    } else if (std::holds_alternative<platform::NodeAdded>(change) ||
               std::holds_alternative<platform::NodesCleared>(change)) {
        rowsNoted_ = true;
    }
}

void TreeControl::NoteAll() {
    ControlView::NoteAll();
    rowsNoted_ = true;
}

void TreeControl::Settle() {
    if (rowsNoted_) {
        ShowRows();
        // Selection and place were lost with the former rows.
        ControlView::Note(platform::PropertySet{window(), id(), Property::kSelectedNode, {}});
        ControlView::Note(platform::PropertySet{window(), id(), Property::kScroll, {}});
        rowsNoted_ = false;
    }
    for (const int node : std::exchange(toggled_, {})) ShowExpanded(node);
    ControlView::Settle();
}

void TreeControl::ShowRows() {
    rows_.SetColumns(Get<std::vector<platform::TreeColumn>>(Property::kColumns));
    rows_.SetRows(State().nodes());
    toggled_.clear();
    const auto& nodes = State().nodes();
    tree_.FitIndentation();
    for (std::size_t k = 0; k < nodes.size(); ++k) {
        if (nodes[k].expanded) ShowExpanded(static_cast<int>(k) + 1);
    }
}

void TreeControl::ShowExpanded(int node) {
    const auto place = static_cast<std::size_t>(node) - 1;
    const QModelIndex index = rows_.IndexOf(node);
    const bool expanded = State().nodes()[place].expanded;
    if (tree_.isExpanded(index) == expanded) return;
    // What was expanded and not laid out yet would not be collapsed.
    if (!expanded) tree_.LayOut();
    tree_.setExpanded(index, expanded);
}

void TreeControl::ShowColumns() {
    const auto& columns = Get<std::vector<platform::TreeColumn>>(Property::kColumns);
    rows_.SetColumns(columns);
    for (std::size_t k = 0; k < columns.size(); ++k) {
        const int section = static_cast<int>(k);
        constexpr int kWidest = 100'000;
        const int width = std::clamp(columns[k].width, 0, kWidest);
        if (tree_.header()->sectionSize(section) != width) {
            tree_.header()->resizeSection(section, width);
        }
    }
}

void TreeControl::ShowSelected() {
    const QModelIndex index = rows_.IndexOf(Get<std::int32_t>(Property::kSelectedNode));
    if (index.isValid() && tree_.currentIndex().siblingAtColumn(0) == index) return;
    tree_.setAutoScroll(false);
    tree_.selectionModel()->setCurrentIndex(
        index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    tree_.setAutoScroll(true);
    if (!index.isValid()) return tree_.clearSelection();
    ScrollToSelected();
}

// Qt expands what lies above a row when it scrolls to it; whether that is
// expanded is the model's to say.
void TreeControl::ScrollToSelected() {
    const QModelIndex index = tree_.currentIndex();
    for (QModelIndex above = index.parent(); above.isValid(); above = above.parent()) {
        if (!tree_.isExpanded(above)) return;
    }
    tree_.LayOut();
    if (index.isValid()) tree_.scrollTo(index);
}

void TreeControl::ShowScroll() {
    tree_.LayOut();
    tree_.verticalScrollBar()->setValue(Get<std::int32_t>(Property::kScroll));
}

void TreeControl::Show(Property property) {
    switch (property) {
        case Property::kColumns: return ShowColumns();
        case Property::kSelectedNode: return ShowSelected();
        case Property::kScroll: return ShowScroll();
        default: return ControlView::Show(property);
    }
}

// Rows are laid out only now: what was scrolled before did not count.
void TreeControl::Appeared() {
    ShowScroll();
    if (Get<std::int32_t>(Property::kScroll) == 0) ScrollToSelected();
}

void TreeControl::Reconcile() {
    if (!tree_.isVisible()) return;
    Tell(platform::Scrolled{window(), id(), tree_.verticalScrollBar()->value()});
}

// What Enter does is the model's business alone.
bool TreeControl::FilterKey(const QKeyEvent& event) {
    return KeyCode(event) == platform::kKeyEnter;
}

}  // namespace korvane::qt
