// A text pane with a caret whose characters can look different.
#pragma once

#include <QTextEdit>

#include "bindings/qt/control_view.h"

namespace korvane::qt {

// The widget: shows a text unit by unit, so that its positions are the text's
// own, whatever the text holds.
class FormulaText : public QTextEdit {
public:
    explicit FormulaText(QWidget* parent);
    void PutText(const std::u16string& text);
    platform::TextSpan Selected() const;
    // The caret at the span's end.
    void Select(const platform::TextSpan& span);
    void Format(const platform::TextSpan& span, const QTextCharFormat& format);

protected:
    QMimeData* createMimeDataFromSelection() const override;

private:
    std::u16string text_;
};

class RichTextControl : public ControlView {
public:
    RichTextControl(Desk& desk, platform::WindowId window, platform::ControlId id, QWidget* parent);

    void Note(const platform::Change& change) override;
    void NoteAll() override;
    void Settle() override;

    FormulaText& pane() { return pane_; }

protected:
    void Show(platform::Property property) override;
    bool Filter(QEvent& event) override;
    bool FilterKey(const QKeyEvent& event) override;
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void ShowRuns();
    void ShowLine();
    void ShowSelection();
    // What is selected now; after a click even when it is what was selected before.
    void TellSelection(bool clicked = false);
    QTextCharFormat FormatOf(const platform::TextLook& look) const;

    FormulaText& pane_;
    std::vector<platform::TextRun> shown_;
    bool runsNoted_ = true;
    bool dragging_ = false;  // the user selects with the mouse at this moment
};

}  // namespace korvane::qt
