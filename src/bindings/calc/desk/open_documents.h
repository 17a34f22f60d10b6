// The spreadsheet documents that are open in a running Calc, and which of them
// the user works in.
#pragma once

#include <com/sun/star/frame/XFrame.hpp>
#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "bindings/calc/calc_document.h"
#include "bindings/calc/evaluator.h"

namespace korvane::calc {

// A document and what evaluates its formulas.
struct OpenDocument {
    DocumentPtr document;
    std::unique_ptr<Evaluator> evaluator;
};

// All calls are made on the office's main thread.
class OpenDocuments {
public:
    using Model = com::sun::star::uno::Reference<com::sun::star::frame::XModel>;
    using Frame = com::sun::star::uno::Reference<com::sun::star::frame::XFrame>;

    explicit OpenDocuments(
        const com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext>& context)
        : context_(context) {}
    // Takes away what still stands in the documents for a moment only.
    ~OpenDocuments();
    OpenDocuments(const OpenDocuments&) = delete;
    OpenDocuments& operator=(const OpenDocuments&) = delete;

    // The document of a model, the same one as long as it is open; null when the
    // model is no spreadsheet. Throws the office's exceptions.
    OpenDocument* Of(const Model& model);
    // The open spreadsheet whose file has this name, whatever its case; null when
    // there is none.
    OpenDocument* Named(const std::u16string& fileName);
    // The document that the user works in: the one whose window was activated
    // last, by him or by Activate. Null when that window holds none.
    OpenDocument* Active();
    // The frame of that window; null when there is none.
    Frame ActiveFrame() const;
    // Brings a frame's window to the front in place of the office, which gives it the
    // keyboard; false: it has not. Must not throw. Empty: there is no such way.
    std::function<bool(const Frame&)> bringToFront;
    // The user went to a window of this document.
    void NoteActive(const Model& model);

private:
    void Activate(const Model& model);
    void DropClosed();

    com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext> context_;
    std::vector<std::unique_ptr<OpenDocument>> documents_;
    // Activated by us: the office learns of it when the window system says so.
    Model activated_;
};

}  // namespace korvane::calc
