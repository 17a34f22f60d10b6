#include "bindings/calc/desk/bar_entries.h"

#include <array>
#include <com/sun/star/beans/PropertyValue.hpp>
#include <com/sun/star/ui/ItemType.hpp>
#include <com/sun/star/uno/Sequence.hxx>

#include "base/text.h"
#include "bindings/calc/desk/command_table.h"
#include "bindings/calc/uno_text.h"

namespace korvane::calc {

namespace css = com::sun::star;
using css::uno::Reference;

namespace {

using Properties = css::uno::Sequence<css::beans::PropertyValue>;

Properties PropertiesOf(const EntriesPtr& entries, sal_Int32 index) {
    Properties properties;
    entries->getByIndex(index) >>= properties;
    return properties;
}

template <class T>
T PropertyOf(const EntriesPtr& entries, sal_Int32 index, const char16_t* name, T value = {}) {
    const rtl::OUString wanted = ToOUString(name);
    for (const auto& property : PropertiesOf(entries, index)) {
        if (property.Name == wanted) property.Value >>= value;
    }
    return value;
}

template <class T>
css::beans::PropertyValue Property(const char16_t* name, const T& value) {
    css::beans::PropertyValue property;
    property.Name = ToOUString(name);
    property.Value <<= value;
    return property;
}

std::u16string DescribeValue(const css::uno::Any& value) {
    rtl::OUString text;
    bool truth = false;
    sal_Int64 number = 0;
    EntriesPtr entries;
    if (value >>= text) return ToText(text);
    if (value >>= truth) return truth ? u"true" : u"false";
    if (value >>= number) return ToUtf16(std::to_string(number));
    if ((value >>= entries) && entries.is()) return u"{\n" + DescribeEntries(entries) + u"}";
    return u"-";
}

}  // namespace

bool IsSeparator(const EntriesPtr& entries, sal_Int32 index) {
    // Spaces and line breaks of toolbars divide as lines do.
    return PropertyOf<sal_Int16>(entries, index, u"Type") != css::ui::ItemType::DEFAULT;
}

std::u16string UrlOf(const EntriesPtr& entries, sal_Int32 index) {
    return ToText(PropertyOf<rtl::OUString>(entries, index, u"CommandURL"));
}

std::u16string LabelOf(const EntriesPtr& entries, sal_Int32 index) {
    return ToText(PropertyOf<rtl::OUString>(entries, index, u"Label"));
}

EntriesPtr SubmenuOf(const EntriesPtr& entries, sal_Int32 index) {
    return PropertyOf<EntriesPtr>(entries, index, u"ItemDescriptorContainer");
}

sal_Int32 FindUrl(const EntriesPtr& entries, const std::u16string& url) {
    for (sal_Int32 k = 0; k < entries->getCount(); ++k) {
        if (!IsSeparator(entries, k) && UrlOf(entries, k) == url) return k;
    }
    return -1;
}

std::vector<sal_Int32> ControlPlaces(const EntriesPtr& entries) {
    std::vector<sal_Int32> places;
    for (sal_Int32 k = 0; k < entries->getCount(); ++k) {
        if (!IsSeparator(entries, k)) places.push_back(k);
    }
    return places;
}

EntriesPtr Reached(EntriesPtr entries, const std::vector<std::u16string>& menus) {
    for (const std::u16string& menu : menus) {
        const sal_Int32 index = FindUrl(entries, menu);
        entries = index < 0 ? EntriesPtr() : SubmenuOf(entries, index);
        if (!entries.is()) break;
    }
    return entries;
}

void InsertEntry(const ChangingEntriesPtr& entries, sal_Int32 index, const EntryData& entry) {
    // Toolbars leave out an entry that does not say that it is visible.
    const std::array properties = {
        Property(u"CommandURL", ToOUString(entry.url)),
        Property(u"HelpURL", rtl::OUString()),
        Property(u"Label", rtl::OUString()),
        Property(u"Type", sal_Int16{css::ui::ItemType::DEFAULT}),
        Property(u"Style", sal_Int16{0}),
        Property(u"IsVisible", true),
        Property(u"ItemDescriptorContainer", entry.entries),
    };
    entries->insertByIndex(
        index, css::uno::Any(Properties(properties.data(), entry.entries.is() ? 7 : 6)));
}

void InsertSeparator(const ChangingEntriesPtr& entries, sal_Int32 index) {
    const std::array properties = {
        Property(u"Type", sal_Int16{css::ui::ItemType::SEPARATOR_LINE}),
        Property(u"IsVisible", true),
    };
    entries->insertByIndex(index, css::uno::Any(Properties(properties.data(), 2)));
}

void SetEntryProperty(const ChangingEntriesPtr& entries, sal_Int32 index, const char16_t* name,
                      const css::uno::Any& value) {
    Properties properties = PropertiesOf(Reading(entries), index);
    const rtl::OUString wanted = ToOUString(name);
    sal_Int32 place = 0;
    while (place < properties.getLength() && properties[place].Name != wanted) ++place;
    if (place == properties.getLength()) properties.realloc(place + 1);
    properties[place].Name = wanted;
    properties[place].Value = value;
    entries->replaceByIndex(index, css::uno::Any(properties));
}

std::u16string DescribeEntries(const EntriesPtr& entries) {
    std::u16string text;
    for (sal_Int32 k = 0; k < entries->getCount(); ++k) {
        for (const auto& property : PropertiesOf(entries, k)) {
            text += ToText(property.Name) + u"=" + DescribeValue(property.Value) + u";";
        }
        text += u'\n';
    }
    return text;
}

bool HasLeftovers(const EntriesPtr& entries) {
    for (sal_Int32 k = 0; k < entries->getCount(); ++k) {
        if (IsCommandUrl(UrlOf(entries, k))) return true;
        const EntriesPtr submenu = SubmenuOf(entries, k);
        if (submenu.is() && HasLeftovers(submenu)) return true;
    }
    return false;
}

bool RemoveLeftovers(const ChangingEntriesPtr& entries) {
    bool found = false;
    for (sal_Int32 k = entries->getCount() - 1; k >= 0; --k) {
        const EntriesPtr read = Reading(entries);
        if (IsCommandUrl(UrlOf(read, k))) {
            found = true;
            entries->removeByIndex(k);
            const bool dividesNothing = k > 0 && IsSeparator(read, k - 1) &&
                                        (k == entries->getCount() || IsSeparator(read, k));
            if (dividesNothing) entries->removeByIndex(--k);
            continue;
        }
        const Reference<css::container::XIndexContainer> submenu(SubmenuOf(read, k),
                                                                 css::uno::UNO_QUERY);
        if (submenu.is() && RemoveLeftovers(submenu)) found = true;
    }
    return found;
}

}  // namespace korvane::calc
