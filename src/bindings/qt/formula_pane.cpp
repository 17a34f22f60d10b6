#include "bindings/qt/formula_pane.h"

#include <QAbstractTextDocumentLayout>
#include <QMimeData>
#include <QMouseEvent>
#include <QTextBlock>
#include <algorithm>

#include "bindings/qt/colours.h"
#include "bindings/qt/keys.h"
#include "bindings/qt/text.h"

namespace korvane::qt {

using platform::Property;
using platform::TextLook;
using platform::TextSpan;

namespace {

// One unit for each of the text. Qt would make one of CR LF and would take some
// non-characters for marks of its own.
QString Shown(const std::u16string& text) {
    QString shown = ToQt(text);
    for (qsizetype k = 0; k < shown.size(); ++k) {
        QChar& ch = shown[k];
        if (ch == u'\r') {
            const bool pair = k + 1 < shown.size() && shown[k + 1] == u'\n';
            ch = pair ? QChar(0x200B) : QChar(u'\n');
        } else if ((ch.unicode() < 0x20 && ch != u'\n' && ch != u'\t') ||
                   (ch.unicode() >= 0xFDD0 && ch.unicode() <= 0xFDEF) || ch == QChar(0xFFFC)) {
            ch = QChar::ReplacementCharacter;
        }
    }
    return shown;
}

// How the runs' text looks from `at` on, and where that ends.
TextLook LookAt(const std::vector<platform::TextRun>& runs, std::int32_t at, std::int32_t& end) {
    TextLook look;
    for (const platform::TextRun& run : runs) {
        if (run.start > at) {
            end = std::min(end, run.start);
            break;
        }
        look = run.look;
    }
    return look;
}

}  // namespace

FormulaText::FormulaText(QWidget* parent) : QTextEdit(parent) {
    setReadOnly(true);
    setFrameStyle(QFrame::Box | QFrame::Plain);
    setAcceptRichText(false);
    setUndoRedoEnabled(false);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setTabChangesFocus(true);
    setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    // A formula reads from the left whatever script its names are in.
    QTextOption option = document()->defaultTextOption();
    option.setTextDirection(Qt::LeftToRight);
    option.setAlignment(Qt::AlignLeft);
    document()->setDefaultTextOption(option);
}

void FormulaText::PutText(const std::u16string& text) {
    text_ = text;
    setPlainText(Shown(text));
    // Qt goes on with the format of the former text. As one edit: a change of the
    // block's format alone would discard the layout, and nothing be painted.
    QTextCursor all(document());
    all.beginEditBlock();
    all.select(QTextCursor::Document);
    all.setCharFormat({});
    all.setBlockCharFormat({});
    all.endEditBlock();
}

TextSpan FormulaText::Selected() const {
    const QTextCursor cursor = textCursor();
    const int start = cursor.selectionStart();
    return {start, cursor.selectionEnd() - start};
}

void FormulaText::Select(const TextSpan& span) {
    QTextCursor cursor(document());
    cursor.setPosition(span.start);
    cursor.setPosition(span.start + span.length, QTextCursor::KeepAnchor);
    setTextCursor(cursor);
    ensureCursorVisible();
}

void FormulaText::Format(const TextSpan& span, const QTextCharFormat& format) {
    QTextCursor cursor(document());
    cursor.setPosition(span.start);
    cursor.setPosition(span.start + span.length, QTextCursor::KeepAnchor);
    cursor.setCharFormat(format);
}

// What was selected as it is in the formula, not as it is shown.
QMimeData* FormulaText::createMimeDataFromSelection() const {
    const TextSpan span = Selected();
    auto* copy = new QMimeData;
    copy->setText(ToQt(
        text_.substr(static_cast<std::size_t>(span.start), static_cast<std::size_t>(span.length))));
    return copy;
}

RichTextControl::RichTextControl(Desk& desk, platform::WindowId window, platform::ControlId id,
                                 QWidget* parent)
    : ControlView(desk, window, id), pane_(*new FormulaText(parent)) {
    Adopt(&pane_);
    pane_.viewport()->installEventFilter(this);
    pane_.setAccessibleName(tr("Formula"));
    connect(&pane_, &QTextEdit::cursorPositionChanged, this, [this] { TellSelection(); });
    connect(&pane_, &QTextEdit::selectionChanged, this, [this] { TellSelection(); });
}

void RichTextControl::TellSelection(bool clicked) {
    if (!IsOpen()) return;
    const platform::TextSelected selected{window(), id(), pane_.Selected()};
    if (clicked) {
        desk().TellAlways(selected);
    } else {
        Tell(selected);
    }
}

void RichTextControl::Note(const platform::Change& change) {
    ControlView::Note(change);
    const auto* set = std::get_if<platform::PropertySet>(&change);
    if (std::holds_alternative<platform::TextFormatted>(change) ||
        (set && set->property == Property::kText)) {
        runsNoted_ = true;
    }
}

void RichTextControl::NoteAll() {
    ControlView::NoteAll();
    runsNoted_ = true;
}

void RichTextControl::Settle() {
    ControlView::Settle();
    if (runsNoted_) ShowRuns();
    runsNoted_ = false;
}

QTextCharFormat RichTextControl::FormatOf(const TextLook& look) const {
    QTextCharFormat format;
    if (look.bold) format.setFontWeight(QFont::Bold);
    if (look.underline) format.setFontUnderline(true);
    if (look.colour != 0) {
        format.setForeground(
            TextColour(look.colour, pane_.palette(), QPalette::Text, QPalette::Base));
    }
    return format;
}

// Touches only the characters that look different now, and lays out once.
void RichTextControl::ShowRuns() {
    const auto& runs = State().runs();
    const auto size = static_cast<std::int32_t>(Get<std::u16string>(Property::kText).size());
    QTextCursor edit(pane_.document());
    edit.beginEditBlock();
    for (std::int32_t at = 0; at < size;) {
        std::int32_t end = size;
        const TextLook look = LookAt(runs, at, end);
        if (LookAt(shown_, at, end) != look) pane_.Format({at, end - at}, FormatOf(look));
        at = end;
    }
    edit.endEditBlock();
    shown_ = runs;
}

void RichTextControl::ShowSelection() {
    // The end that the user holds stays his; at the release all is told.
    if (dragging_) return;
    const auto span = Get<TextSpan>(Property::kSelection);
    // An equal selection stays as it is: its caret may be at the other end.
    if (pane_.Selected() != span) pane_.Select(span);
}

// The same line as a rectangle's, with which it stands side by side.
void RichTextControl::ShowLine() {
    QPalette palette = pane_.parentWidget()->palette();
    palette.setColor(QPalette::WindowText, LineColour(palette));
    pane_.setPalette(palette);
}

void RichTextControl::Show(Property property) {
    switch (property) {
        case Property::kForeColour: ShowLine(); break;
        case Property::kText:
            pane_.PutText(Get<std::u16string>(Property::kText));
            shown_.clear();
            break;
        case Property::kSelection: ShowSelection(); break;
        default: ControlView::Show(property); break;
    }
}

bool RichTextControl::eventFilter(QObject* object, QEvent* event) {
    if (object == pane_.viewport()) return IsOpen() && Filter(*event);
    return ControlView::eventFilter(object, event);
}

bool RichTextControl::Filter(QEvent& event) {
    const bool isLeft =
        (event.type() == QEvent::MouseButtonPress || event.type() == QEvent::MouseButtonDblClick ||
         event.type() == QEvent::MouseButtonRelease) &&
        static_cast<QMouseEvent&>(event).button() == Qt::LeftButton;
    if (isLeft) {
        dragging_ = event.type() != QEvent::MouseButtonRelease;
        // After the widget has made of the release what it does.
        if (!dragging_) {
            QMetaObject::invokeMethod(
                this, [this] { TellSelection(true); }, Qt::QueuedConnection);
        }
    } else if (event.type() == QEvent::Hide) {
        dragging_ = false;
    }
    return false;
}

bool RichTextControl::FilterKey(const QKeyEvent& event) {
    return KeyCode(event) == platform::kKeyEnter;
}

}  // namespace korvane::qt
