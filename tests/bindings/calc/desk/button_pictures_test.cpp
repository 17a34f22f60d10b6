#include "bindings/calc/desk/button_pictures.h"

#include <gtest/gtest.h>

namespace korvane::calc {
namespace {

TEST(ButtonPictures, AnSvgIsDrawnInAnotherSize) {
    EXPECT_EQ(SvgOfSize("<?xml version=\"1.0\"?>\n<svg width=\"16\" height='16px' "
                        "viewBox=\"0 0 16 16\"><rect width=\"9\" height=\"5\"/></svg>",
                        24),
              "<?xml version=\"1.0\"?>\n<svg width=\"24\" height='24' "
              "viewBox=\"0 0 16 16\"><rect width=\"9\" height=\"5\"/></svg>");
}

TEST(ButtonPictures, WhatCannotBeSizedStaysAsItIs) {
    for (const char* image :
         {"", "\x89PNG", "<svg", "<svg>", "<svg width=\"16\" height=\"16\"><g/></svg>",
          "<svg viewBox=\"0 0 1 1\" width=\"16\"/>", "<svg viewBox=\"0 0 1 1\" width=\"16></svg>",
          "<svg viewBox=\"0 0 1 1\" height=\"3\" width=>"}) {
        EXPECT_EQ(SvgOfSize(image, 24), image);
    }
}

}  // namespace
}  // namespace korvane::calc
