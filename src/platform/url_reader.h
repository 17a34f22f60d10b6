// A small text file from a web server.
#pragma once

#include <chrono>
#include <string>

namespace korvane::platform {

class UrlReader {
public:
    virtual ~UrlReader() = default;
    // The text behind the address (http: or https:), read at once. Raises when
    // there is none within `timeout`, for all of it together.
    virtual std::u16string Read(const std::u16string& address, std::chrono::seconds timeout) = 0;
};

}  // namespace korvane::platform
