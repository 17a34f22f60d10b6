#include "apps/window/services.h"

#include "base/error.h"

namespace korvane::window {
namespace {

constexpr platform::ProductVersion kVersion{KORVANE_VERSION_MAJOR, KORVANE_VERSION_MINOR,
                                            KORVANE_VERSION_PATCH};

}  // namespace

Services::Services(view_link::ViewLink& link, const SessionSettings& settings)
    : pump_(link),
      shown_(link, windows_),
      screen_(link),
      messageBoxes_(link, windows_),
      files_(settings.folders, settings.addinFolder),
      stored_(settings.folders),
      platform_{clock_, files_, messageBoxes_, pictures_, screen_, settings_,
                shell_, urls_,  windows_,      kVersion,  {}} {
    const auto digit = [](bool on) { return on ? u"1" : u"0"; };
    if (settings.bEveryFunction)
        settings_.Override(u"optLastMode", digit(*settings.bEveryFunction));
    if (settings.bPreciseCalc) settings_.Override(u"optPreciseCalc", digit(*settings.bPreciseCalc));
}

std::string Services::NoPictures::Picture(const std::u16string& name) {
    throw Error(kErrorApplication, u"There is no picture " + name);
}

std::u16string Services::NoUrls::Read(const std::u16string& address,
                                      std::chrono::seconds /*timeout*/) {
    throw Error(kErrorApplication, u"Nothing is read from " + address);
}

}  // namespace korvane::window
