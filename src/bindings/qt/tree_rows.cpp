#include "bindings/qt/tree_rows.h"

#include <QStringList>
#include <algorithm>

#include "bindings/qt/text.h"

namespace korvane::qt {

void TreeRows::SetRows(const std::vector<platform::TreeNode>& rows) {
    beginResetModel();
    rows_.clear();
    rows_.reserve(rows.size());
    below_.assign(rows.size() + 1, {});
    depth_ = 0;
    for (const platform::TreeNode& node : rows) {
        std::vector<int>& siblings = below_[static_cast<std::size_t>(node.parent)];
        Row row{node.parent,
                static_cast<int>(siblings.size()),
                node.parent == 0 ? 0 : At(node.parent).depth + 1,
                {}};
        row.cells.reserve(node.subItems.size() + 1);
        row.cells.push_back(OnOneLine(node.text));
        for (const std::u16string& text : node.subItems) row.cells.push_back(OnOneLine(text));
        rows_.push_back(std::move(row));
        depth_ = std::max(depth_, rows_.back().depth);
        siblings.push_back(NodeCount());
    }
    endResetModel();
}

void TreeRows::SetColumns(const std::vector<platform::TreeColumn>& columns) {
    const auto before = columns_.size();
    const bool resets = before != columns.size();
    if (resets) beginResetModel();
    columns_ = columns;
    if (resets) {
        endResetModel();
    } else if (before > 0) {
        headerDataChanged(Qt::Horizontal, 0, static_cast<int>(before) - 1);
    }
}

QModelIndex TreeRows::IndexOf(int node, int column) const {
    if (node < 1 || node > NodeCount()) return {};
    return createIndex(At(node).place, column, static_cast<quintptr>(node));
}

const std::vector<int>& TreeRows::Below(const QModelIndex& parent) const {
    return below_[parent.isValid() ? static_cast<std::size_t>(NodeOf(parent)) : 0];
}

QModelIndex TreeRows::index(int row, int column, const QModelIndex& parent) const {
    const auto& below = Below(parent);
    if (row < 0 || static_cast<std::size_t>(row) >= below.size()) return {};
    if (column < 0 || static_cast<std::size_t>(column) >= columns_.size()) return {};
    return createIndex(row, column, static_cast<quintptr>(below[static_cast<std::size_t>(row)]));
}

QModelIndex TreeRows::parent(const QModelIndex& index) const {
    return index.isValid() ? IndexOf(At(NodeOf(index)).parent) : QModelIndex();
}

int TreeRows::rowCount(const QModelIndex& parent) const {
    return parent.column() > 0 ? 0 : static_cast<int>(Below(parent).size());
}

int TreeRows::columnCount(const QModelIndex& /*parent*/) const {
    return static_cast<int>(columns_.size());
}

QString TreeRows::Cell(int node, int column) const {
    const auto& cells = At(node).cells;
    const auto place = static_cast<std::size_t>(column);
    return place < cells.size() ? cells[place] : QString();
}

// A whole row for those who listen: its first cell, and the others behind the
// names of their columns.
QString TreeRows::Spoken(int node) const {
    QString text = Cell(node, 0);
    for (int column = 1; column < columnCount({}); ++column) {
        const QString cell = Cell(node, column);
        if (cell.isEmpty()) continue;
        text += QStringLiteral("; %1: %2")
                    .arg(ToQt(columns_[static_cast<std::size_t>(column)].text), cell);
    }
    return text;
}

QVariant TreeRows::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const int node = NodeOf(index);
    if (role == Qt::DisplayRole) return Cell(node, index.column());
    if (role == Qt::AccessibleTextRole) {
        return index.column() == 0 ? Spoken(node) : Cell(node, index.column());
    }
    return {};
}

QVariant TreeRows::headerData(int section, Qt::Orientation orientation, int role) const {
    const auto place = static_cast<std::size_t>(section);
    if (orientation != Qt::Horizontal || section < 0 || place >= columns_.size()) return {};
    if (role == Qt::DisplayRole) return ToQt(columns_[place].text);
    if (role == Qt::TextAlignmentRole) return int(Qt::AlignLeft | Qt::AlignVCenter);
    return {};
}

QString TreeRows::TextOf(const std::vector<int>& nodes) const {
    QStringList lines;
    for (const int node : nodes) {
        QStringList cells;
        for (int column = 0; column < columnCount({}); ++column) cells << Cell(node, column);
        lines << QString(At(node).depth * 2, QChar(u' ')) + cells.join(QChar(u'\t'));
    }
    return lines.join(QChar(u'\n'));
}

}  // namespace korvane::qt
