#include "bindings/calc/dates.h"

#include <cmath>
#include <com/sun/star/beans/PropertyValue.hpp>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/configuration/theDefaultProvider.hpp>
#include <com/sun/star/i18n/LocaleData.hpp>
#include <com/sun/star/i18n/NumberFormatIndex.hpp>
#include <com/sun/star/lang/Locale.hpp>
#include <com/sun/star/util/NumberFormatsSupplier.hpp>
#include <com/sun/star/util/NumberFormatter.hpp>
#include <com/sun/star/util/XNumberFormatTypes.hpp>

#include "bindings/calc/uno_text.h"

namespace korvane::calc {

namespace css = com::sun::star;
using css::uno::Reference;
using css::uno::UNO_QUERY_THROW;
using Context = Reference<css::uno::XComponentContext>;

namespace {

template <class T>
T Setting(const Context& context, const char16_t* node, const char16_t* name) {
    css::beans::PropertyValue path;
    path.Name = ToOUString(u"nodepath");
    path.Value <<= ToOUString(node);
    css::uno::Any argument;
    argument <<= path;
    const Reference<css::beans::XPropertySet> settings(
        css::configuration::theDefaultProvider::get(context)->createInstanceWithArguments(
            ToOUString(u"com.sun.star.configuration.ConfigurationAccess"),
            css::uno::Sequence<css::uno::Any>(&argument, 1)),
        UNO_QUERY_THROW);
    T value{};
    settings->getPropertyValue(ToOUString(name)) >>= value;
    return value;
}

// The user's language for numbers and dates; empty means the system's, which the
// office knows.
css::lang::Locale UserLocale(const Context& context) {
    const std::u16string tag = ToText(
        Setting<rtl::OUString>(context, u"/org.openoffice.Setup/L10N", u"ooSetupSystemLocale"));
    const auto dash = tag.find(u'-');
    css::lang::Locale locale;
    locale.Language = ToOUString(tag.substr(0, dash));
    if (dash != std::u16string::npos) locale.Country = ToOUString(tag.substr(dash + 1));
    return locale;
}

}  // namespace

std::u16string DateText(const Context& context, double serial) {
    const css::lang::Locale locale = UserLocale(context);
    const auto supplier = css::util::NumberFormatsSupplier::createWithLocale(context, locale);
    const Reference<css::util::XNumberFormatTypes> types(supplier->getNumberFormats(),
                                                         UNO_QUERY_THROW);
    const auto formatter = css::util::NumberFormatter::create(context);
    formatter->attachNumberFormatsSupplier(supplier);
    const auto text = [&](sal_Int16 index, double number) {
        return ToText(
            formatter->convertNumberToString(types->getFormatIndex(index, locale), number));
    };
    const double day = std::floor(serial);
    std::u16string out = text(css::i18n::NumberFormatIndex::DATE_SYSTEM_SHORT, day);
    if (serial != day) out += u' ' + text(css::i18n::NumberFormatIndex::TIME_HHMMSS, serial - day);
    return out;
}

std::u16string DecimalSeparator(const Context& context) {
    return ToText(css::i18n::LocaleData::create(context)
                      ->getLocaleItem(UserLocale(context))
                      .decimalSeparator);
}

std::u16string OfficeVersion(const Context& context) {
    return ToText(
        Setting<rtl::OUString>(context, u"/org.openoffice.Setup/Product", u"ooSetupVersion"));
}

sal_Int32 UndoSteps(const Context& context) {
    return Setting<sal_Int32>(context, u"/org.openoffice.Office.Common/Undo", u"Steps");
}

}  // namespace korvane::calc
