#include "bindings/calc/desk/command_labels.h"

#include <gtest/gtest.h>

namespace korvane::calc {
namespace {

TEST(CommandLabels, AccessKeysAndAmpersands) {
    EXPECT_EQ(LabelOfCaption(u"Korvane E&xplorer"), u"Korvane E~xplorer");
    EXPECT_EQ(LabelOfCaption(u"&Settings..."), u"~Settings...");
    EXPECT_EQ(LabelOfCaption(u"This && &that"), u"This & ~that");
    EXPECT_EQ(LabelOfCaption(u""), u"");
    EXPECT_EQ(CaptionOfLabel(u"Korvane E~xplorer"), u"Korvane E&xplorer");
    EXPECT_EQ(CaptionOfLabel(u"This & ~that"), u"This && &that");
    EXPECT_EQ(CaptionOfLabel(LabelOfCaption(u"A&&&b")), u"A&&&b");
}

}  // namespace
}  // namespace korvane::calc
