// Writing into a user's document without leaving a trace.
#pragma once

#include <com/sun/star/document/XUndoManager.hpp>
#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/util/XModifiable2.hpp>

namespace korvane::calc {

// While it lives, writes neither repaint the views nor mark the document as
// modified nor reach its undo list. Ask BeforeWrite before each single write.
class Silence {
public:
    explicit Silence(const com::sun::star::uno::Reference<com::sun::star::frame::XModel>& model);
    ~Silence();
    Silence(const Silence&) = delete;
    Silence& operator=(const Silence&) = delete;

    void BeforeWrite();
    // For one write that cannot be undone by another: it goes to the undo list
    // after all, and TakeBack undoes it. What could be redone before is lost.
    void BeforeWriteToTakeBack();
    void TakeBack();

private:
    com::sun::star::uno::Reference<com::sun::star::frame::XModel> model_;
    com::sun::star::uno::Reference<com::sun::star::util::XModifiable2> modifiable_;
    com::sun::star::uno::Reference<com::sun::star::document::XUndoManager> undo_;
    bool wasEnabled_ = false;
    bool locked_ = false;
};

}  // namespace korvane::calc
