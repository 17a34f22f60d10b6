#include "bindings/calc/desk/command_labels.h"

#include <com/sun/star/beans/PropertyValue.hpp>
#include <com/sun/star/frame/theUICommandDescription.hpp>

#include "base/text.h"
#include "bindings/calc/desk/spreadsheet_module.h"
#include "bindings/calc/uno_text.h"

namespace korvane::calc {

namespace css = com::sun::star;

std::u16string CaptionOfLabel(const std::u16string& label) {
    return ReplaceAll(ReplaceAll(label, u"&", u"&&"), u"~", u"&");
}

std::u16string LabelOfCaption(const std::u16string& caption) {
    std::u16string label;
    for (std::size_t k = 0; k < caption.size(); ++k) {
        if (caption[k] != u'&') {
            label += caption[k];
        } else if (caption.compare(k, 2, u"&&") == 0) {
            label += caption[k++];
        } else {
            label += u'~';
        }
    }
    return label;
}

std::u16string CommandLabels::Label(const std::u16string& url) {
    if (!commands_.is()) {
        css::frame::theUICommandDescription::get(context_)->getByName(
            ToOUString(kSpreadsheetModule)) >>= commands_;
    }
    const rtl::OUString name = ToOUString(url);
    if (!commands_.is() || !commands_->hasByName(name)) return {};
    css::uno::Sequence<css::beans::PropertyValue> properties;
    commands_->getByName(name) >>= properties;
    rtl::OUString label;
    rtl::OUString inMenus;
    for (const auto& property : properties) {
        if (property.Name == ToOUString(u"Label")) property.Value >>= label;
        if (property.Name == ToOUString(u"PopupLabel")) property.Value >>= inMenus;
    }
    return ToText(inMenus.isEmpty() ? label : inMenus);
}

}  // namespace korvane::calc
