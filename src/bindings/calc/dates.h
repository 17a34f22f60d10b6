// Dates and numbers as the office's user sees them, and the office's settings.
#pragma once

#include <com/sun/star/uno/XComponentContext.hpp>
#include <string>

namespace korvane::calc {

// The office's short date of the user's language, with the time behind it when
// `serial` (days since 30 December 1899) has a fraction.
std::u16string DateText(
    const com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext>& context,
    double serial);

// The mark between whole number and fraction in the user's language.
std::u16string DecimalSeparator(
    const com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext>& context);

// How many steps the office keeps in an undo list; 0 when it keeps none.
sal_Int32 UndoSteps(
    const com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext>& context);

// The office's version, such as "7.4".
std::u16string OfficeVersion(
    const com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext>& context);

}  // namespace korvane::calc
