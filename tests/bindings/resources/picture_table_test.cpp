#include "bindings/resources/picture_table.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace korvane::resources {
namespace {

TEST(PictureTable, HasEachPictureOnce) {
    std::set<std::u16string_view> names;
    for (const BuiltInPicture& picture : PictureTable()) {
        EXPECT_TRUE(names.insert(picture.name).second);
        EXPECT_FALSE(picture.content.empty());
    }
    EXPECT_EQ(names, (std::set<std::u16string_view>{u"IMGEXPLORE", u"IMGLOGO", u"IMGPROGRAM",
                                                    u"MSKEXPLORE"}));
}

}  // namespace
}  // namespace korvane::resources
