#include "bindings/qt/picture.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>

#include "base/error.h"
#include "bindings/qt/colours.h"
#include "bindings/resources/built_in_pictures.h"
#include "shown_form.h"

namespace korvane::test {
namespace {

using platform::ControlDesign;
using platform::ControlKind;

// Red and blue, side by side.
const char* const kHalves =
    "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 2 2'>"
    "<rect fill='#ff0000' width='1' height='2'/>"
    "<rect fill='#0000ff' x='1' width='1' height='2'/></svg>";

class OnePicture : public platform::Resources {
public:
    std::string Picture(const std::u16string& name) override {
        if (name == u"HALVES") return kHalves;
        throw korvane::Error(kErrorInvalidCall, u"no picture");
    }
};

platform::FormDesign WithPicture(const char16_t* name, float width, float height) {
    platform::FormDesign design;
    design.name = u"FPicture";
    design.place = {1500, 1500, 6000, 6000};
    ControlDesign control;
    control.kind = ControlKind::kPicture;
    control.name = u"Image1";
    control.place = {300, 300, width, height};
    control.picture = name;
    design.controls.push_back(control);
    return design;
}

// The control as it is drawn on a screen of this scale, on black.
QImage Drawn(QWidget& widget, double scale) {
    QImage image((QSizeF(widget.size()) * scale).toSize(), QImage::Format_ARGB32);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::black);
    widget.render(&image, {}, {}, QWidget::DrawChildren);
    return image;
}

// At every size and scale the edges, of which there are three, are as sharp as can
// be: the picture is drawn for it, not stretched.
TEST(QtPicture, IsDrawnForItsSize) {
    OnePicture pictures;
    for (const float twips : {240.F, 720.F, 3000.F}) {
        ShownForm shown(WithPicture(u"HALVES", twips, twips), false);
        shown.view.SetPictures(pictures);
        shown.Window().NoteAll();
        shown.view.Settle();
        auto& widget = shown.Widget<QWidget>(u"Image1");
        for (const double scale : {1.0, 1.5, 2.0, 3.0}) {
            const QImage image = Drawn(widget, scale);
            const int middle = image.height() / 2;
            int mixed = 0;
            for (int x = 1; x < image.width() - 1; ++x) {
                const QColor colour = image.pixelColor(x, middle);
                const bool isGround = colour == QColor(Qt::black);
                if (!isGround && colour != QColor(Qt::red) && colour != QColor(Qt::blue)) ++mixed;
            }
            EXPECT_LE(mixed, 3) << twips << " " << scale;
            EXPECT_EQ(image.pixelColor(image.width() / 4, middle), QColor(Qt::red));
            EXPECT_EQ(image.pixelColor(image.width() * 3 / 4, middle), QColor(Qt::blue));
        }
    }
}

TEST(QtPicture, KeepsItsProportions) {
    OnePicture pictures;
    ShownForm shown(WithPicture(u"HALVES", 3000, 1500), false);
    shown.view.SetPictures(pictures);
    shown.Window().NoteAll();
    shown.view.Settle();
    auto& widget = shown.Widget<QWidget>(u"Image1");
    const QImage image = Drawn(widget, 1);
    const int width = image.width();
    const int middle = image.height() / 2;
    const auto isEmpty = [&](int x) {
        const QColor colour = image.pixelColor(x, middle);
        return colour != QColor(Qt::red) && colour != QColor(Qt::blue);
    };
    EXPECT_TRUE(isEmpty(width / 8));
    EXPECT_EQ(image.pixelColor(width * 3 / 8, middle), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(width * 5 / 8, middle), QColor(Qt::blue));
    EXPECT_TRUE(isEmpty(width * 7 / 8));
}

TEST(QtPicture, WithoutAPictureNothingIsDrawn) {
    OnePicture pictures;
    for (const auto* name : {u"", u"NOPE"}) {
        ShownForm shown(WithPicture(name, 1500, 1500), false);
        shown.view.SetPictures(pictures);
        shown.Window().NoteAll();
        shown.view.Settle();
        const QImage image = Drawn(shown.Widget<QWidget>(u"Image1"), 1);
        EXPECT_EQ(image.pixelColor(image.width() / 2, image.height() / 2), QColor(Qt::black));
    }
    EXPECT_TRUE(qt::DrawnPicture("<svg", 16).isNull());
    EXPECT_TRUE(qt::DrawnPicture("", 16).isNull());
    EXPECT_TRUE(qt::IconOf("no picture").isNull());
}

TEST(QtPicture, AnIconHasTheSizesOfDesktops) {
    const QIcon icon = qt::IconOf(kHalves);
    for (const int pixels : {16, 24, 32, 48, 256}) {
        EXPECT_EQ(icon.actualSize({pixels, pixels}), QSize(pixels, pixels));
    }
}

// ---- the product's own ------------------------------------------------------

QImage BuiltIn(const char16_t* name, int pixels) {
    const auto content = resources::BuiltInPictures().Picture(name);
    return qt::DrawnPicture(content, pixels).toImage().convertToFormat(QImage::Format_ARGB32);
}

// A host without alpha shows what one with alpha shows.
TEST(QtPicture, TheMaskIsTheButtonPicturesShape) {
    for (const int pixels : {16, 24, 32, 64}) {
        const QImage picture = BuiltIn(u"IMGEXPLORE", pixels);
        const QImage mask = BuiltIn(u"MSKEXPLORE", pixels);
        ASSERT_FALSE(picture.isNull() || mask.isNull());
        int seen = 0;
        for (int y = 0; y < pixels; ++y) {
            for (int x = 0; x < pixels; ++x) {
                const int alpha = qAlpha(picture.pixel(x, y));
                EXPECT_EQ(qAlpha(mask.pixel(x, y)), 255);
                EXPECT_NEAR(255 - qGray(mask.pixel(x, y)), alpha, 3) << x << " " << y;
                if (alpha > 127) ++seen;
            }
        }
        // Neither nothing nor a mere block.
        EXPECT_GT(seen, pixels * pixels / 4);
        EXPECT_LT(seen, pixels * pixels * 3 / 4);
    }
}

// On light and on dark: some of each picture stands out.
TEST(QtPicture, TheProductsPicturesCanBeSeenOnAnyGround) {
    for (const auto* name : {u"IMGEXPLORE", u"IMGLOGO", u"IMGPROGRAM"}) {
        for (const QColor& ground : {QColor(Qt::white), QColor(0x23, 0x26, 0x29)}) {
            const QImage picture = BuiltIn(name, 16);
            QImage shown(16, 16, QImage::Format_ARGB32);
            shown.fill(ground);
            QPainter(&shown).drawImage(0, 0, picture);
            int standsOut = 0;
            for (int y = 0; y < 16; ++y) {
                for (int x = 0; x < 16; ++x) {
                    if (qt::Contrast(shown.pixelColor(x, y), ground) >= 2) ++standsOut;
                }
            }
            EXPECT_GT(standsOut, 40) << QString::fromUtf16(name).toStdString();
        }
    }
}

}  // namespace
}  // namespace korvane::test
