// What the user reads on an entry of a menu or toolbar.
#pragma once

#include <com/sun/star/container/XNameAccess.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <string>

namespace korvane::calc {

// "&" before the access key and "&&" for an ampersand, as against the office's
// "~" and "&".
std::u16string CaptionOfLabel(const std::u16string& label);
std::u16string LabelOfCaption(const std::u16string& caption);

// The labels of Calc's own commands in the user's language.
class CommandLabels {
public:
    explicit CommandLabels(
        const com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext>& context)
        : context_(context) {}
    // As the menus show it; empty for a command that has none.
    std::u16string Label(const std::u16string& url);

private:
    com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext> context_;
    com::sun::star::uno::Reference<com::sun::star::container::XNameAccess> commands_;
};

}  // namespace korvane::calc
