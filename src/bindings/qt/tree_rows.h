// The rows of a tree view as Qt's views read them.
#pragma once

#include <QAbstractItemModel>
#include <vector>

#include "platform/window/types.h"

namespace korvane::qt {

// Rows are numbered from 1 as in the windows' model. It is refilled as a whole:
// a tree is filled once for each exploration.
class TreeRows : public QAbstractItemModel {
public:
    using QAbstractItemModel::QAbstractItemModel;

    // Each row's parent is an earlier row, or 0.
    void SetRows(const std::vector<platform::TreeNode>& rows);
    void SetColumns(const std::vector<platform::TreeColumn>& columns);

    QModelIndex IndexOf(int node, int column = 0) const;
    // 0 for no row.
    static int NodeOf(const QModelIndex& index) { return static_cast<int>(index.internalId()); }
    // How many rows lie above the deepest one.
    int Depth() const { return depth_; }
    int NodeCount() const { return static_cast<int>(rows_.size()); }

    // Rows as lines of cells with tabs between them; blanks before the first
    // cell show how deep a row lies.
    QString TextOf(const std::vector<int>& nodes) const;

    QModelIndex index(int row, int column, const QModelIndex& parent) const override;
    QModelIndex parent(const QModelIndex& index) const override;
    int rowCount(const QModelIndex& parent) const override;
    int columnCount(const QModelIndex& parent) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    struct Row {
        int parent = 0;
        int place = 0;  // among its parent's rows
        int depth = 0;
        std::vector<QString> cells;
    };

    const Row& At(int node) const { return rows_[static_cast<std::size_t>(node) - 1]; }
    const std::vector<int>& Below(const QModelIndex& parent) const;
    QString Cell(int node, int column) const;
    QString Spoken(int node) const;

    std::vector<Row> rows_;
    std::vector<std::vector<int>> below_{1};  // the rows right below each, 0 for the top
    std::vector<platform::TreeColumn> columns_;
    int depth_ = 0;
};

}  // namespace korvane::qt
