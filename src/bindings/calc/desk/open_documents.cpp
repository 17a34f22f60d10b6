#include "bindings/calc/desk/open_documents.h"

#include <algorithm>
#include <com/sun/star/awt/XTopWindow.hpp>
#include <com/sun/star/container/XEnumerationAccess.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/frame/XController.hpp>
#include <com/sun/star/lang/XServiceInfo.hpp>

#include "base/text.h"
#include "bindings/calc/leave_as_found.h"
#include "bindings/calc/uno_text.h"

namespace korvane::calc {

namespace css = com::sun::star;
using css::uno::Reference;
using css::uno::UNO_QUERY;

namespace {

bool IsSpreadsheet(const Reference<css::frame::XModel>& model) {
    const Reference<css::lang::XServiceInfo> info(model, UNO_QUERY);
    return info.is() &&
           info->supportsService(ToOUString(u"com.sun.star.sheet.SpreadsheetDocument"));
}

Reference<css::frame::XFrame> FrameOf(const Reference<css::frame::XModel>& model) {
    const auto controller =
        model.is() ? model->getCurrentController() : Reference<css::frame::XController>();
    return controller.is() ? controller->getFrame() : Reference<css::frame::XFrame>();
}

}  // namespace

OpenDocuments::~OpenDocuments() {
    for (const auto& open : documents_) LeaveAsFound(*open->document);
}

OpenDocument* OpenDocuments::Of(const Model& model) {
    DropClosed();
    const auto known = std::find_if(documents_.begin(), documents_.end(), [&](const auto& open) {
        return open->document->model() == model;
    });
    if (known != documents_.end()) return known->get();
    if (!model.is() || !IsSpreadsheet(model)) return nullptr;
    auto open = std::make_unique<OpenDocument>();
    open->document = std::make_shared<CalcDocument>(context_, model);
    open->document->FollowView();
    open->document->activate = [this, model] { Activate(model); };
    open->evaluator = std::make_unique<Evaluator>(*open->document);
    documents_.push_back(std::move(open));
    return documents_.back().get();
}

OpenDocument* OpenDocuments::Named(const std::u16string& fileName) {
    const auto components = css::frame::Desktop::create(context_)->getComponents();
    const auto all = components->createEnumeration();
    while (all->hasMoreElements()) {
        const Model model(all->nextElement(), UNO_QUERY);
        OpenDocument* const open = Of(model);
        if (open != nullptr && EqualIgnoringCase(open->document->FileName(), fileName)) return open;
    }
    return nullptr;
}

OpenDocument* OpenDocuments::Active() {
    const Frame frame = ActiveFrame();
    const auto controller =
        frame.is() ? frame->getController() : Reference<css::frame::XController>();
    return controller.is() ? Of(controller->getModel()) : nullptr;
}

OpenDocuments::Frame OpenDocuments::ActiveFrame() const {
    if (const Frame own = FrameOf(activated_); own.is()) return own;
    return css::frame::Desktop::create(context_)->getCurrentFrame();
}

void OpenDocuments::NoteActive(const Model& model) {
    if (activated_ != model) activated_.clear();
}

// The window is left alone when the user is in it already: raising it would take
// the keyboard from the system's own windows.
void OpenDocuments::Activate(const Model& model) {
    const Frame frame = FrameOf(model);
    if (!frame.is() || frame == ActiveFrame()) return;
    activated_ = model;
    frame->activate();
    // That does not raise it.
    if (bringToFront && bringToFront(frame)) return;
    const Reference<css::awt::XTopWindow> window(frame->getContainerWindow(), UNO_QUERY);
    if (window.is()) window->toFront();
}

void OpenDocuments::DropClosed() {
    std::erase_if(documents_, [this](const auto& open) {
        if (!open->document->IsClosed()) return false;
        if (activated_ == open->document->model()) activated_.clear();
        return true;
    });
}

}  // namespace korvane::calc
