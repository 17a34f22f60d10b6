#include "bindings/calc/desk/bar_settings.h"

#include <com/sun/star/lang/XSingleComponentFactory.hpp>

#include "bindings/calc/uno_text.h"

namespace korvane::calc {

namespace css = com::sun::star;
using css::uno::UNO_QUERY_THROW;

BarSettings::BarSettings(const Manager& manager, std::u16string url)
    : manager_(manager), url_(ToOUString(url)) {}

EntriesPtr BarSettings::Read() const {
    return changed_.is() ? Reading(changed_) : manager_->getSettings(url_, false);
}

ChangingEntriesPtr BarSettings::Change() {
    if (!changed_.is()) {
        const ChangingEntriesPtr entries(manager_->getSettings(url_, true), UNO_QUERY_THROW);
        if (manager_->isDefaultSettings(url_)) officesOwn_ = DescribeEntries(Reading(entries));
        changed_ = entries;
    }
    return changed_;
}

ChangingEntriesPtr BarSettings::NewSubmenu() {
    const css::uno::Reference<css::lang::XSingleComponentFactory> factory(Change(),
                                                                          UNO_QUERY_THROW);
    return {factory->createInstanceWithContext({}), UNO_QUERY_THROW};
}

bool BarSettings::Write() {
    if (!changed_.is()) return false;
    const EntriesPtr changed = Reading(changed_);
    // Whatever becomes of the write, it is not tried again.
    changed_.clear();
    const std::u16string described = DescribeEntries(changed);
    if (described == DescribeEntries(manager_->getSettings(url_, false))) return false;
    if (described == officesOwn_) {
        manager_->removeSettings(url_);
    } else {
        manager_->replaceSettings(url_, changed);
    }
    return true;
}

}  // namespace korvane::calc
