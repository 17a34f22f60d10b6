#include "platform/window/types.h"

#include <type_traits>

namespace korvane::platform {
namespace {

// The place of a type among a variant's alternatives. Asked of the types alone:
// not every compiler makes texts in constant expressions.
template <class T, class... Ts>
constexpr std::size_t IndexAmong(const std::variant<Ts...>* /*type*/) {
    std::size_t index = 0;
    bool found = false;
    ((found = found || std::is_same_v<T, Ts>, index += found ? 0 : 1), ...);
    return index;
}

template <class T>
constexpr std::size_t kIndexOf = IndexAmong<T>(static_cast<const PropertyValue*>(nullptr));

}  // namespace

std::size_t TypeOf(Property property) {
    switch (property) {
        case Property::kVisible:
        case Property::kEnabled:
        case Property::kChecked:
        case Property::kResizable:
        case Property::kUpdatesLocked: return kIndexOf<bool>;
        case Property::kForeColour:
        case Property::kBackColour:
        case Property::kPointer:
        case Property::kListIndex:
        case Property::kSelectedNode:
        case Property::kScroll:
        case Property::kShown:
        case Property::kFocus: return kIndexOf<std::int32_t>;
        case Property::kOwner: return kIndexOf<std::int64_t>;
        case Property::kPlace: return kIndexOf<Place>;
        case Property::kSelection: return kIndexOf<TextSpan>;
        case Property::kCaption:
        case Property::kText:
        case Property::kPicture: return kIndexOf<std::u16string>;
        case Property::kItems: return kIndexOf<std::vector<std::u16string>>;
        case Property::kColumns: return kIndexOf<std::vector<TreeColumn>>;
        case Property::kCount_: break;
    }
    return std::variant_npos;
}

}  // namespace korvane::platform
