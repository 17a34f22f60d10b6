#include "bindings/scripted/scripted_resources.h"

#include "base/error.h"

namespace korvane::scripted {

std::string ScriptedResources::Picture(const std::u16string& name) {
    accesses_->Enter("Resources.Picture", name);
    const auto found = pictures.find(name);
    if (found == pictures.end()) throw Error(kErrorInvalidCall, u"No such picture");
    return found->second;
}

}  // namespace korvane::scripted
