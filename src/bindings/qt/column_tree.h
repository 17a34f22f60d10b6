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
    // Indents less where a deep tree would leave no room for the texts of its
    // first column.
    void FitIndentation();
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
    const int indentation_;  // the style's own, in pixels
};

}  // namespace korvane::qt
