// The scripted host's Evaluate: the document's answers, references, names, and
// literals where the document asks for them.
#include "base/error.h"
#include "base/literal.h"
#include "base/text.h"
#include "bindings/scripted/scripted_host.h"

namespace korvane::scripted {
namespace {

const DefinedName* FindIn(const DefinedNames& names, std::u16string_view text) {
    if (names.empty()) return nullptr;
    const auto found = names.find(Fold(text));
    return found == names.end() ? nullptr : &found->second;
}

// The name that a text stands for: a sheet's own before the workbook's.
const DefinedName* FindDefinedName(const Model& model, std::u16string_view text) {
    const auto parts = SplitReference(text);
    if (!parts) return nullptr;
    const BookPtr book = parts->book.empty() ? model.activeBook : model.FindBook(parts->book);
    if (!book) return nullptr;
    const Sheet* sheet = parts->sheet.empty() && book == model.activeBook
                             ? model.activeSheet
                             : book->FindSheet(parts->sheet);
    if (sheet) {
        if (const auto* name = FindIn(sheet->names, parts->rest)) return name;
    } else if (!parts->sheet.empty()) {
        return nullptr;
    }
    return FindIn(book->names, parts->rest);
}

std::size_t CountNames(const Model& model) {
    std::size_t count = 0;
    for (const auto& book : model.books) {
        count += book->names.size();
        for (const auto& sheet : book->sheets) count += sheet->names.size();
    }
    return count;
}

}  // namespace

ScriptedHost::Denoted ScriptedHost::DenoteAnswer(const Answer& answer) const {
    switch (answer.kind) {
        case Answer::Kind::kValue: return {std::nullopt, answer.value};
        case Answer::Kind::kRange:
            if (const auto place = FindPlace(model_, answer.range)) return {place, {}};
            return {std::nullopt, Value(ErrorCode::kRef)};
        case Answer::Kind::kFail: break;
    }
    throw Error(kErrorApplication, u"The text cannot be evaluated");
}

ScriptedHost::Denoted ScriptedHost::Denote(const std::u16string& text) const {
    std::u16string_view expression = text;
    for (std::size_t steps = 0;; ++steps) {
        if (!model_.evaluate.empty()) {
            const auto answer = model_.evaluate.find(std::u16string(expression));
            if (answer != model_.evaluate.end()) return DenoteAnswer(answer->second);
        }
        std::u16string_view body = expression;
        if (StartsWith(body, u"=")) body.remove_prefix(1);
        body = TrimBlanks(body);
        if (auto place = FindPlace(model_, body)) return {std::move(place), {}};
        const DefinedName* name = FindDefinedName(model_, body);
        if (!name) {
            if (model_.literals) {
                if (auto value = LiteralValue(body)) return {std::nullopt, std::move(*value)};
            }
            return {std::nullopt, Value(ErrorCode::kName)};
        }
        // More steps than names: they lead round in a ring.
        if (steps > 0 && steps >= CountNames(model_))
            return {std::nullopt, Value(ErrorCode::kName)};
        expression = name->refersTo;
    }
}

Value ScriptedHost::Evaluate(const std::u16string& text) {
    Denoted denoted = Denote(text);
    if (denoted.cells) return Value(ObjectPtr(RangeAt(*denoted.cells)));
    return std::move(denoted.value);
}

Value ScriptedHost::EvaluateWritten(const std::u16string& formula) const {
    const auto answer = model_.write.find(formula);
    Denoted denoted = answer == model_.write.end() ? Denote(formula) : DenoteAnswer(answer->second);
    if (denoted.cells) {
        const Place& place = *denoted.cells;
        if (!place.area.IsCell()) return Value(ErrorCode::kValue);
        const Cell* cell = place.sheet->Find(place.area.top, place.area.left);
        return cell ? cell->content.value : Value();
    }
    if (const auto* array = denoted.value.AsArray()) return array->At(1, 1);
    return std::move(denoted.value);
}

}  // namespace korvane::scripted
