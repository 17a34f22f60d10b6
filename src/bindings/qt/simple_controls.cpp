#include "bindings/qt/simple_controls.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFrame>
#include <QGroupBox>
#include <QPushButton>

#include "bindings/qt/colours.h"
#include "bindings/qt/formula_pane.h"
#include "bindings/qt/keys.h"
#include "bindings/qt/label_controls.h"
#include "bindings/qt/text.h"
#include "bindings/qt/text_box.h"
#include "bindings/qt/tree_control.h"

namespace korvane::qt {
namespace {

using platform::ControlKind;
using platform::Property;

class CheckBoxControl : public ControlView {
public:
    CheckBoxControl(Desk& desk, platform::WindowId window, platform::ControlId id, QWidget* parent)
        : ControlView(desk, window, id), box_(*new QCheckBox(parent)) {
        Adopt(&box_);
        connect(&box_, &QCheckBox::toggled, this, [this](bool checked) {
            Tell(platform::Toggled{this->window(), this->id(), checked});
        });
    }

protected:
    void Show(Property property) override {
        switch (property) {
            case Property::kCaption:
                box_.setText(ToQt(Get<std::u16string>(Property::kCaption)));
                break;
            case Property::kForeColour: ShowCaptionColour(); break;
            case Property::kChecked: box_.setChecked(Get<bool>(Property::kChecked)); break;
            default: ControlView::Show(property); break;
        }
    }

private:
    QCheckBox& box_;
};

class ButtonControl : public ControlView {
public:
    ButtonControl(Desk& desk, platform::WindowId window, platform::ControlId id, QWidget* parent)
        : ControlView(desk, window, id), button_(*new QPushButton(parent)) {
        Adopt(&button_);
        button_.setAutoDefault(false);
        button_.setDefault(design().isDefault);
        connect(&button_, &QPushButton::clicked, this, [this] {
            Tell(platform::Clicked{this->window(), this->id()});
        });
    }

protected:
    void Show(Property property) override {
        if (property == Property::kCaption) {
            button_.setText(ToQt(Get<std::u16string>(Property::kCaption)));
        } else {
            ControlView::Show(property);
        }
    }
    // Enter presses the button that has the focus, not the default one.
    bool FilterKey(const QKeyEvent& event) override {
        if (KeyCode(event) != platform::kKeyEnter) return false;
        if (!event.isAutoRepeat()) button_.click();
        return true;
    }

private:
    QPushButton& button_;
};

class ComboBoxControl : public ControlView {
public:
    ComboBoxControl(Desk& desk, platform::WindowId window, platform::ControlId id, QWidget* parent)
        : ControlView(desk, window, id), box_(*new QComboBox(parent)) {
        Adopt(&box_);
        connect(&box_, &QComboBox::activated, this, [this](int index) {
            Tell(platform::ItemChosen{this->window(), this->id(), index});
        });
    }

protected:
    void Show(Property property) override {
        switch (property) {
            case Property::kItems: ShowItems(); break;
            case Property::kListIndex:
                box_.setCurrentIndex(Get<std::int32_t>(Property::kListIndex));
                break;
            default: ControlView::Show(property); break;
        }
    }

private:
    void ShowItems() {
        box_.clear();
        for (const auto& item : Get<std::vector<std::u16string>>(Property::kItems)) {
            box_.addItem(ToQt(item));
        }
        box_.setCurrentIndex(Get<std::int32_t>(Property::kListIndex));
    }

    QComboBox& box_;
};

// A line with a caption round other controls.
class FrameControl : public ControlView {
public:
    FrameControl(Desk& desk, platform::WindowId window, platform::ControlId id, QWidget* parent)
        : ControlView(desk, window, id), box_(*new QGroupBox(parent)) {
        Adopt(&box_);
        box_.setAttribute(Qt::WA_TransparentForMouseEvents);
        box_.lower();
    }

protected:
    void Show(Property property) override {
        switch (property) {
            case Property::kCaption:
                box_.setTitle(ToQt(Get<std::u16string>(Property::kCaption)));
                break;
            case Property::kForeColour: ShowCaptionColour(); break;
            default: ControlView::Show(property); break;
        }
    }

private:
    QGroupBox& box_;
};

// A thin line round another control.
class RectangleControl : public ControlView {
public:
    RectangleControl(Desk& desk, platform::WindowId window, platform::ControlId id, QWidget* parent)
        : ControlView(desk, window, id), frame_(*new QFrame(parent)) {
        Adopt(&frame_);
        frame_.setFrameStyle(QFrame::Box | QFrame::Plain);
        frame_.setLineWidth(1);
        frame_.setAttribute(Qt::WA_TransparentForMouseEvents);
        frame_.lower();
    }

protected:
    void Show(Property property) override {
        if (property != Property::kForeColour) return ControlView::Show(property);
        QPalette palette = frame_.parentWidget()->palette();
        palette.setColor(QPalette::WindowText, LineColour(palette));
        frame_.setPalette(palette);
    }

private:
    QFrame& frame_;
};

template <class Kind>
std::unique_ptr<ControlView> Make(Desk& desk, platform::WindowId window, platform::ControlId id,
                                  QWidget* parent) {
    return std::make_unique<Kind>(desk, window, id, parent);
}

}  // namespace

std::unique_ptr<ControlView> NewControl(Desk& desk, platform::WindowId window,
                                        platform::ControlId id, QWidget* parent) {
    const auto& design = desk.Find(window)->design.controls[static_cast<std::size_t>(id) - 1];
    switch (design.kind) {
        case ControlKind::kTreeView: return Make<TreeControl>(desk, window, id, parent);
        case ControlKind::kRichText: return Make<RichTextControl>(desk, window, id, parent);
        case ControlKind::kCheckBox: return Make<CheckBoxControl>(desk, window, id, parent);
        case ControlKind::kButton: return Make<ButtonControl>(desk, window, id, parent);
        case ControlKind::kTextBox: return Make<TextBoxControl>(desk, window, id, parent);
        case ControlKind::kComboBox: return Make<ComboBoxControl>(desk, window, id, parent);
        case ControlKind::kFrame: return Make<FrameControl>(desk, window, id, parent);
        case ControlKind::kRectangle: return Make<RectangleControl>(desk, window, id, parent);
        case ControlKind::kPicture: return Make<PictureControl>(desk, window, id, parent);
        case ControlKind::kSplitter: return Make<SplitterControl>(desk, window, id, parent);
        case ControlKind::kLabel:
        case ControlKind::kCount_: break;
    }
    return Make<LabelControl>(desk, window, id, parent);
}

}  // namespace korvane::qt
