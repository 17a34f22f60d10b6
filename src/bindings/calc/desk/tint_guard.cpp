#include "bindings/calc/desk/tint_guard.h"

#include <algorithm>
#include <com/sun/star/document/XDocumentEventBroadcaster.hpp>
#include <com/sun/star/document/XUndoManagerListener.hpp>
#include <com/sun/star/frame/XController.hpp>
#include <com/sun/star/frame/XModel2.hpp>
#include <com/sun/star/frame/theGlobalEventBroadcaster.hpp>
#include <com/sun/star/view/XPrintJobBroadcaster.hpp>
#include <com/sun/star/view/XSelectionSupplier.hpp>
#include <cppuhelper/implbase1.hxx>
#include <cppuhelper/weakref.hxx>
#include <rtl/ref.hxx>

#include "base/attempt.h"
#include "bindings/calc/desk/journal_replay.h"
#include "bindings/calc/main_thread.h"
#include "bindings/calc/tint_ledger.h"
#include "bindings/calc/uno_text.h"

namespace korvane::calc {

namespace css = com::sun::star;
using css::uno::Reference;
using css::uno::UNO_QUERY;
using css::uno::UNO_QUERY_THROW;

namespace {

constexpr const char16_t* kCut = u".uno:Cut";

// Commands that open a dialog, which may work after the command has ended.
const std::vector<std::u16string>& DialogCommands() {
    static const std::vector<std::u16string> commands = {
        u".uno:Move",       u".uno:FillSeries",   u".uno:DataSort", u".uno:InsertCell",
        u".uno:DeleteCell", u".uno:Remove",       u".uno:Protect",  u".uno:Print",
        u".uno:SendMail",   u".uno:DataSubTotals"};
    return commands;
}

// Commands that copy cells or their looks, have new ones take over those of their
// neighbours, move them among each other, keep them to be undone, or lock them in.
std::vector<std::u16string> Commands() {
    std::vector<std::u16string> commands = DialogCommands();
    for (const char16_t* const command : {u".uno:Copy",
                                          kCut,
                                          u".uno:FormatPaintbrush",
                                          u".uno:FillDown",
                                          u".uno:FillUp",
                                          u".uno:FillRight",
                                          u".uno:FillLeft",
                                          u".uno:FillTable",
                                          u".uno:DuplicateSheet",
                                          u".uno:PrintDefault",
                                          u".uno:SortAscending",
                                          u".uno:SortDescending",
                                          u".uno:StyleNewByExample",
                                          u".uno:StyleUpdateByExample",
                                          u".uno:DeleteRows",
                                          u".uno:DeleteColumns",
                                          u".uno:InsertRows",
                                          u".uno:InsertRowsBefore",
                                          u".uno:InsertRowsAfter",
                                          u".uno:InsertColumns",
                                          u".uno:InsertColumnsBefore",
                                          u".uno:InsertColumnsAfter",
                                          u".uno:InsertCellsDown",
                                          u".uno:InsertCellsRight"}) {
        commands.emplace_back(command);
    }
    return commands;
}

bool OpensDialog(const std::u16string& command) {
    const auto& dialogs = DialogCommands();
    return std::any_of(dialogs.begin(), dialogs.end(),
                       [&](const auto& dialog) { return IsCommand(command, dialog); });
}

}  // namespace

struct TintGuard::Watched {
    DocumentPtr document;
    Reference<css::view::XPrintJobListener> printJobs;
    Reference<css::document::XUndoManagerListener> undoSteps;
    bool isSaved = false;
    bool isPrinted = false;
};

// The office may hold its listeners for longer than the guard lives.
class TintGuard::Events : public cppu::WeakImplHelper1<css::document::XDocumentEventListener> {
public:
    explicit Events(std::shared_ptr<TintGuard*> guard) : guard_(std::move(guard)) {}
    void SAL_CALL documentEventOccured(const css::document::DocumentEvent& event) override {
        Suppressed([&] {
            const Model model(event.Source, UNO_QUERY);
            if (*guard_ != nullptr && model.is()) {
                (*guard_)->Handle(model, ToText(event.EventName));
            }
        });
    }
    void SAL_CALL disposing(const css::lang::EventObject& /*source*/) override {}

private:
    std::shared_ptr<TintGuard*> guard_;
};

class TintGuard::PrintJobs : public cppu::WeakImplHelper1<css::view::XPrintJobListener> {
public:
    PrintJobs(std::shared_ptr<TintGuard*> guard, const Model& model)
        : guard_(std::move(guard)), model_(model) {}
    void SAL_CALL printJobEvent(const css::view::PrintJobEvent& event) override {
        Suppressed([&] {
            const Model model(model_);
            if (*guard_ == nullptr || !model.is()) return;
            (*guard_)->BeginPrinting(model, event.State == css::view::PrintableState_JOB_STARTED);
        });
    }
    void SAL_CALL disposing(const css::lang::EventObject& /*source*/) override {}

private:
    std::shared_ptr<TintGuard*> guard_;
    css::uno::WeakReference<css::frame::XModel> model_;
};

// What the user undoes may have been recorded with a tint.
class TintGuard::UndoSteps : public cppu::WeakImplHelper1<css::document::XUndoManagerListener> {
public:
    using Event = css::document::UndoManagerEvent;

    UndoSteps(std::shared_ptr<TintGuard*> guard, const Model& model)
        : guard_(std::move(guard)), model_(model) {}
    void SAL_CALL undoActionAdded(const Event& /*event*/) override {
        Tell(&TintLedger::NoteUserStep);
        Soon({&TintLedger::LookAtSheets});
    }
    void SAL_CALL actionUndone(const Event& /*event*/) override { TakeOffSoon(); }
    void SAL_CALL actionRedone(const Event& /*event*/) override { TakeOffSoon(); }
    void SAL_CALL allActionsCleared(const css::lang::EventObject& /*event*/) override {}
    void SAL_CALL redoActionsCleared(const css::lang::EventObject& /*event*/) override {}
    void SAL_CALL resetAll(const css::lang::EventObject& /*event*/) override {
        Tell(&TintLedger::ForgetUserSteps);
    }
    void SAL_CALL enteredContext(const Event& /*event*/) override {}
    void SAL_CALL enteredHiddenContext(const Event& /*event*/) override {}
    void SAL_CALL leftContext(const Event& /*event*/) override {}
    void SAL_CALL leftHiddenContext(const Event& /*event*/) override {}
    void SAL_CALL cancelledContext(const Event& /*event*/) override {}
    void SAL_CALL disposing(const css::lang::EventObject& /*source*/) override {}

private:
    template <class Member>
    void Tell(Member member) {
        Suppressed([&] {
            const Model model(model_);
            Watched* const watched =
                *guard_ != nullptr && model.is() ? (*guard_)->Find(model) : nullptr;
            if (watched != nullptr) (watched->document->tints().*member)();
        });
    }
    void TakeOffSoon() { Soon({&TintLedger::TakeOffReturned, &TintLedger::LookAtSheets}); }
    // The undo manager takes nothing while it tells of something.
    void Soon(std::vector<void (TintLedger::*)() noexcept> members) {
        Suppressed([&] {
            if (*guard_ == nullptr) return;
            MainThread((*guard_)->context_)
                .Post([steps = rtl::Reference<UndoSteps>(this), members = std::move(members)] {
                    for (const auto member : members) steps->Tell(member);
                });
        });
    }

    std::shared_ptr<TintGuard*> guard_;
    css::uno::WeakReference<css::frame::XModel> model_;
};

TintGuard::TintGuard(const Context& context, std::filesystem::path folder, DocumentOf documentOf)
    : context_(context),
      folder_(std::move(folder)),
      documentOf_(std::move(documentOf)),
      self_(std::make_shared<TintGuard*>(this)) {
    if (!folder_.empty()) journal_ = std::make_shared<Journal>(folder_);
    Bracket();
    WatchMouse();
    const rtl::Reference<Events> events(new Events(self_));
    events_ = static_cast<cppu::OWeakObject*>(events.get());
    Reference<css::document::XDocumentEventBroadcaster>(
        css::frame::theGlobalEventBroadcaster::get(context_), UNO_QUERY_THROW)
        ->addDocumentEventListener(events.get());
}

TintLedger* TintGuard::TintsOf(const Model& model) {
    Watched* const watched = Find(model);
    return watched != nullptr ? &watched->document->tints() : nullptr;
}

void TintGuard::Bracket() {
    auto brackets = std::make_shared<CommandBrackets>();
    brackets->commands = Commands();
    const auto tints = [self = self_](const Model& model) {
        return *self != nullptr ? (*self)->TintsOf(model) : nullptr;
    };
    brackets->before = [tints](const Model& model, const std::u16string& command) {
        TintLedger* const ledger = tints(model);
        if (ledger == nullptr) return;
        // Cells that are cut take their tint's place along: it could not be found again.
        if (command == kCut) ledger->Drop();
        ledger->TakeOff();
        if (OpensDialog(command)) ledger->Lift();
    };
    brackets->after = [tints](const Model& model, const std::u16string& /*command*/) {
        if (TintLedger* const ledger = tints(model)) ledger->PutBack();
    };
    brackets_ = brackets;
}

// The fill handle and drags begin at the selected cells; the middle button pastes
// what is selected.
void TintGuard::WatchMouse() {
    auto events = std::make_shared<MouseEvents>();
    using Controller = MouseEvents::Controller;
    events->pressed = [self = self_](const Controller& controller, bool isMiddle) {
        Suppressed([&] {
            TintLedger* const ledger =
                *self != nullptr ? (*self)->TintsOf(controller->getModel()) : nullptr;
            if (ledger == nullptr || ledger->IsEmpty()) return;
            const auto selected =
                Reference<css::view::XSelectionSupplier>(controller, UNO_QUERY_THROW)
                    ->getSelection();
            if (isMiddle || ledger->Touches(BlocksOf(
                                Reference<css::uno::XInterface>(selected, UNO_QUERY_THROW)))) {
                ledger->Lift();
            }
        });
    };
    // What the office does about it comes first.
    events->released = [self = self_](const Controller& controller) {
        Suppressed([&] {
            if (*self == nullptr) return;
            MainThread((*self)->context_).Post([self, model = controller->getModel()] {
                TintLedger* const ledger = *self != nullptr ? (*self)->TintsOf(model) : nullptr;
                if (ledger != nullptr) ledger->Settle();
            });
        });
    };
    mouse_ = events;
}

TintGuard::~TintGuard() {
    *self_ = nullptr;
    frames_.clear();
    mice_.clear();
    Suppressed([this] {
        Reference<css::document::XDocumentEventBroadcaster>(
            css::frame::theGlobalEventBroadcaster::get(context_), UNO_QUERY_THROW)
            ->removeDocumentEventListener(
                Reference<css::document::XDocumentEventListener>(events_, UNO_QUERY));
    });
    for (const auto& watched : watched_) StopListening(*watched);
}

void TintGuard::StopListening(const Watched& watched) {
    Suppressed([&] {
        if (watched.document->IsClosed()) return;
        Reference<css::view::XPrintJobBroadcaster>(watched.document->model(), UNO_QUERY_THROW)
            ->removePrintJobListener(watched.printJobs);
        watched.document->undoManager()->removeUndoManagerListener(watched.undoSteps);
    });
}

TintGuard::Watched* TintGuard::Find(const Model& model) {
    const auto found = std::find_if(watched_.begin(), watched_.end(), [&](const auto& watched) {
        return watched->document->model() == model;
    });
    return found == watched_.end() || (*found)->document->IsClosed() ? nullptr : found->get();
}

void TintGuard::Look(const Model& model) noexcept {
    Suppressed([&] {
        std::erase_if(watched_, [](const auto& watched) { return watched->document->IsClosed(); });
        const auto isOver = [](const auto& watch) { return watch->IsOver(); };
        std::erase_if(frames_, isOver);
        std::erase_if(mice_, isOver);
        if (Find(model) == nullptr) {
            auto watched = std::make_unique<Watched>();
            watched->document = documentOf_(model);
            if (!watched->document) return;
            watched->printJobs = new PrintJobs(self_, model);
            Suppressed([&] {
                Reference<css::view::XPrintJobBroadcaster>(model, UNO_QUERY_THROW)
                    ->addPrintJobListener(watched->printJobs);
            });
            watched->undoSteps = new UndoSteps(self_, model);
            watched->document->undoManager()->addUndoManagerListener(watched->undoSteps);
            const DocumentPtr document = watched->document;
            document->NoteChangesIn(journal_);
            document->tints().LookAtSheets();
            watched_.push_back(std::move(watched));
            if (!folder_.empty()) PutBackWhatDied(document, DeadJournals(folder_));
        }
        const Reference<css::frame::XModel2> views(model, UNO_QUERY_THROW);
        const auto controllers = views->getControllers();
        while (controllers->hasMoreElements()) {
            LookAt(Reference<css::frame::XController>(controllers->nextElement(), UNO_QUERY_THROW));
        }
    });
}

void TintGuard::LookAt(const MouseEvents::Controller& controller) {
    const auto isKnown = [](const auto& watches, const auto& what) {
        return std::any_of(watches.begin(), watches.end(),
                           [&](const auto& watch) { return watch->IsFor(what); });
    };
    const auto frame = controller->getFrame();
    if (frame.is() && !isKnown(frames_, frame)) {
        frames_.push_back(std::make_unique<BracketedFrame>(frame, brackets_));
    }
    // A window that shows pages has no cells to press on.
    Suppressed([&] {
        if (!isKnown(mice_, controller)) {
            mice_.push_back(std::make_unique<MouseWatch>(controller, mouse_));
        }
    });
}

// Every way of writing a file is told of by one of three pairs; autosaving and an
// office that crashes write a copy.
void TintGuard::Handle(const Model& model, const std::u16string& event) {
    for (const char16_t* const begin : {u"OnSave", u"OnSaveAs", u"OnCopyTo"}) {
        const std::u16string name = begin;
        if (event == name) return Set(model, &Watched::isSaved, true);
        if (event != name + u"Done" && event != name + u"Failed") continue;
        // It may have another file now.
        if (event == u"OnSaveAsDone") {
            if (Watched* const watched = Find(model)) watched->document->tints().NoteAgain();
        }
        return Set(model, &Watched::isSaved, false);
    }
    if (event == u"OnUnload") Forget(model);
}

void TintGuard::BeginPrinting(const Model& model, bool begins) {
    Set(model, &Watched::isPrinted, begins);
}

void TintGuard::Set(const Model& model, bool Watched::*business, bool begins) {
    Watched* const watched = Find(model);
    if (watched == nullptr || watched->*business == begins) return;
    watched->*business = begins;
    if (begins) {
        watched->document->tints().TakeOff();
    } else {
        watched->document->tints().PutBack();
    }
}

void TintGuard::Forget(const Model& model) {
    std::erase_if(watched_,
                  [&](const auto& watched) { return watched->document->model() == model; });
}

}  // namespace korvane::calc
