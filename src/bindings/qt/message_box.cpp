#include "bindings/qt/message_box.h"

#include <QWindow>

#include "bindings/qt/text.h"

namespace korvane::qt {

using platform::MessageAnswer;
using platform::MessageButtons;

namespace {

QMessageBox::Icon IconOf(platform::MessageIcon icon) {
    switch (icon) {
        case platform::MessageIcon::kCritical: return QMessageBox::Critical;
        case platform::MessageIcon::kQuestion: return QMessageBox::Question;
        case platform::MessageIcon::kInformation: return QMessageBox::Information;
        case platform::MessageIcon::kNone:
        case platform::MessageIcon::kCount_: break;
    }
    return QMessageBox::NoIcon;
}

// A box that was closed without an answer refuses.
MessageAnswer AnswerOf(MessageButtons buttons, int result) {
    if (buttons != MessageButtons::kYesNo) return MessageAnswer::kOK;
    return result == QMessageBox::Yes ? MessageAnswer::kYes : MessageAnswer::kNo;
}

}  // namespace

AskedMessages::~AskedMessages() {
    while (!boxes_.empty()) Drop(boxes_.begin()->first);
}

QMessageBox* AskedMessages::Find(std::int32_t id) const {
    const auto found = boxes_.find(id);
    return found == boxes_.end() ? nullptr : found->second;
}

void AskedMessages::Ask(const platform::MessageAsked& message, QWindow* owner) {
    Drop(message.id);
    const bool asks = message.buttons == MessageButtons::kYesNo;
    auto* box = new QMessageBox(IconOf(message.icon), ToQt(message.title), ToQt(message.text),
                                asks ? QMessageBox::Yes | QMessageBox::No : QMessageBox::Ok);
    boxes_[message.id] = box;
    box->setTextFormat(Qt::PlainText);
    box->setTextInteractionFlags(Qt::TextSelectableByMouse);
    if (asks) box->setEscapeButton(QMessageBox::No);
    box->setDefaultButton(asks ? QMessageBox::Yes : QMessageBox::Ok);
    QObject::connect(box, &QDialog::finished, box,
                     [this, id = message.id, buttons = message.buttons](int result) {
                         Answer(id, AnswerOf(buttons, result));
                     });
    box->setWindowModality(Qt::ApplicationModal);
    box->winId();
    box->windowHandle()->setTransientParent(owner);
    box->show();
}

void AskedMessages::Answer(std::int32_t id, MessageAnswer answer) {
    QMessageBox* box = Find(id);
    if (!box) return;
    boxes_.erase(id);
    box->deleteLater();
    tell_({id, answer});
}

void AskedMessages::Drop(std::int32_t id) {
    QMessageBox* box = Find(id);
    if (!box) return;
    boxes_.erase(id);
    box->hide();
    box->deleteLater();
}

}  // namespace korvane::qt
