// Small texts from web servers, by libcurl.
#pragma once

#include <filesystem>
#include <memory>

#include "platform/url_reader.h"

namespace korvane::curl {

class CurlLibrary;

// http: and https: only, also where a server sends on to another address, and
// from https: to https: alone. A server must prove who it is. No more than
// kMostBytes are taken, and no more than kMostRedirects followed.
class CurlUrlReader : public platform::UrlReader {
public:
    static constexpr std::size_t kMostBytes = std::size_t{64} << 10;
    static constexpr long kMostRedirects = 5;

    // `authorities` is a file of certificates that vouch for servers, in place
    // of the system's own; empty for those.
    explicit CurlUrlReader(std::filesystem::path authorities = {});
    ~CurlUrlReader() override;
    CurlUrlReader(const CurlUrlReader&) = delete;
    CurlUrlReader& operator=(const CurlUrlReader&) = delete;

    // The text is taken for UTF-8, a mark at its start left out. Raises
    // kErrorInvalidCall for an address of another kind, and kErrorApplication
    // when the server does not answer with a whole text of its own (status 200).
    std::u16string Read(const std::u16string& address, std::chrono::seconds timeout) override;

private:
    std::filesystem::path authorities_;
    std::unique_ptr<CurlLibrary> library_;  // from the first reading on
};

}  // namespace korvane::curl
