// A tree widget whose rows have several columns.
#pragma once

#include <QTreeView>

namespace korvane::qt {

class TreeRows;

class ColumnTree : public QTreeView {
public:
    ColumnTree(TreeRows& rows, QWidget* parent);

    // Puts the selected rows into the clipboard; all rows when none is selected.
    void CopyRows() const;
    void CopyAll() const;
    // Works out now what is laid out later otherwise.
    void LayOut() { executeDelayedItemsLayout(); }

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                         const QEvent* event) const override;

private:
    std::vector<int> SelectedNodes() const;
    QString CutOffText(const QPoint& place) const;

    TreeRows& rows_;
};

}  // namespace korvane::qt
