// Opening a workbook that nobody vouches for.
#pragma once

#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <stdexcept>
#include <string>

namespace korvane::office {

// The file cannot be opened as a workbook; the message says why, in one line.
class NotAWorkbook : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Opens the file hidden: no macro runs, no link is updated, nothing is asked.
// Throws NotAWorkbook.
com::sun::star::uno::Reference<com::sun::star::frame::XModel> OpenWorkbook(
    const com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext>& context,
    const std::string& path);

}  // namespace korvane::office
