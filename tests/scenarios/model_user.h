// A user without a desktop: what he does comes to the windows as events, the way
// any view would bring it.
#pragma once

#include <set>

#include "scenarios/user.h"
#include "scenarios/world.h"

namespace korvane::test {

class ModelUser : public User {
public:
    // The world outlives him.
    explicit ModelUser(World& world);
    ~ModelUser() override;

    void Press(platform::Form& window, Key key) override;
    void ClickRow(platform::Form& window, std::int32_t node) override;
    void ClickArrow(platform::Form& window, std::int32_t node) override;
    void PutCaret(platform::Form& window, std::int32_t position) override;
    void SelectText(platform::Form& window, platform::TextSpan span) override;
    void ClickBox(platform::Form& window, const char16_t* box) override;
    void ClickClose(platform::Form& window) override;
    void DragSplitter(platform::Form& window, int down) override;
    void Resize(platform::Form& window, int wider, int higher) override;
    void Close(platform::Form& window) override;
    void BringToFront(platform::Form& window) override;
    void Rest() override;
    void ExpectToSeeAll() override;

private:
    template <class E>
    void Deliver(const platform::Form& window, platform::ControlId control, E event);
    void Focus(platform::Form& window, platform::ControlId control);
    void MoveFocus(platform::Form& window);
    void PressInTree(platform::Form& window, Key key);
    void PressInText(platform::Form& window, Key key);
    void PressInBox(platform::Form& window, const char16_t* box, Key key);
    void SelectRow(platform::Form& window, std::int32_t node);
    void Toggle(platform::Form& window, std::int32_t node, bool expanded);

    World& world_;
    platform::WindowsMirror seen_;
    std::set<platform::WindowId> known_;
    std::int64_t focused_ = 0;
};

}  // namespace korvane::test
