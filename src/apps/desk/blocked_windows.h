// The office's windows while one of our dialogs waits for its answer.
#pragma once

#include <com/sun/star/awt/XTopWindowListener.hpp>
#include <com/sun/star/awt/XWindow.hpp>
#include <com/sun/star/frame/XFrame.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <functional>
#include <vector>

namespace korvane::desk {

// Keeps the user from all windows with documents, whenever they came: the office's own
// dialog only keeps him from the one that it belongs to. All calls are made on the main
// thread; none throws.
class BlockedWindows {
public:
    using Context = com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext>;
    using Frame = com::sun::star::uno::Reference<com::sun::star::frame::XFrame>;

    // `onTried` is called when the user goes to one of the windows all the same, and when
    // a further window has come.
    BlockedWindows(Context context, std::function<void(const Frame&)> onTried)
        : context_(std::move(context)), onTried_(std::move(onTried)) {}
    BlockedWindows(const BlockedWindows&) = delete;
    BlockedWindows& operator=(const BlockedWindows&) = delete;
    ~BlockedWindows() { Release(); }

    // Blocks all that there are. `asking` is blocked by a dialog of the office's already,
    // and may be null.
    void Begin(const Frame& asking);
    // Blocks those that have come since: often.
    void Look();
    // The windows are as before.
    void Release();

private:
    class Watch;
    struct Blocked {
        Frame frame;
        com::sun::star::uno::Reference<com::sun::star::awt::XWindow> window;
        com::sun::star::uno::Reference<com::sun::star::awt::XTopWindowListener> watch;
        bool isDisabled = false;  // by us
    };

    bool IsKnown(const Frame& frame) const;
    void Block(const Frame& frame, bool disables);
    void LookForMore(bool isFirst);

    Context context_;
    std::function<void(const Frame&)> onTried_;
    std::vector<Blocked> blocked_;
    bool isOn_ = false;
};

}  // namespace korvane::desk
