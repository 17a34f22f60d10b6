// A tree view of a window.
#pragma once

#include "bindings/qt/column_tree.h"
#include "bindings/qt/control_view.h"
#include "bindings/qt/tree_rows.h"

namespace korvane::qt {

class TreeControl : public ControlView {
public:
    TreeControl(Desk& desk, platform::WindowId window, platform::ControlId id, QWidget* parent);

    void Note(const platform::Change& change) override;
    void NoteAll() override;
    void Settle() override;
    void Reconcile() override;
    void Appeared() override;

    ColumnTree& tree() { return tree_; }
    const TreeRows& rows() const { return rows_; }

protected:
    void Show(platform::Property property) override;
    bool FilterKey(const QKeyEvent& event) override;

private:
    void ShowRows();
    void ShowExpanded(int node);
    void ShowColumns();
    void ShowSelected();
    void ShowScroll();
    void ScrollToSelected();
    void TellSelected(const QModelIndex& index);
    void TellToggled(const QModelIndex& index, bool expanded);

    TreeRows rows_;
    ColumnTree& tree_;
    bool rowsNoted_ = true;
    std::vector<int> toggled_;
};

}  // namespace korvane::qt
