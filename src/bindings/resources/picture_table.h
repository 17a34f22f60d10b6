// The pictures that were built in.
#pragma once

#include <span>
#include <string_view>

namespace korvane::resources {

struct BuiltInPicture {
    std::u16string_view name;
    std::string_view content;  // SVG
};

std::span<const BuiltInPicture> PictureTable();

}  // namespace korvane::resources
