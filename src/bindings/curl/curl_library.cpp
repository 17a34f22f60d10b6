#include "bindings/curl/curl_library.h"

#include <dlfcn.h>

#include "base/error.h"
#include "base/text.h"

namespace korvane::curl {
namespace {

// What the loader says about its last failure.
[[noreturn]] void RaiseLoadFailure() {
    const char* const why = ::dlerror();
    throw Error(kErrorApplication, ToUtf16(why != nullptr ? why : "libcurl cannot be used"));
}

}  // namespace

CurlLibrary::CurlLibrary() : library_(::dlopen("libcurl.so.4", RTLD_NOW | RTLD_LOCAL)) {
    if (library_ == nullptr) RaiseLoadFailure();
    Find(init, "curl_easy_init");
    Find(setopt, "curl_easy_setopt");
    Find(perform, "curl_easy_perform");
    Find(getinfo, "curl_easy_getinfo");
    Find(strerror, "curl_easy_strerror");
    Find(cleanup, "curl_easy_cleanup");
}

template <class Function>
void CurlLibrary::Find(Function& function, const char* name) {
    function = reinterpret_cast<Function>(::dlsym(library_, name));
    if (function == nullptr) RaiseLoadFailure();
}

}  // namespace korvane::curl
