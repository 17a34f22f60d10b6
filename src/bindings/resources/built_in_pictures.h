// The product's pictures, out of the program itself.
#pragma once

#include "platform/resources.h"

namespace korvane::resources {

// The pictures are SVG, which every size can be made of:
//   IMGEXPLORE  the Explore button's, drawn for 16 by 16 pixels
//   MSKEXPLORE  what of it is seen: black on white, for hosts without alpha
//   IMGLOGO     the about box's
//   IMGPROGRAM  the programs' own icon
class BuiltInPictures : public platform::Resources {
public:
    // Raises kErrorInvalidCall for any other name.
    std::string Picture(const std::u16string& name) override;
};

}  // namespace korvane::resources
