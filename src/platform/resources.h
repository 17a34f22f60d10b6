// Pictures and the like that are built into the product.
#pragma once

#include <string>

namespace korvane::platform {

class Resources {
public:
    virtual ~Resources() = default;
    // The content of the image file that goes by this name ("IMGEXPLORE").
    // Raises when there is none.
    virtual std::string Picture(const std::u16string& name) = 0;
};

}  // namespace korvane::platform
