// The entries of a menu or toolbar as the office describes them: a container of
// properties for each entry, separators among them. Everything here throws the
// office's own exceptions.
#pragma once

#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/container/XIndexContainer.hpp>
#include <string>
#include <vector>

namespace korvane::calc {

using EntriesPtr = com::sun::star::uno::Reference<com::sun::star::container::XIndexAccess>;
using ChangingEntriesPtr =
    com::sun::star::uno::Reference<com::sun::star::container::XIndexContainer>;

// The same entries, for those who only read them.
inline EntriesPtr Reading(const ChangingEntriesPtr& entries) { return entries.get(); }

// What a new entry has.
struct EntryData {
    std::u16string url;
    EntriesPtr entries = {};  // of a submenu
};

bool IsSeparator(const EntriesPtr& entries, sal_Int32 index);
std::u16string UrlOf(const EntriesPtr& entries, sal_Int32 index);
// As it is in the entry, "~" before the access key; empty where the office has
// a label for the command.
std::u16string LabelOf(const EntriesPtr& entries, sal_Int32 index);
// The entries of a submenu; null for any other entry.
EntriesPtr SubmenuOf(const EntriesPtr& entries, sal_Int32 index);

// The place of the first entry with this URL, -1 when there is none.
sal_Int32 FindUrl(const EntriesPtr& entries, const std::u16string& url);
// The places of the entries that are no separators, in order.
std::vector<sal_Int32> ControlPlaces(const EntriesPtr& entries);
// The entries of the submenu that is reached through the submenus with these
// URLs; null when one of them is not there.
EntriesPtr Reached(EntriesPtr entries, const std::vector<std::u16string>& menus);

void InsertEntry(const ChangingEntriesPtr& entries, sal_Int32 index, const EntryData& entry);
void InsertSeparator(const ChangingEntriesPtr& entries, sal_Int32 index);
void SetEntryProperty(const ChangingEntriesPtr& entries, sal_Int32 index, const char16_t* name,
                      const com::sun::star::uno::Any& value);

// Everything that the entries say, for comparing.
std::u16string DescribeEntries(const EntriesPtr& entries);

// Takes out what an add-in that ended badly has left (entries with command URLs
// of the add-in's, and the separators that divide nothing without them); whether
// there was any.
bool RemoveLeftovers(const ChangingEntriesPtr& entries);
bool HasLeftovers(const EntriesPtr& entries);

}  // namespace korvane::calc
