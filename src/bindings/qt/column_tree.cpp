#include "bindings/qt/column_tree.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QHeaderView>
#include <QHelpEvent>
#include <QMenu>
#include <QStyledItemDelegate>
#include <QToolTip>
#include <algorithm>
#include <numeric>

#include "bindings/qt/tree_rows.h"

namespace korvane::qt {

namespace {

// Rows with some air between them.
class AiryRows : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        constexpr int kAir = 4;
        return QStyledItemDelegate::sizeHint(option, index) + QSize(0, kAir);
    }
};

}  // namespace

ColumnTree::ColumnTree(TreeRows& rows, QWidget* parent)
    : QTreeView(parent), rows_(rows), indentation_(indentation()) {
    setModel(&rows);
    setFrameShape(QFrame::NoFrame);  // designs draw a frame of their own around it
    setItemDelegate(new AiryRows(this));
    setUniformRowHeights(true);  // what keeps thousands of rows fast
    setAllColumnsShowFocus(true);
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setVerticalScrollMode(ScrollPerPixel);
    setHorizontalScrollMode(ScrollPerPixel);
    setTextElideMode(Qt::ElideRight);
    header()->setStretchLastSection(false);
    header()->setSectionsMovable(false);
    header()->setMinimumSectionSize(0);
    connect(header(), &QHeaderView::sectionResized, this, [this](int section) {
        if (section == 0) FitIndentation();
    });
}

// Beyond this many levels even the least indentation fills the column; the user
// can widen that.
void ColumnTree::FitIndentation() {
    constexpr int kLeast = 3;
    const int levels = rows_.Depth() + 1;  // the top level is indented too
    const int room = header()->count() > 0 ? header()->sectionSize(0) / 2 : 0;
    const int fitting = std::clamp(room / levels, std::min(kLeast, indentation_), indentation_);
    if (fitting != indentation()) setIndentation(fitting);
}

std::vector<int> ColumnTree::SelectedNodes() const {
    std::vector<int> nodes;
    const auto selected = selectionModel()->selectedRows();
    nodes.reserve(static_cast<std::size_t>(selected.size()));
    for (const QModelIndex& index : selected) nodes.push_back(TreeRows::NodeOf(index));
    // Rows are numbered from the top to the bottom of the filled tree.
    std::sort(nodes.begin(), nodes.end());
    return nodes;
}

void ColumnTree::CopyRows() const {
    const auto nodes = SelectedNodes();
    if (nodes.empty()) return CopyAll();
    QApplication::clipboard()->setText(rows_.TextOf(nodes));
}

void ColumnTree::CopyAll() const {
    std::vector<int> nodes(static_cast<std::size_t>(rows_.NodeCount()));
    std::iota(nodes.begin(), nodes.end(), 1);
    QApplication::clipboard()->setText(rows_.TextOf(nodes));
}

void ColumnTree::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy)) return CopyRows();
    if (event->key() == Qt::Key_C &&
        event->modifiers() == (Qt::ControlModifier | Qt::ShiftModifier)) {
        return CopyAll();
    }
    QTreeView::keyPressEvent(event);
}

// Not the base class's: that selects the first row, but a row is selected when
// the user says so.
void ColumnTree::focusInEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusInEvent(event);
    viewport()->update();
}

// Moving always selects: there is no current row beside the selected one.
QItemSelectionModel::SelectionFlags ColumnTree::selectionCommand(const QModelIndex& index,
                                                                 const QEvent* event) const {
    if (event && event->type() == QEvent::KeyPress) {
        const auto& key = static_cast<const QKeyEvent&>(*event);
        const bool moves = key.key() != Qt::Key_Space && key.key() != Qt::Key_Select;
        if (moves && key.modifiers() & Qt::ControlModifier) {
            return QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows;
        }
    }
    return QTreeView::selectionCommand(index, event);
}

void ColumnTree::contextMenuEvent(QContextMenuEvent* event) {
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    connect(menu->addAction(tr("&Copy rows"), QKeySequence::Copy), &QAction::triggered, this,
            &ColumnTree::CopyRows);
    connect(menu->addAction(tr("Copy &all"), QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_C)),
            &QAction::triggered, this, &ColumnTree::CopyAll);
    menu->popup(event->globalPos());
}

// The whole text of the cell at a place when its column is too narrow for it.
QString ColumnTree::CutOffText(const QPoint& place) const {
    const QModelIndex index = indexAt(place);
    if (!index.isValid() || sizeHintForIndex(index).width() <= visualRect(index).width()) return {};
    constexpr int kLongest = 2000;
    const QString text = index.data().toString().left(kLongest);
    // As rich text, so that long ones are broken into lines.
    return QStringLiteral("<p style=\"white-space:pre-wrap\">%1</p>").arg(text.toHtmlEscaped());
}

bool ColumnTree::viewportEvent(QEvent* event) {
    if (event->type() != QEvent::ToolTip) return QTreeView::viewportEvent(event);
    const auto& help = static_cast<const QHelpEvent&>(*event);
    QToolTip::showText(help.globalPos(), CutOffText(help.pos()), viewport());
    return true;
}

}  // namespace korvane::qt
