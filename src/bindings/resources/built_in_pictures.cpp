#include "bindings/resources/built_in_pictures.h"

#include "base/error.h"
#include "bindings/resources/picture_table.h"

namespace korvane::resources {

std::string BuiltInPictures::Picture(const std::u16string& name) {
    for (const BuiltInPicture& picture : PictureTable()) {
        if (picture.name == name) return std::string(picture.content);
    }
    throw Error(kErrorInvalidCall, u"There is no picture " + name);
}

}  // namespace korvane::resources
