// Keeps tints out of files, prints and copies.
#pragma once

#include <com/sun/star/uno/XComponentContext.hpp>
#include <functional>
#include <memory>
#include <vector>

#include "bindings/calc/calc_document.h"
#include "bindings/calc/desk/command_brackets.h"
#include "bindings/calc/desk/journal.h"
#include "bindings/calc/desk/mouse_watch.h"

namespace korvane::calc {

// While a document is saved, exported, printed or kept for recovery, and while a
// command runs or the mouse drags what may take the look of cells somewhere else, its
// cells have the fills that their user gave them. All calls are made on the office's main thread.
class TintGuard {
public:
    using Context = com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext>;
    using Model = com::sun::star::uno::Reference<com::sun::star::frame::XModel>;
    // The document of a model; null when it is no spreadsheet.
    using DocumentOf = std::function<DocumentPtr(const Model& model)>;

    // `folder` is where the journals are; an empty one means none. Throws the
    // office's exceptions.
    TintGuard(const Context& context, std::filesystem::path folder, DocumentOf documentOf);
    ~TintGuard();
    TintGuard(const TintGuard&) = delete;
    TintGuard& operator=(const TintGuard&) = delete;

    // A document's window is there. Called any number of times; at the first,
    // what the death of an office left in the document is put back, and from then on
    // what changes in it is noted. Never throws.
    void Look(const Model& model) noexcept;

private:
    class Events;
    class PrintJobs;
    class UndoSteps;
    struct Watched;

    void Bracket();
    void WatchMouse();
    void LookAt(const MouseEvents::Controller& controller);
    void Handle(const Model& model, const std::u16string& event);
    void BeginPrinting(const Model& model, bool begins);
    void Set(const Model& model, bool Watched::*business, bool begins);
    void Forget(const Model& model);
    void StopListening(const Watched& watched);
    Watched* Find(const Model& model);
    // The tints of a document that is watched; null for none.
    TintLedger* TintsOf(const Model& model);

    Context context_;
    std::filesystem::path folder_;
    DocumentOf documentOf_;
    std::shared_ptr<ChangeJournal> journal_;
    std::shared_ptr<const CommandBrackets> brackets_;
    std::shared_ptr<TintGuard*> self_;  // empty of it once it is gone
    std::vector<std::unique_ptr<Watched>> watched_;
    std::shared_ptr<const MouseEvents> mouse_;
    std::vector<std::unique_ptr<BracketedFrame>> frames_;
    std::vector<std::unique_ptr<MouseWatch>> mice_;
    com::sun::star::uno::Reference<com::sun::star::uno::XInterface> events_;
};

}  // namespace korvane::calc
