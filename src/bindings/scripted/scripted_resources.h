// The product's pictures, as bytes that only tests look at.
#pragma once

#include <map>
#include <memory>
#include <string>

#include "bindings/scripted/accesses.h"
#include "platform/resources.h"

namespace korvane::scripted {

class ScriptedResources : public platform::Resources {
public:
    explicit ScriptedResources(std::shared_ptr<Accesses> accesses)
        : accesses_(std::move(accesses)) {}

    // Raises kErrorInvalidCall for a name that is not among `pictures`.
    std::string Picture(const std::u16string& name) override;

    // The content by the name; the button's icon and its mask are there.
    std::map<std::u16string, std::string> pictures{{u"IMGEXPLORE", "icon of the button"},
                                                   {u"MSKEXPLORE", "mask of the button"}};

private:
    std::shared_ptr<Accesses> accesses_;
};

}  // namespace korvane::scripted
