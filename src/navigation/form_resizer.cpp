#include "navigation/form_resizer.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>

#include "base/attempt.h"
#include "base/number.h"
#include "base/text.h"
#include "navigation/monitors.h"
#include "settings/store_names.h"

namespace korvane {
namespace {

using platform::Control;
using platform::Form;
using platform::Place;

// A letter of a tag, and what it stands for.
struct Anchor {
    char16_t letter;
    float Place::*member;
    bool vertical;
};
constexpr std::array kAnchors{
    Anchor{u't', &Place::top, true},
    Anchor{u'l', &Place::left, false},
    Anchor{u'h', &Place::height, true},
    Anchor{u'w', &Place::width, false},
};

// How much of the dialog's change the letter passes on; nothing when the tag
// does not hold it.
std::optional<double> FactorOf(std::u16string_view tag, char16_t letter) {
    const auto at = std::find_if(tag.begin(), tag.end(),
                                 [letter](char16_t ch) { return FoldChar(ch) == letter; });
    if (at == tag.end()) return std::nullopt;
    const double factor = LeadingNumber(tag.substr(static_cast<std::size_t>(at - tag.begin()) + 1));
    return factor == 0 ? 1 : factor;
}

}  // namespace

void CFormResizer::SetForm(Form& dialog) {
    dialog_ = &dialog;
    Succeeds([&] { dialog.SetResizable(true); });
    const std::u16string bounds = settings_.Get(kApplication, kSection, dialog.Name(), u"");
    lLastWidth_ = RoundToWhole(dialog.Width());
    lLastHeight_ = RoundToWhole(dialog.Height());
    if (bounds.empty()) return;
    const auto parsed = MMonitors::ParseBounds(bounds);
    Succeeds([&] { MMonitors::ApplyBounds(screen_, application_.Hwnd(), dialog, parsed); });
}

// Whole twips, as the last size is: what a size has beyond them would be added
// again at every event.
double CFormResizer::dHeightChange() const {
    return RoundToWhole(dialog_->Height()) - lLastHeight_;
}

double CFormResizer::dWidthChange() const { return RoundToWhole(dialog_->Width()) - lLastWidth_; }

void CFormResizer::Limit() {
    // Every control is judged by the size that was asked for, whatever another
    // one has taken back already.
    const double dHeight = dHeightChange();
    const double dWidth = dWidthChange();
    const auto takeBack = [this](bool vertical) {
        if (vertical) {
            dialog_->SetHeight(static_cast<float>(lLastHeight_));
        } else {
            dialog_->SetWidth(static_cast<float>(lLastWidth_));
        }
    };
    bool followsHeight = false;
    bool followsWidth = false;
    for (const auto& control : dialog_->Controls()) {
        for (const Anchor& anchor : kAnchors) {
            const auto factor = FactorOf(control->Tag(), anchor.letter);
            if (!factor) continue;
            (anchor.vertical ? followsHeight : followsWidth) = true;
            const double change = anchor.vertical ? dHeight : dWidth;
            if (control->GetPlace().*anchor.member + change * *factor <= 0) {
                takeBack(anchor.vertical);
            }
        }
    }
    if (!followsHeight) takeBack(true);
    if (!followsWidth) takeBack(false);
}

void CFormResizer::Apply() {
    const double dHeight = dHeightChange();
    const double dWidth = dWidthChange();
    for (const auto& control : dialog_->Controls()) {
        Place place = control->GetPlace();
        for (const Anchor& anchor : kAnchors) {
            const auto factor = FactorOf(control->Tag(), anchor.letter);
            if (!factor) continue;
            const double change = anchor.vertical ? dHeight : dWidth;
            place.*anchor.member = static_cast<float>(place.*anchor.member + change * *factor);
        }
        control->Move(place);
    }
}

void CFormResizer::StoreBounds() {
    Succeeds([this] {
        settings_.Save(kApplication, kSection, dialog_->Name(),
                       MMonitors::BoundsText(screen_, *dialog_));
    });
}

void CFormResizer::FormResize() {
    if (!dialog_ || bBusy_) return;
    struct Busy {
        bool& flag;
        explicit Busy(bool& busy) : flag(busy) { flag = true; }
        ~Busy() { flag = false; }
    } const busy(bBusy_);
    Limit();
    Apply();
    lLastWidth_ = RoundToWhole(dialog_->Width());
    lLastHeight_ = RoundToWhole(dialog_->Height());
    StoreBounds();
}

}  // namespace korvane
