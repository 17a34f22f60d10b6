// The values and the cells of parts, asked of the host.
#include "base/number.h"
#include "base/text.h"
#include "formula/element.h"
#include "formula/error_text.h"
#include "formula/scan.h"
#include "formula/substr.h"
#include "host/name.h"
#include "host/worksheet.h"

namespace korvane {
namespace {

// The host takes no longer text as an array formula (Excel's documented limit
// for Range.FormulaArray), so that a longer one could not be put back.
constexpr std::size_t kLongestArrayFormula = 255;

// OFFSET within OFFSET is resolved by recursion, like elements within elements.
constexpr int kDeepestOffset = 400;

// A failure that ends the exploration: each of these calls would become an element
// below the one before, and so be too deep as well. Told at once, for each of
// them would walk down all the others first.
class NestedTooDeep : public Error {
public:
    NestedTooDeep() : Error(kErrorOutOfStack, u"The formula is nested too deeply") {}
};

// What stands between the "(" of "=NAME(" (`prefix` characters) and the last one.
std::vector<CSubstr> CallArguments(std::u16string_view call, std::u16string_view prefix) {
    std::vector<CSubstr> parts;
    SplitArguments(call.substr(prefix.size(), call.size() - prefix.size() - 1), u",", parts, true);
    return parts;
}

// The explored cell's own formula, kept while another stands in the cell.
class KeptFormula {
public:
    explicit KeptFormula(host::Range& cell) : cell_(cell), isArray_(cell.HasArray()) {
        const Value formula = isArray_ ? cell.FormulaArray() : cell.Formula();
        if (formula.Text()) text_ = *formula.Text();
    }
    // Whether the host will take the text back: asked before the first write, for
    // a user's formula must never be lost.
    bool CanBePutBack() const {
        if (isArray_ && text_.size() > kLongestArrayFormula) return false;
        return !cell_.Worksheet()->ProtectContents();
    }
    void Write(const std::u16string& formula) const {
        if (isArray_) {
            cell_.SetFormulaArray(formula);
        } else {
            cell_.SetFormula(formula);
        }
    }
    void PutBack() const { Write(text_); }

private:
    host::Range& cell_;
    bool isArray_;
    std::u16string text_;
};

}  // namespace

std::u16string CElement::sEvaluate(std::u16string_view sText, bool bIsFunction) const {
    std::optional<Value> answer;
    return sEvaluateExpression(sText.empty() ? std::u16string() : WithEquals(sText), bIsFunction,
                               answer);
}

std::u16string CElement::sEvaluateExpression(const std::u16string& sText, bool bIsFunction,
                                             std::optional<Value>& answer) const {
    const bool plain = sFunction_.empty() && enType_ == kindOrdinary;
    if (bIsFunction || (clsOptions_->bEveryFunction && !plain)) {
        if (!clsOptions_->bPreciseCalc) {
            clsOptions_->bMaybeImprecise = true;
        } else {
            std::u16string value;
            const bool success = bEvaluatePrecisely(sText, value);
            // Of several, the last one tells.
            ++clsOptions_->preciseEvaluations;
            clsOptions_->bMaybeImprecise = !success;
            if (success) return value;
        }
    }
    answer = clsOptions_->application().Evaluate(sText);
    return sErrorText(*answer, clsOptions_->application());
}

// Writes the text into the explored cell for a moment and reads what the cell
// then shows. A step that the host refuses is no failure: the caller falls back.
bool CElement::bEvaluatePrecisely(const std::u16string& sText, std::u16string& sValue) const {
    clsOptions_->SaveCalc();
    host::Range& cell = *clsOptions_->rngRootCell;
    const KeptFormula kept(cell);
    bool success = false;
    try {
        if (!kept.CanBePutBack()) return false;
    } catch (const Error&) {
        return false;
    }
    try {
        kept.Write(sText);
        sValue = sErrorText(cell.Value(), clsOptions_->application());
        success = true;
    } catch (const Error&) {
        // The part cannot stand alone in this cell.
    }
    try {
        kept.PutBack();
    } catch (const Error&) {
        // A cell of a larger array refuses this write as it refused the first.
    }
    return success;
}

host::NamePtr CElement::FindName(std::u16string_view sText) const {
    host::NamePtr name;
    try {
        name = clsOptions_->SheetNames().Item(sText);
    } catch (const Error&) {
        // No name of the sheet.
    }
    if (name) return name;
    try {
        name = clsOptions_->WorkbookNames().Item(sText);
    } catch (const Error&) {
        // No name at all.
    }
    return name;
}

host::RangePtr CElement::ResolveOperand(const std::u16string& sExpression,
                                        const host::NamePtr& oName,
                                        const std::optional<Value>& answer) const {
    // The host has just evaluated this very text; asking it again would cost as
    // much as everything else together, and a volatile function might lead to
    // other cells than those whose value is shown.
    const bool answered = answer && !oName && !StartsWith(sExpression, u"=INDIRECT(") &&
                          !StartsWith(sExpression, u"=OFFSET(");
    if (answered) return std::dynamic_pointer_cast<host::Range>(answer->AsObject());
    try {
        return ResolveRange(oName ? WithEquals(oName->RefersTo()) : sExpression, 0);
    } catch (const NestedTooDeep&) {
        throw;
    } catch (const Error&) {
        return nullptr;  // whatever else failed: a part without cells
    }
}

host::RangePtr CElement::ResolveRange(const std::u16string& sText, int depth) const {
    if (depth > kDeepestOffset) throw NestedTooDeep();
    if (bIsCallOf(sText, u"INDIRECT")) return ResolveIndirect(sText);
    if (bIsCallOf(sText, u"OFFSET")) return ResolveOffset(sText, depth);
    return EvaluateToRange(sText);
}

host::RangePtr CElement::EvaluateToRange(const std::u16string& sText) const {
    const Value value = clsOptions_->application().Evaluate(sText);
    return std::dynamic_pointer_cast<host::Range>(value.AsObject());
}

host::RangePtr CElement::ResolveIndirect(std::u16string_view sText) const {
    clsOptions_->bContainsIndirect = true;
    const auto parts = CallArguments(sText, u"=INDIRECT(");
    const auto evaluate = [&](const CSubstr& part) {
        return sEvaluate(part.sString, bNeedsParse(part.sString));
    };
    if (parts.empty()) return nullptr;
    const std::u16string reference = evaluate(parts[0]);
    bool a1Style = true;
    if (parts.size() > 1 && !parts[1].sString.empty()) a1Style = TextToBoolean(evaluate(parts[1]));
    return EvaluateToRange(u"=INDIRECT(\"" + reference + u"\"," + (a1Style ? u"1" : u"0") + u")");
}

host::RangePtr CElement::ResolveOffset(std::u16string_view sText, int depth) const {
    const auto parts = CallArguments(sText, u"=OFFSET(");
    if (parts.empty()) return nullptr;
    std::u16string moved;  // rows, columns, height and width, a "," before each
    for (std::size_t k = 1; k <= 4; ++k) {
        moved += u',';
        if (k < parts.size() && !parts[k].sString.empty()) {
            moved += sEvaluate(parts[k].sString, bNeedsParse(parts[k].sString));
        }
    }
    const host::RangePtr base = ResolveRange(WithEquals(parts[0].sString), depth + 1);
    if (!base) return nullptr;
    return EvaluateToRange(u"=OFFSET(" + base->Address(host::kExternal) + moved + u")");
}

}  // namespace korvane
