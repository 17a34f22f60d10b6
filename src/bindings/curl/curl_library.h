// The libcurl of this system.
#pragma once

// The checks are macros that know only the functions' own names.
#define CURL_DISABLE_TYPECHECK
#include <curl/curl.h>

#include <memory>

namespace korvane::curl {

// Loaded when it is first needed: it brings some twenty libraries along, which
// every start of a program would pay for and hardly any would use. Loaded apart,
// so that a process that has another build of it keeps that for itself.
class CurlLibrary {
public:
    // Raises when this system has none.
    CurlLibrary();
    CurlLibrary(const CurlLibrary&) = delete;
    CurlLibrary& operator=(const CurlLibrary&) = delete;

    decltype(&curl_easy_init) init = nullptr;
    decltype(&curl_easy_setopt) setopt = nullptr;
    decltype(&curl_easy_perform) perform = nullptr;
    decltype(&curl_easy_getinfo) getinfo = nullptr;
    decltype(&curl_easy_strerror) strerror = nullptr;
    decltype(&curl_easy_cleanup) cleanup = nullptr;

private:
    template <class Function>
    void Find(Function& function, const char* name);

    // Never closed: the library leaves threads and handlers behind.
    void* library_ = nullptr;
};

}  // namespace korvane::curl
