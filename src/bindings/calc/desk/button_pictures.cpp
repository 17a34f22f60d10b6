#include "bindings/calc/desk/button_pictures.h"

#include <com/sun/star/beans/PropertyValue.hpp>
#include <com/sun/star/graphic/GraphicProvider.hpp>
#include <com/sun/star/io/SequenceInputStream.hpp>
#include <com/sun/star/ui/ImageType.hpp>
#include <com/sun/star/ui/XImageManager.hpp>

#include "bindings/calc/errors.h"
#include "bindings/calc/uno_text.h"

namespace korvane::calc {

namespace css = com::sun::star;
using css::uno::Reference;

namespace {

struct Size {
    sal_Int16 type;
    int pixels;
};
constexpr Size kSizes[] = {{css::ui::ImageType::SIZE_DEFAULT, 16},
                           {css::ui::ImageType::SIZE_LARGE, 24},
                           {css::ui::ImageType::SIZE_32, 32}};

Reference<css::ui::XImageManager> ImagesOf(const ButtonPictures::Manager& manager) {
    return {manager->getImageManager(), css::uno::UNO_QUERY_THROW};
}

Reference<css::graphic::XGraphic> ReadPicture(const Reference<css::uno::XComponentContext>& context,
                                              const std::string& image) {
    const css::uno::Sequence<sal_Int8> bytes(reinterpret_cast<const sal_Int8*>(image.data()),
                                             static_cast<sal_Int32>(image.size()));
    css::beans::PropertyValue stream;
    stream.Name = ToOUString(u"InputStream");
    stream.Value <<= Reference<css::io::XInputStream>(
        css::io::SequenceInputStream::createStreamFromSequence(context, bytes),
        css::uno::UNO_QUERY_THROW);
    const auto picture = css::graphic::GraphicProvider::create(context)->queryGraphic(
        css::uno::Sequence<css::beans::PropertyValue>(&stream, 1));
    if (!picture.is()) Fail(u"The picture of the button cannot be read");
    return picture;
}

}  // namespace

std::string SvgOfSize(const std::string& svg, int pixels) {
    const auto begin = svg.find("<svg");
    const auto end = svg.find('>', begin);
    if (begin == std::string::npos || end == std::string::npos) return svg;
    std::string tag = svg.substr(begin, end - begin);
    // Without a view box another size would show another part of the drawing.
    if (tag.find(" viewBox=") == std::string::npos) return svg;
    for (const std::string name : {" width=", " height="}) {
        const auto at = tag.find(name);
        if (at == std::string::npos) return svg;
        const auto value = at + name.size() + 1;
        const auto quote = tag.find(tag[value - 1], value);
        if (quote == std::string::npos) return svg;
        tag.replace(value, quote - value, std::to_string(pixels));
    }
    return svg.substr(0, begin) + tag + svg.substr(end);
}

void ButtonPictures::Set(const std::u16string& url, const std::string& image) {
    const rtl::OUString name = ToOUString(url);
    const css::uno::Sequence<rtl::OUString> names(&name, 1);
    const auto images = ImagesOf(manager_);
    for (const Size& size : kSizes) {
        // Few pixels would be drawn beside the edges of the drawing, blurred; many
        // are scaled down well.
        const auto picture = ReadPicture(context_, SvgOfSize(image, 4 * size.pixels));
        const css::uno::Sequence<Reference<css::graphic::XGraphic>> pictures(&picture, 1);
        if (images->hasImage(size.type, name)) {
            images->replaceImages(size.type, names, pictures);
        } else {
            images->insertImages(size.type, names, pictures);
        }
    }
}

void ButtonPictures::Remove(const std::u16string& url) {
    const rtl::OUString name = ToOUString(url);
    const css::uno::Sequence<rtl::OUString> names(&name, 1);
    const auto images = ImagesOf(manager_);
    for (const Size& size : kSizes) {
        if (images->hasImage(size.type, name)) images->removeImages(size.type, names);
    }
}

}  // namespace korvane::calc
