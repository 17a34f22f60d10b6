// The pictures of the add-in's buttons.
#pragma once

#include <com/sun/star/ui/XModuleUIConfigurationManager2.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <string>

namespace korvane::calc {

// An SVG picture as one of `pixels` by `pixels`: the office draws it in the size
// that it says, and only then makes an icon of it. What is no SVG picture, or does not say how
// large it is and what it shows, comes back as it is.
std::string SvgOfSize(const std::string& svg, int pixels);

// Throws the office's own exceptions, and korvane::Error for what is no picture.
class ButtonPictures {
public:
    using Manager =
        com::sun::star::uno::Reference<com::sun::star::ui::XModuleUIConfigurationManager2>;

    ButtonPictures(
        const com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext>& context,
        const Manager& manager)
        : context_(context), manager_(manager) {}

    // Shows a picture, the content of an image file, wherever the command is, in
    // each of the office's icon sizes. What is transparent in it stays that.
    void Set(const std::u16string& url, const std::string& image);
    // A command without a picture is passed over.
    void Remove(const std::u16string& url);

private:
    com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext> context_;
    Manager manager_;
};

}  // namespace korvane::calc
