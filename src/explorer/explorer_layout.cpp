#include "explorer/explorer_layout.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/attempt.h"
#include "base/number.h"
#include "base/text.h"
#include "explorer/explorer_design.h"
#include "settings/store_names.h"

namespace korvane {
namespace {

using platform::CheckBox;
using platform::Control;
using platform::Place;
namespace names = explorer_controls;

constexpr const char16_t* kDefaultShares = u"0.5;0.25;0.22";
constexpr float kOptionsGap = 50;         // between the check boxes and the Close button
constexpr float kLeastTree = 50;          // height that a shrinking window leaves the tree
constexpr double kLeastColumn = 50;       // width of the first column
constexpr double kLeastDragged = 20;      // height that the splitter leaves either side
constexpr double kWidestColumn = 30'000;  // pixels; beyond any screen

std::vector<std::u16string> Split(std::u16string_view text, char16_t mark) {
    std::vector<std::u16string> parts;
    for (;;) {
        const auto end = text.find(mark);
        parts.emplace_back(text.substr(0, end));
        if (end == std::u16string_view::npos) return parts;
        text.remove_prefix(end + 1);
    }
}

// A number as every locale reads it back, without a zero before the point: .5
std::u16string sShare(double share) {
    std::u16string text = NumberText(share);
    const std::size_t digits = text.front() == u'-' ? 1 : 0;
    if (text.compare(digits, 2, u"0.") == 0) text.erase(digits, 1);
    return text;
}

// A single-precision number as its seven digits say it, without the noise that
// double precision shows behind them.
double dSingleDigits(float number) {
    char digits[32] = {};
    std::snprintf(digits, sizeof digits, "%.7g", static_cast<double>(number));
    return std::strtod(digits, nullptr);  // of the same locale, whichever it is
}

std::int32_t lPixels(double pixels) {
    return RoundToWhole(std::clamp(std::isfinite(pixels) ? pixels : 0, 0.0, kWidestColumn));
}

}  // namespace

CExplorerLayout::CExplorerLayout(platform::Form& form, platform::SettingsStore& settings,
                                 platform::Screen& screen, host::Application& application,
                                 MErrorHandler& errors)
    : form_(form),
      settings_(settings),
      screen_(screen),
      application_(application),
      errors_(errors),
      trvTree_(form.Get<platform::TreeView>(names::kTree)),
      lblSplitterBar_(form.Get<platform::Splitter>(names::kSplitter)),
      rtbFormula_(form.Get<platform::RichText>(names::kFormula)) {
    ConnectSplitter();
}

void CExplorerLayout::LoadColumnWidths() {
    auto shares =
        Split(settings_.Get(kApplication, kSection, trvTree_.Name(), kDefaultShares), u';');
    shares.resize(static_cast<std::size_t>(trvTree_.ColumnCount()));
    const double treePixels = trvTree_.Width() / screen_.TwipsPerPixelX();
    for (std::size_t k = 0; k < shares.size(); ++k) {
        trvTree_.SetColumnWidth(static_cast<std::int32_t>(k) + 1,
                                lPixels(treePixels * LeadingNumber(shares[k])));
    }
    sngTreeWidth_ = trvTree_.Width();
}

void CExplorerLayout::LoadSplitterPosition() {
    const double y =
        dLocalNumber(settings_.Get(kApplication, kSection, lblSplitterBar_.Name(), u"0"));
    const float bottom = rtbFormula_.Top() + rtbFormula_.Height();
    const auto top = static_cast<float>(y);
    // A place at which nothing would be left of the formula is none of this
    // window's.
    if (!(y > 0) || top + lblSplitterBar_.Height() >= bottom || top <= trvTree_.Top()) return;
    lblSplitterBar_.SetTop(top);
    trvTree_.SetHeight(top - trvTree_.Top());
    rtbFormula_.SetTop(lblSplitterBar_.Top() + lblSplitterBar_.Height());
    rtbFormula_.SetHeight(bottom - rtbFormula_.Top());
}

void CExplorerLayout::FitFirstPlace() {
    if (!settings_.Get(kApplication, kSection, form_.Name(), u"").empty()) return;
    const double perX = screen_.TwipsPerPixelX();
    const double perY = screen_.TwipsPerPixelY();
    const Place& designed = form_.GetPlace();
    const auto monitor =
        screen_.MonitorOf({lPixels(designed.left / perX), lPixels(designed.top / perY),
                           lPixels((double{designed.left} + designed.width) / perX),
                           lPixels((double{designed.top} + designed.height) / perY)});
    if (!monitor) return;
    // Within the work area, which begins at `low`; smaller only where it must be.
    const auto fit = [](float& at, float& size, double low, double high) {
        size = static_cast<float>(std::min(double{size}, std::max(high - low, 1.0)));
        at = static_cast<float>(std::max(low, std::min(high - size, double{at})));
    };
    Place place = designed;
    fit(place.left, place.width, monitor->work.left * perX, monitor->work.right * perX);
    fit(place.top, place.height, monitor->work.top * perY, monitor->work.bottom * perY);
    form_.Move(place);
}

void CExplorerLayout::AcceptSize() {
    sngLastWidth_ = form_.Width();
    sngLastHeight_ = form_.Height();
}

void CExplorerLayout::PlaceTreeFrame() {
    const auto x = static_cast<float>(screen_.TwipsPerPixelX());
    const auto y = static_cast<float>(screen_.TwipsPerPixelY());
    const Place& tree = trvTree_.GetPlace();
    form_.Get<Control>(names::kTreeFrame)
        .Move({tree.left - x, tree.top - y, tree.width + 2 * x, tree.height + 2 * y});
}

float CExplorerLayout::OptionsRight() const {
    const auto& precise = form_.Get<CheckBox>(names::kPrecise);
    const auto& last = precise.Visible() ? precise : form_.Get<CheckBox>(names::kEveryFunction);
    return static_cast<float>(RoundToWhole(last.Left() + last.Width() + kOptionsGap));
}

// A window that has shrunk too far already shrinks no further: it snaps back to
// the last size that was accepted. The controls still stand where that size put
// them; what the resizer cannot place at all it takes back itself.
void CExplorerLayout::LimitSize() {
    if (sngLastWidth_ > 0 && form_.Width() < sngLastWidth_ &&
        form_.Get<Control>(names::kClose).Left() < OptionsRight()) {
        form_.SetWidth(sngLastWidth_);
    }
    if (sngLastHeight_ > 0 && form_.Height() < sngLastHeight_ &&
        trvTree_.Top() + kLeastTree > lblSplitterBar_.Top()) {
        form_.SetHeight(sngLastHeight_);
    }
}

void CExplorerLayout::Resize(CFormResizer& resizer) {
    if (bInResize_) return;
    struct InResize {
        bool& flag;
        explicit InResize(bool& in) : flag(in) { flag = true; }
        ~InResize() { flag = false; }
    } const inResize(bInResize_);
    LimitSize();
    resizer.FormResize();
    if (bLoaded_) {
        RescaleColumns();
        trvTree_.Refresh();
        StoreLayout();
    }
    AcceptSize();
}

void CExplorerLayout::RescaleColumns() {
    if (sngTreeWidth_ <= 0) return;
    const double perPixel = screen_.TwipsPerPixelX();
    const auto change = static_cast<float>((trvTree_.Width() - sngTreeWidth_) / perPixel);
    const double width = double{change} + trvTree_.ColumnWidth(1);
    trvTree_.SetColumnWidth(1, lPixels(std::max(width, kLeastColumn / perPixel)));
    sngTreeWidth_ = trvTree_.Width();
}

// A layout that cannot be stored is not worth a word to the user. The log hears
// of it once, not at every step of a drag.
void CExplorerLayout::StoreLayout() {
    try {
        SaveLayout();
        bStoreFailed_ = false;
    } catch (const Error& error) {
        if (std::exchange(bStoreFailed_, true)) return;
        errors_.Log(u"FExplorer", u"SaveLayout", WithProcedure(error, u"SaveLayout"));
    }
}

void CExplorerLayout::SaveLayout() {
    const double perPixel = screen_.TwipsPerPixelX();
    const double treeWidth = trvTree_.Width();
    if (treeWidth <= 0) return;
    std::u16string shares;
    for (std::int32_t column = 1; column <= trvTree_.ColumnCount(); ++column) {
        if (column > 1) shares += u';';
        shares += sShare(trvTree_.ColumnWidth(column) * perPixel / treeWidth);
    }
    settings_.Save(kApplication, kSection, trvTree_.Name(), shares);
    settings_.Save(kApplication, kSection, lblSplitterBar_.Name(),
                   sLocalNumber(dSingleDigits(lblSplitterBar_.Top())));
}

std::u16string CExplorerLayout::sLocalNumber(double number) const {
    return ReplaceAll(NumberText(number), u".", application_.DecimalSeparator());
}

// 0 for a text that is no number: another locale wrote it, or nobody did.
double CExplorerLayout::dLocalNumber(const std::u16string& text) const {
    const std::u16string separator = application_.DecimalSeparator();
    const auto number = ParseNumber(separator.empty() ? text : ReplaceAll(text, separator, u"."));
    return number && std::isfinite(*number) ? *number : 0;
}

void CExplorerLayout::ConnectSplitter() {
    lblSplitterBar_.onMouseDown = [this](std::int32_t button, std::int32_t, float, float y) {
        if (button != platform::kLeftButton) return;
        bSplitterDrag_ = true;
        sngSplitterY_ = y;
    };
    lblSplitterBar_.onMouseUp = [this](std::int32_t button, std::int32_t, float, float) {
        if (button == platform::kLeftButton) bSplitterDrag_ = false;
    };
    lblSplitterBar_.onMouseMove = [this](std::int32_t, std::int32_t, float, float y) {
        if (!bSplitterDrag_) return;
        // A desktop that cannot be asked leaves the bar where it is.
        Succeeds([this, y] { DragSplitter(y); });
    };
}

// The pointer's place is told relative to the bar, which moves with every step:
// so the bar follows in steps of pixels, smaller than the way still to go, and
// comes to rest below the pointer.
void CExplorerLayout::DragSplitter(float y) {
    const auto step = static_cast<float>((y - sngSplitterY_) / screen_.TwipsPerPixelY());
    if (trvTree_.Height() + step <= kLeastDragged || rtbFormula_.Height() - step <= kLeastDragged) {
        return;
    }
    trvTree_.SetHeight(trvTree_.Height() + step);
    lblSplitterBar_.SetTop(lblSplitterBar_.Top() + step);
    Place formula = rtbFormula_.GetPlace();
    formula.top += step;
    formula.height -= step;
    rtbFormula_.Move(formula);
    PlaceTreeFrame();
}

}  // namespace korvane
