// The user's settings.
#pragma once

#include <cstdint>
#include <string>

#include "host/application.h"
#include "platform/settings_store.h"

namespace korvane {

// Every setting in memory, kept in the platform's store under kApplication and
// kSection. There is one for the add-in's life. Reading never touches the store;
// every put writes through to it at once, also a value that is no other than
// before, and raises when the store does.
class CGlobalOptions {
public:
    // Both must outlive the options.
    CGlobalOptions(platform::SettingsStore& store, host::Application& application)
        : store_(store), application_(application) {}
    CGlobalOptions(const CGlobalOptions&) = delete;
    CGlobalOptions& operator=(const CGlobalOptions&) = delete;

    // Reads every setting; one that is not stored has its default, and nothing is
    // written. A stored key string that is none becomes its default; any other
    // stored text that cannot be converted raises.
    void Init();

    // Evaluate parts in the explored cell itself: exact, and slow.
    bool bPreciseCalc() const { return bPreciseCalc_.value; }
    void SetbPreciseCalc(bool b) { Put(bPreciseCalc_, b); }
    // Tint the cells of the selected part.
    bool bHighlightCells() const { return bHighlightCells_.value; }
    void SetbHighlightCells(bool b) { Put(bHighlightCells_, b); }
    // How the selected part is marked in the formula text.
    bool bFormulaColour() const { return bFormulaColour_.value; }
    void SetbFormulaColour(bool b) { Put(bFormulaColour_, b); }
    bool bFormulaUnderline() const { return bFormulaUnderline_.value; }
    void SetbFormulaUnderline(bool b) { Put(bFormulaUnderline_, b); }
    bool bFormulaBold() const { return bFormulaBold_.value; }
    void SetbFormulaBold(bool b) { Put(bFormulaBold_, b); }
    // Show the Explore button on the host's toolbar or ribbon.
    bool bShowIcon() const { return bShowIcon_.value; }
    void SetbShowIcon(bool b) { Put(bShowIcon_, b); }
    // The shortcuts of Explore and of Go Back (settings/key_string.h); empty for
    // none. They change through bChangeKeys alone, which binds before it stores.
    const std::u16string& sMainKey() const { return sMainKey_.value; }
    const std::u16string& sBackKey() const { return sBackKey_.value; }
    // How the explorer was shown last: 1 with every function call as an element,
    // any other number without.
    std::int32_t enLastMode() const { return enLastMode_.value; }
    void SetenLastMode(std::int32_t en) { Put(enLastMode_, en); }

    // Binds both shortcuts in the host. False when either is empty (then nothing
    // is bound) or when the host refused one (the other is bound all the same).
    bool bHookKeys();

    // Binds new shortcuts, gives the old ones back to the host, and stores the
    // new ones. False, and nothing stored, when either is empty or refused.
    //
    // Keys are given back last, so swapping the two leaves both unbound, and a
    // refused back key leaves the new main key unbound even where it is the old
    // one: see bKeysReleased.
    bool bChangeKeys(const std::u16string& sNewMainKey, const std::u16string& sNewBackKey);

    // Whether bChangeKeys gave a key back to the host that is still one of the
    // shortcuts. True until bHookKeys succeeds; its callers try again at the next
    // occasion.
    bool bKeysReleased() const { return bKeysReleased_; }

private:
    template <class T>
    struct Setting {
        const char16_t* key = nullptr;
        const char16_t* defaultText = nullptr;
        T value{};
    };

    void ReadKey(Setting<std::u16string>& setting);
    void Read(Setting<bool>& setting);
    void Read(Setting<std::int32_t>& setting);
    std::u16string sStored(const char16_t* key, const char16_t* defaultText);
    void Put(Setting<bool>& setting, bool b);
    void Put(Setting<std::int32_t>& setting, std::int32_t l);
    void Store(const char16_t* key, const std::u16string& text);

    bool bBind(const std::u16string& sKey, const char16_t* macro);
    void Release(const std::u16string& sKey);

    platform::SettingsStore& store_;
    host::Application& application_;

    // In the order in which Init reads them.
    Setting<std::u16string> sMainKey_{u"optMainKey", u"^q"};
    Setting<std::u16string> sBackKey_{u"optBackKey", u"%q"};
    Setting<bool> bShowIcon_{u"optShowIcon", u"1"};
    Setting<std::int32_t> enLastMode_{u"optLastMode", u"1"};
    Setting<bool> bHighlightCells_{u"optHighlightCells", u"1"};
    Setting<bool> bFormulaColour_{u"optFormulaColour", u"1"};
    Setting<bool> bFormulaUnderline_{u"optFormulaUnderline", u"1"};
    Setting<bool> bFormulaBold_{u"optFormulaBold", u"0"};
    Setting<bool> bPreciseCalc_{u"optPreciseCalc", u"0"};

    bool bKeysReleased_ = false;
};

}  // namespace korvane
