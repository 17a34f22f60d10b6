// A workbook that is open in a window, as its user sees it.
#pragma once

#include <com/sun/star/frame/XController.hpp>
#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/table/XCellRange.hpp>
#include <string>

namespace korvane::test {

class ShownBook {
public:
    // `content` is a flat ODF text, whatever the file is called. Comes back when the
    // window has the keyboard; throws std::runtime_error when it never gets it.
    ShownBook(const std::string& fileName, const std::string& content);
    ~ShownBook();
    ShownBook(const ShownBook&) = delete;
    ShownBook& operator=(const ShownBook&) = delete;

    const com::sun::star::uno::Reference<com::sun::star::frame::XModel>& model() const {
        return model_;
    }
    com::sun::star::uno::Reference<com::sun::star::frame::XController> view() const;
    // The user goes to its window, and is there.
    void Activate() const;
    // Without asking whether it is to be saved.
    void Close();

    // Cells such as "S.A1:B2", the sheet's name without quotes; without one those of
    // the first sheet.
    com::sun::star::uno::Reference<com::sun::star::table::XCellRange> Cells(
        const std::string& reference) const;
    // Selects them as the user does.
    void Select(const std::string& reference) const;
    // What is selected: "[Book.ods]S!$A$1:$B$2".
    std::string Selected() const;
    // The title of its window.
    std::u16string Title() const;

private:
    void WaitForFocus() const;

    com::sun::star::uno::Reference<com::sun::star::frame::XModel> model_;
};

}  // namespace korvane::test
