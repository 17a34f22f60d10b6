#include "bindings/resources/built_in_pictures.h"

#include <gtest/gtest.h>

#include <set>

#include "base/error.h"
#include "base/text.h"

namespace korvane::resources {
namespace {

TEST(BuiltInPictures, AreThere) {
    BuiltInPictures pictures;
    std::set<std::string> different;
    for (const auto* name : {u"IMGEXPLORE", u"MSKEXPLORE", u"IMGLOGO", u"IMGPROGRAM"}) {
        const std::string content = pictures.Picture(name);
        EXPECT_EQ(content.substr(0, 5), "<svg ") << ToUtf8(name);
        EXPECT_EQ(content.substr(content.size() - 7), "</svg>\n") << ToUtf8(name);
        different.insert(content);
    }
    EXPECT_EQ(different.size(), 4U);
}

// Whoever draws them fetches nothing.
TEST(BuiltInPictures, NeedNothingElse) {
    BuiltInPictures pictures;
    for (const auto* name : {u"IMGEXPLORE", u"MSKEXPLORE", u"IMGLOGO", u"IMGPROGRAM"}) {
        const std::string content = pictures.Picture(name);
        for (const char* foreign : {"href", "<image", "<script", "<style", "<text"}) {
            EXPECT_EQ(content.find(foreign), std::string::npos) << ToUtf8(name) << foreign;
        }
    }
}

TEST(BuiltInPictures, RaisesForAnyOther) {
    BuiltInPictures pictures;
    for (const auto* name : {u"", u"IMG", u"imgexplore", u"IMGEXPLORE.svg", u"../IMGLOGO"}) {
        try {
            pictures.Picture(name);
            ADD_FAILURE() << ToUtf8(name);
        } catch (const Error& error) {
            EXPECT_EQ(error.number(), kErrorInvalidCall);
        }
    }
}

}  // namespace
}  // namespace korvane::resources
