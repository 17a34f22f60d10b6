#include "apps/window/services.h"

#include "apps/addin/product.h"
#include "apps/window/manual_folder.h"

namespace korvane::window {

Services::Services(view_link::ViewLink& link, platform::ModalLoop& modal,
                   const SessionSettings& settings)
    : windows_(modal),
      shown_(link, windows_),
      screen_(link),
      messageBoxes_(link, windows_),
      files_(settings.folders, settings.addinFolder),
      stored_(settings.folders),
      manual_(ManualFolder(settings.addinFolder)),
      platform_{clock_,         filesWithHelp_, messageBoxes_, pictures_, screen_, settings_,
                shellWithHelp_, urls_,          windows_,      Version(), Links()} {
    const auto digit = [](bool on) { return on ? u"1" : u"0"; };
    if (settings.bEveryFunction)
        settings_.Override(u"optLastMode", digit(*settings.bEveryFunction));
    if (settings.bPreciseCalc) settings_.Override(u"optPreciseCalc", digit(*settings.bPreciseCalc));
}

}  // namespace korvane::window
