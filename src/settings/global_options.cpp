#include "settings/global_options.h"

#include "base/attempt.h"
#include "base/number.h"
#include "settings/key_string.h"
#include "settings/store_names.h"

namespace korvane {
namespace {
// The loader's macros that the shortcuts run.
constexpr const char16_t* kExploreMacro = u"KorvaneExplore";
constexpr const char16_t* kGoBackMacro = u"KorvaneExplorerGoBack";
}  // namespace

void CGlobalOptions::Init() {
    ReadKey(sMainKey_);
    ReadKey(sBackKey_);
    Read(bShowIcon_);
    Read(enLastMode_);
    Read(bHighlightCells_);
    Read(bFormulaColour_);
    Read(bFormulaUnderline_);
    Read(bFormulaBold_);
    Read(bPreciseCalc_);
}

void CGlobalOptions::ReadKey(Setting<std::u16string>& setting) {
    setting.value = sStored(setting.key, setting.defaultText);
    if (!bIsKeyString(setting.value)) setting.value = setting.defaultText;
}

void CGlobalOptions::Read(Setting<bool>& setting) {
    setting.value = TextToBoolean(sStored(setting.key, setting.defaultText));
}

void CGlobalOptions::Read(Setting<std::int32_t>& setting) {
    setting.value = TextToWhole(sStored(setting.key, setting.defaultText));
}

std::u16string CGlobalOptions::sStored(const char16_t* key, const char16_t* defaultText) {
    return store_.Get(kApplication, kSection, key, defaultText);
}

void CGlobalOptions::Put(Setting<bool>& setting, bool b) {
    setting.value = b;
    Store(setting.key, b ? u"1" : u"0");
}

void CGlobalOptions::Put(Setting<std::int32_t>& setting, std::int32_t l) {
    setting.value = l;
    Store(setting.key, NumberText(l));
}

void CGlobalOptions::Store(const char16_t* key, const std::u16string& text) {
    store_.Save(kApplication, kSection, key, text);
}

bool CGlobalOptions::bHookKeys() {
    if (sMainKey().empty() || sBackKey().empty()) return false;
    const bool bMain = bBind(sMainKey(), kExploreMacro);
    const bool bBack = bBind(sBackKey(), kGoBackMacro);
    if (bMain && bBack) bKeysReleased_ = false;
    return bMain && bBack;
}

bool CGlobalOptions::bChangeKeys(const std::u16string& sNewMainKey,
                                 const std::u16string& sNewBackKey) {
    if (sNewMainKey.empty() || sNewBackKey.empty()) return false;
    if (!bBind(sNewMainKey, kExploreMacro)) return false;
    if (!bBind(sNewBackKey, kGoBackMacro)) {
        Release(sNewMainKey);
        bKeysReleased_ = bKeysReleased_ || sNewMainKey == sMainKey() || sNewMainKey == sBackKey();
        return false;
    }
    const bool bMainGoes = sMainKey() != sNewMainKey;
    const bool bBackGoes = sBackKey() != sNewBackKey;
    if (bMainGoes) Release(sMainKey());
    if (bBackGoes) Release(sBackKey());
    bKeysReleased_ =
        (bMainGoes && sMainKey() == sNewBackKey) || (bBackGoes && sBackKey() == sNewMainKey);

    sMainKey_.value = sNewMainKey;
    sBackKey_.value = sNewBackKey;
    Store(sMainKey_.key, sNewMainKey);
    Store(sBackKey_.key, sNewBackKey);
    return true;
}

bool CGlobalOptions::bBind(const std::u16string& sKey, const char16_t* macro) {
    return Suppressed([&] { application_.OnKey(sKey, macro); });
}

void CGlobalOptions::Release(const std::u16string& sKey) {
    if (sKey.empty()) return;  // no shortcut, nothing to give back
    Suppressed([&] { application_.OnKey(sKey); });
}

}  // namespace korvane
